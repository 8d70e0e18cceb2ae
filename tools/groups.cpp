#include "groups.h"

#include <algorithm>
#include <numeric>

namespace tool {

std::vector<std::vector<std::size_t>> ConnectedGroups(
    std::size_t count, const std::vector<std::pair<std::size_t, std::size_t>>& pairs) {
  std::vector<std::size_t> parent(count);  // the root of a group is its first member
  std::iota(parent.begin(), parent.end(), std::size_t{0});
  const auto root = [&](std::size_t i) {
    while (parent[i] != i) i = parent[i] = parent[parent[i]];
    return i;
  };
  for (const auto& [a, b] : pairs) {
    const auto [low, high] = std::minmax({root(a), root(b)});
    parent[high] = low;
  }
  std::vector<std::vector<std::size_t>> groups;
  std::vector<std::size_t> group_of(count);
  for (std::size_t i = 0; i < count; ++i) {
    if (root(i) == i) {
      group_of[i] = groups.size();
      groups.emplace_back();
    }
    groups[group_of[root(i)]].push_back(i);
  }
  return groups;
}

}  // namespace tool
