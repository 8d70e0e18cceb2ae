// same_bytes DATA       prints what the library answers, one group of results per line
// same_bytes DATA LIST  compares the groups with a printed list
//
// Of results that hang on a mathematics function of the platform each number may be one unit
// in the last place away (two in WebAssembly), a unit taken at 1.0 for numbers below 1.
#include <algorithm>
#include <cmath>
#include <exception>
#include <fstream>
#include <sstream>

#include "results.h"

namespace {

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

bool AreClose(const std::string& line, const std::string& listed) {
  std::istringstream now(line), before(listed);
  std::string a, b, mark;
  now >> a >> mark;
  before >> b >> mark;
  if (a != b || mark != "~" || line.size() != listed.size()) return false;
  while (now >> a && before >> b) {
    const auto number = [](const std::string& bits) {
      return same_bytes::BitCast<double>(std::uint64_t{std::stoull(bits, nullptr, 16)});
    };
    if (!IsClose(number(a), number(b))) return false;
  }
  return true;
}

int Compare(const same_bytes::Lines& lines, const char* path) {
  std::ifstream file(path);
  int different = 0;
  for (const std::string& line : lines) {
    std::string listed;
    std::getline(file, listed);
    if (!listed.empty() && listed.back() == '\r') listed.pop_back();
    if (line == listed) continue;
    const bool close = AreClose(line, listed);
    std::printf("%slisted: %s\n   now: %s\n", close ? "in the last place\n" : "", listed.c_str(),
                line.c_str());
    different += close ? 0 : 1;
  }
  std::string more;
  if (std::getline(file, more)) ++different;
  std::printf("%zu results: %d different\n", lines.size(), different);
  return different == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 2 && argc != 3) throw std::invalid_argument("usage: same_bytes DATA [LIST]");
  same_bytes::Lines lines;
  same_bytes::AddPolygons(argv[1], lines);
  same_bytes::AddToolkit(lines);
  if (argc == 3) return Compare(lines, argv[2]);
  for (const std::string& line : lines) std::printf("%s\n", line.c_str());
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 2;
}
