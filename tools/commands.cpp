// What the commands share: reading all inputs and writing all outputs.
#include "commands.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <iostream>

#include "choose.h"
#include "report.h"

namespace tool {
namespace {

// Bytes, as far as they are known.
std::size_t SizeOf(const std::string& file) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  return error ? 0 : static_cast<std::size_t>(size);
}

// "w.wkt: passed over: a byte order mark, SRID=4326", where there is anything.
void PrintPassedOver(std::ostream& out, const Input& input) {
  if (input.passed_over.empty()) return;
  out << input.file << ": passed over";
  const char* separator = ": ";
  for (const std::string& what : input.passed_over) {
    out << separator << what;
    separator = ", ";
  }
  out << '\n';
}

}  // namespace

std::vector<Input> ReadInputs(const Options& options, Steps& steps, int& status) {
  std::vector<Input> inputs;
  for (const std::string& file : options.inputs) {
    const std::string name = file == kStandard ? "standard input" : file;
    steps.Begin("reading", name, SizeOf(file));
    try {
      inputs.push_back(ReadInput(file, [&](std::size_t bytes) { steps.Advance(bytes); }));
    } catch (const UnreadableFile& error) {
      steps.Clear();
      std::cerr << name << ": " << error.what() << '\n';
      status = kUnusable;
    }
  }
  steps.Clear();
  if (!options.only.empty()) {
    for (const std::string& name : Choose(options.only, inputs)) {
      std::cerr << "no feature is called " << name << '\n';
      status = std::max(status, kSomeRefused);
    }
  }
  for (const Input& input : inputs) {
    PrintPassedOver(ReportStream(options), input);
    for (const Refusal& refusal : input.refusals) PrintRefusal(refusal);
    if (!input.refusals.empty()) status = std::max(status, kSomeRefused);
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

void WriteOutputs(const Options& options, const std::vector<Item>& items, Show show, Steps& steps) {
  for (const std::string& output : options.outputs) {
    steps.Begin("writing", output);
    WriteOutput(options, output, items, show);
  }
}

}  // namespace tool
