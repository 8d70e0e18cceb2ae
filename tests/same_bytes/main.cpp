// same_bytes DATA         prints what the library answers, "name hash" for each group of answers
// same_bytes DATA --each  prints each answer, to find those that differ in a group
// same_bytes DATA LIST    compares the groups with a printed list
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fstream>
#include <map>
#include <string>

#include "results.h"

namespace {

std::string Text(std::uint64_t hash) {
  char word[20];
  std::snprintf(word, sizeof word, "%08x%08x", static_cast<unsigned>(hash >> 32),
                static_cast<unsigned>(hash & 0xFFFFFFFFu));
  return word;
}

int Compare(const std::map<std::string, std::uint64_t>& hashes, const char* path) {
  std::ifstream file(path);
  std::map<std::string, std::string> listed;
  for (std::string name, hash; file >> name >> hash;) listed[name] = hash;
  int different = 0;
  for (const auto& [name, hash] : hashes) {
    if (listed[name] != Text(hash)) {
      ++different;
      std::printf("%s: listed %s, now %s\n", name.c_str(), listed[name].c_str(),
                  Text(hash).c_str());
    }
  }
  std::printf("%zu groups: %d different\n", hashes.size(), different);
  return different == 0 && !hashes.empty() && listed.size() == hashes.size() ? 0 : 1;
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
    if (argc == 3 && !each) return Compare(results.Hashes(), argv[2]);
    for (const auto& [name, hash] : results.Hashes()) {
      std::printf("%s %s\n", name.c_str(), Text(hash).c_str());
    }
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "same_bytes: %s\n", error.what());
    return 2;
  }
}
