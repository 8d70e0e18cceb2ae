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

namespace {

using Input = std::vector<char>;

void Run(const Input& input) {
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

void PrintResident(int percent) {
  long pages = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> pages >> resident;
  std::printf("%d %%: %ld pages\n", percent, resident);
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<Input> inputs;
  for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
    std::ifstream file(entry.path(), std::ios::binary);
    inputs.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  for (const Input& input : inputs) Run(input);
  std::printf("%d inputs\n", static_cast<int>(inputs.size()));
  const double goal = argc > 2 ? std::stod(argv[2]) : 0.0;
  for (const int percent : {10, 50, 100}) {
    for (std::size_t i = 0; fuzz::steps < goal * percent / 100; ++i) Run(inputs[i % inputs.size()]);
    if (goal > 0) PrintResident(percent);
  }
  return inputs.empty() ? 1 : 0;
}
