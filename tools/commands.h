// The commands. Each answers an exit status.
#pragma once

#include <cstddef>
#include <vector>

#include "input.h"
#include "options.h"
#include "output.h"
#include "progress.h"

namespace tool {

// Triangulates every polygon of the inputs, each for itself.
int RunTriangulate(const Options& options);

// These combine the polygons of the inputs, on one grid.
int RunUnion(const Options& options);
int RunSubtract(const Options& options);
int RunIntersect(const Options& options);
int RunXor(const Options& options);
int RunOffset(const Options& options);

// Reads every input that can be read, keeps the features that the options name, and says what
// cannot be used and what is passed over; raises `status` to what that means. One element for
// each readable file, in order.
std::vector<Input> ReadInputs(const Options& options, Steps& steps, int& status);

// Calls visit(feature, number) for every polygon of an input that is one.
template <class Visit>
void ForEachPolygon(const Input& input, Visit visit) {
  for (const Feature& feature : input.features) {
    for (std::size_t i = 0; i < feature.polygons.size(); ++i) {
      if (!feature.polygons[i].outer.empty()) visit(feature, i);
    }
  }
}

std::size_t CountPoints(const std::vector<Input>& inputs);

// The coordinate reference system that the inputs name; empty where none does. Throws
// std::runtime_error where two differ.
std::string CrsOf(const std::vector<Input>& inputs);

void WriteOutputs(const Options& options, const std::vector<Item>& items, Show show,
                  const std::string& crs, Steps& steps);

}  // namespace tool
