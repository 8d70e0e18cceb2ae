// Sorting by keys of 40 bits: the size of a grid point.
//
// What holds here: equal keys come out one behind the other, by ascending position, and are
// reported as runs.
#pragma once

#include <cstdint>
#include <vector>

#include "memory/word_sort.h"
#include "polygon/grid.h"

namespace zelvan {

inline constexpr int kKeyBits = 40;

/// Positions 0 to n - 1 in ascending order of their keys.
struct KeyOrder {
  struct Run {
    std::uint32_t begin;
    std::uint32_t end;
  };
  std::vector<std::uint32_t> positions;
  std::vector<Run> equal;  ///< runs of two and more positions with one key
};

/// Ascending keys are descending points: from the highest, from right to left.
[[nodiscard]] constexpr std::uint64_t KeyFromTheTop(GridPoint p) noexcept {
  constexpr std::uint32_t highest = GRID_MAX;
  const auto x = static_cast<std::uint32_t>(p.gx + GRID_OFFSET);
  const auto y = static_cast<std::uint32_t>(p.gy + GRID_OFFSET);
  return std::uint64_t{highest - y} << (kKeyBits / 2) | (highest - x);
}

/// Sorts n positions by keyAt(position), below 2^40. Throws std::bad_alloc.
template <class KeyAt>
[[nodiscard]] KeyOrder SortByKey(std::uint32_t n, KeyAt keyAt) {
  KeySorter sorter;
  sorter.Sort(n, kKeyBits, keyAt);
  KeyOrder order;
  order.positions.resize(n);
  for (std::uint32_t k = 0; k < n; ++k) {
    order.positions[k] = sorter[k];
    if (k == 0 || !sorter.MayBeEqual(k - 1, k)) continue;
    if (keyAt(order.positions[k]) != keyAt(order.positions[k - 1])) continue;
    if (order.equal.empty() || order.equal.back().end != k) order.equal.push_back({k - 1, k});
    order.equal.back().end = k + 1;
  }
  return order;
}

}  // namespace zelvan
