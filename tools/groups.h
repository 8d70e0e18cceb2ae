// Connected groups: what has nothing in common with the rest is combined apart,
// since every call costs as much as the region it meets.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace tool {

// The groups of 0 .. count - 1 that the pairs connect, each in rising order, in
// the order of their first members.
std::vector<std::vector<std::size_t>> ConnectedGroups(
    std::size_t count, const std::vector<std::pair<std::size_t, std::size_t>>& pairs);

}  // namespace tool
