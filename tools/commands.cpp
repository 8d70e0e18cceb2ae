// What the commands share: reading all inputs and writing all outputs.
#include "commands.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <iostream>

#include "choose.h"
#include "more_formats.h"
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
    const std::size_t size = SizeOf(file);
    steps.Begin("reading", name, size);
    try {
      inputs.push_back(ReadInput(file, size, [&](std::size_t bytes) { steps.Advance(bytes); }));
    } catch (const UnreadableFile& error) {
      steps.Clear();
      std::cerr << name << ": " << error.what() << '\n';
      status = kUnusable;
    }
  }
  steps.Clear();
  if (!options.only.empty()) {
    for (const std::string& unknown : Choose(options.only, inputs)) {
      std::cerr << unknown << '\n';
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

std::string CrsOf(const std::vector<Input>& inputs) {
  const Input* first = nullptr;
  for (const Input& input : inputs) {
    if (input.crs.empty()) continue;
    if (first == nullptr) first = &input;
    if (IsSameCrs(first->crs, input.crs)) continue;
    throw std::runtime_error(input.file + " is in " + CrsName(input.crs) + ", and " + first->file +
                             " in " + CrsName(first->crs) + ": bring them to one system first");
  }
  return first != nullptr ? first->crs : "";
}

void WriteOutputs(const Options& options, const std::vector<Item>& items, Show show,
                  const std::string& crs, Steps& steps) {
  for (const std::string& output : options.outputs) {
    steps.Begin("writing", output);
    WriteOutput(options, output, items, show, crs);
  }
}

}  // namespace tool
