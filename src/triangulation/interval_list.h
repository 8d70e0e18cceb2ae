// The intervals in which the sweep line meets the inside of an area, from left to right.
//
// What holds here: no edge lies left of the one before it at the height of the sweep
// line; edges of neighbouring intervals may touch there.
#pragma once

#include <cstdint>

#include "memory/ordered_list.h"
#include "triangulation/sweep_records.h"

namespace VORNEX {

/// An edge that goes down.
struct Descent {
  GridPoint upper;
  GridPoint lower;
};

/// On which side of a descent, or of the line through it, does p lie? Positive to the right,
/// at larger x; zero on it.
[[nodiscard]] constexpr std::int64_t SideOfDescent(const Descent& edge, GridPoint p) noexcept {
  return zelvan::Cross(edge.upper, edge.lower, p);
}

/// @tparam Ends  what the cutting of rings keeps of an interval (Chains::Ends, Fronts::Ends)
template <class Ends>
struct Interval {
  Descent edge[2];          ///< on the left and on the right
  Ends ends;                ///< of what hangs above the sweep line and is not cut yet
  std::uint32_t rightEdge;  ///< the name of the edge on the right
};

template <class Ends>
using IntervalList = zelvan::OrderedList<Interval<Ends>>;

/// Does a point lie left of an interval (-1), right of it (1) or inside (0)? A point on an edge
/// lies on the outer side.
template <class Ends>
[[nodiscard]] int PlaceBeside(const Interval<Ends>& interval, GridPoint p) noexcept {
  if (SideOfDescent(interval.edge[kLeft], p) <= 0) return -1;
  return SideOfDescent(interval.edge[kRight], p) >= 0 ? 1 : 0;
}

}  // namespace VORNEX
