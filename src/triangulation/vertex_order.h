// The order in which a sweep meets points of 31 bits a coordinate: from the highest to the
// lowest, equally high ones from right to left. A key has up to 62 bits, fewer for a small
// polygon.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "memory/word_sort.h"
#include "triangulation/sweep_records.h"

namespace VORNEX {

/// Keeps its arrays from one polygon to the next.
class VertexOrder {
 public:
  /// The numbers of the vertices in order. Throws std::bad_alloc.
  [[nodiscard]] std::span<std::uint32_t> Sort(std::span<const SweepVertex> vertices);

 private:
  zelvan::KeySorter sorter_;
  std::vector<std::uint32_t> order_;
};

}  // namespace VORNEX
