// Runs the fuzz target over the files of a folder: the corpus as a test, with any compiler. With
// a number of steps behind the folder, over and over until so many are done, and prints how much
// memory is resident on the way (on Linux).
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "bytes.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
  std::vector<std::string> inputs;
  for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
    std::ifstream file(entry.path(), std::ios::binary);
    inputs.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  const auto run = [&inputs](std::size_t i) {
    const std::string& input = inputs[i % inputs.size()];
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
  };
  for (std::size_t i = 0; i < inputs.size(); ++i) run(i);
  std::printf("%d inputs\n", static_cast<int>(inputs.size()));
  for (const int percent : {10, 50, 100}) {
    if (argc < 3) break;
    for (std::size_t i = 0; fuzz::steps < std::stod(argv[2]) * percent / 100; ++i) run(i);
    long pages = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    std::printf("%d %%: %ld pages\n", percent, resident);
  }
  return inputs.empty() ? 1 : 0;
}
