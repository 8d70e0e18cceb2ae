// The vertices of an area from the highest to the lowest, in the order of points.
//
// A grid point has 40 bits, so a radix sort by bytes takes five passes, fewer where all
// points share a byte; below some hundred points comparing is faster. Vertices on one
// point come out one behind the other, by ascending position, and are reported as runs.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "triangulation/sweep_records.h"

namespace VORNEX {

struct PointOrder {
  struct Run {
    std::uint32_t begin;
    std::uint32_t end;
  };
  std::vector<std::uint32_t> positions;
  std::vector<Run> shared;  ///< runs of `positions` whose vertices lie on one point
};

/// The vertices of a sweep in descending order of points. Throws std::bad_alloc.
/// @param packLimit  up to so many vertices, point and position are sorted in one word;
///                   a parameter for tests alone
[[nodiscard]] PointOrder OrderFromTheTop(std::span<const SweepVertex> vertices,
                                         std::size_t packLimit = std::size_t{1} << 24);

}  // namespace VORNEX
