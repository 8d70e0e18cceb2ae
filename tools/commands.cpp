// What the commands share: reading all inputs.
#include "commands.h"

#include <algorithm>
#include <iostream>

#include "output.h"
#include "report.h"

namespace tool {

std::vector<Input> ReadInputs(const Options& options, int& status) {
  std::vector<Input> inputs;
  for (const std::string& file : options.inputs) {
    try {
      inputs.push_back(ReadInput(file, options));
    } catch (const UnreadableFile& error) {
      std::cerr << file << ": " << error.what() << '\n';
      status = kUnusable;
      continue;
    }
    const Input& input = inputs.back();
    for (const Refusal& refusal : input.refusals) PrintRefusal(refusal);
    if (!input.refusals.empty()) status = std::max(status, kSomeRefused);
  }
  for (const std::string& name : options.only) {
    const bool found = std::any_of(inputs.begin(), inputs.end(), [&](const Input& input) {
      return std::find(input.chosen.begin(), input.chosen.end(), name) != input.chosen.end();
    });
    if (found) continue;
    std::cerr << "no feature is called " << name << '\n';
    status = std::max(status, kSomeRefused);
  }
  return inputs;
}

std::size_t CountPoints(const std::vector<Input>& inputs) {
  std::size_t count = 0;
  for (const Input& input : inputs) {
    ForEachPolygon(input, [&](const Feature& feature, std::size_t i) {
      count += CountPoints(feature.polygons[i]);
    });
  }
  return count;
}

void PrintRepaired(const Options& options, const std::string& input, std::size_t count) {
  if (!options.repair) return;
  ReportStream(options) << input << ": " << count
                        << (count == 1 ? " invalid polygon repaired\n"
                                       : " invalid polygons repaired\n");
}

}  // namespace tool
