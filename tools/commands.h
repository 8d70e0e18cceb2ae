// The commands. Each answers an exit status.
#pragma once

#include <string>
#include <vector>

#include "geos.h"
#include "input.h"
#include "options.h"

namespace tool {

// Triangulates every polygon of the inputs, each for itself.
int RunTriangulate(const Options& options);

// Unites all polygons of the inputs, or subtracts those of the second and
// further inputs from those of the first.
int RunCombine(const Options& options);

// Reads every input that can be read and names what cannot be used; lowers
// `status` to what that means. One element for each readable file, in order.
std::vector<Input> ReadInputs(const Options& options, Geos& geos, int& status);

}  // namespace tool
