// The features that --only names.
#pragma once

#include <string>
#include <vector>

#include "input.h"

namespace tool {

// Keeps the features whose names stand in lists, or whose values of a field do where a list begins
// with one and "=", and what is said of them. Commas part the names of a list; where names have
// commas in them, the longest one that a feature has counts.
// @return what to say of each name or value that no feature has
std::vector<std::string> Choose(const std::vector<std::string>& lists, std::vector<Input>& inputs);

}  // namespace tool
