// same_bytes DATA       prints what the library answers, a hash for each group of answers
// same_bytes DATA LIST  compares the groups with a printed list
#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>

#include "results.h"

int main(int argc, char** argv) try {
  if (argc != 2 && argc != 3) throw std::invalid_argument("usage: same_bytes DATA [LIST]");
  same_bytes::Hashes hashes;
  same_bytes::AddPolygons(argv[1], hashes);
  same_bytes::AddToolkit(hashes);
  std::ifstream list(argc == 3 ? argv[2] : "");
  bool same = true;
  for (const auto& [name, hash] : hashes) {
    char word[20];
    std::snprintf(word, sizeof word, "%08x%08x", static_cast<unsigned>(hash.Value() >> 32),
                  static_cast<unsigned>(hash.Value() & 0xFFFFFFFFu));
    std::string listed, expected;
    const bool agrees = list >> listed >> expected && listed == name && expected == word;
    same = same && agrees;
    std::printf("%s %s%s\n", name.c_str(), word, agrees || argc == 2 ? "" : ": listed is another");
  }
  std::string more;
  return argc == 2 || (same && !(list >> more)) ? 0 : 1;
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 2;
}
