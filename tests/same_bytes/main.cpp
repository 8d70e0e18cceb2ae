// same_bytes DATA         prints what the library answers, one group of results per line
// same_bytes DATA --each  prints each result, to find those that differ in a group
// same_bytes DATA LIST    compares the groups with a printed list
//
// A group of exact results is "name hash". A result that hangs on a mathematics function of the
// platform is "name ~ bits bits ..."; there each number may be one unit in the last
// place away (two in WebAssembly), a unit taken at 1.0 for numbers below 1.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include "results.h"

namespace {

using same_bytes::Result;

std::string Line(const Result& result) {
  std::string line = result.name + (result.exact ? "" : " ~");
  char word[20];
  for (const std::uint64_t w : result.words) {
    std::snprintf(word, sizeof word, " %08x%08x", static_cast<unsigned>(w >> 32),
                  static_cast<unsigned>(w & 0xFFFFFFFFu));
    line += word;
  }
  return line;
}

double Number(std::uint64_t word) {
  return same_bytes::BitCast<double>(word);
}

#ifdef __EMSCRIPTEN__
constexpr double kUnits = 2;  // its sine and cosine differ in the last place more often
#else
constexpr double kUnits = 1;
#endif

bool IsClose(double a, double b) {
  const double size = std::max({1.0, std::fabs(a), std::fabs(b)});
  const double unit = std::nextafter(size, HUGE_VAL) - size;
  return a == b || (a != a && b != b) || std::fabs(a - b) <= kUnits * unit;
}

bool Agrees(const Result& result, const std::string& listed) {
  if (result.exact || Line(result) == listed) return Line(result) == listed;
  std::istringstream words(listed);
  std::string word;
  words >> word >> word;  // name and mark
  for (const std::uint64_t w : result.words) {
    if (!(words >> word) || word.size() != 16) return false;
    if (!IsClose(Number(w), Number(std::stoull(word, nullptr, 16)))) return false;
  }
  return !(words >> word);
}

int Compare(const same_bytes::Results& results, const char* path) {
  std::ifstream file(path);
  std::map<std::string, std::string> listed;
  for (std::string line; std::getline(file, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    listed[line.substr(0, line.find(' '))] = line;
  }
  int different = 0;
  int close = 0;
  for (const Result& result : results.List()) {
    const auto found = listed.find(result.name);
    const std::string expected = found == listed.end() ? "nothing" : found->second;
    if (!Agrees(result, expected)) {
      std::printf("listed: %s\n   now: %s\n", expected.c_str(), Line(result).c_str());
      ++different;
    } else if (Line(result) != expected) {
      std::printf("in the last place: %s\n", result.name.c_str());
      ++close;
    }
    if (found != listed.end()) listed.erase(found);
  }
  for (const auto& [name, line] : listed) {
    std::printf("listed: %s\n   now: nothing\n", line.c_str());
    ++different;
  }
  std::printf("%zu results: %d different, %d different in the last place\n", results.List().size(),
              different, close);
  return different == 0 && !results.List().empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 && argc != 3) {
    std::fputs("usage: same_bytes DATA [LIST | --each]\n", stderr);
    return 2;
  }
  try {
    const bool each = argc == 3 && std::strcmp(argv[2], "--each") == 0;
    same_bytes::Results results(each);
    same_bytes::AddCountries(argv[1], results);
    same_bytes::AddFamilies(results);
    same_bytes::AddChains(results);
    same_bytes::AddToolkit(results);
    if (argc == 3 && !each) return Compare(results, argv[2]);
    for (const Result& result : results.List()) std::printf("%s\n", Line(result).c_str());
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "same_bytes: %s\n", error.what());
    return 2;
  }
}
