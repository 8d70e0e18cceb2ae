// The commands. Each answers an exit status.
#pragma once

#include <string>
#include <vector>

#include "input.h"
#include "options.h"

namespace tool {

// Triangulates every polygon of the inputs, each for itself.
int RunTriangulate(const Options& options);

// Combines the polygons of the inputs into one region.
int RunCombine(const Options& options);

// Reads every input that can be read and names what cannot be used; lowers
// `status` to what that means. One element for each readable file, in order.
std::vector<Input> ReadInputs(const Options& options, int& status);

// Calls visit(feature, number) for every polygon of an input.
template <class Visit>
void ForEachPolygon(const Input& input, Visit visit) {
  for (const Feature& feature : input.features) {
    for (std::size_t i = 0; i < feature.polygons.size(); ++i) visit(feature, i);
  }
}

std::size_t CountPoints(const std::vector<Input>& inputs);

// "input: 2 invalid polygons repaired", where that is asked for.
void PrintRepaired(const Options& options, const std::string& input, std::size_t count);

}  // namespace tool
