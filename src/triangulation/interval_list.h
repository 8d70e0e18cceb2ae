// The intervals in which the sweep line meets the inside of an area, from left to right.
//
// What holds here: no edge lies left of the one before it at the height of the sweep
// line; edges of neighbouring intervals may touch there.
#pragma once

#include <cstdint>

#include "memory/ordered_list.h"
#include "triangulation/sweep_records.h"

namespace VORNEX {

/// @tparam Ends  what the cutting of rings keeps of an interval (Chains::Ends, Fronts::Ends)
template <class Ends>
struct Interval {
  GridPoint leftUpper;   ///< the edge on the left, from its upper end
  GridPoint leftLower;   ///< to its lower end
  GridPoint rightUpper;  ///< the same on the right
  GridPoint rightLower;
  Ends ends;                ///< of what hangs above the sweep line, not cut yet
  std::uint32_t rightEdge;  ///< the edge on the right by its name
};

template <class Ends>
using IntervalList = zelvan::OrderedList<Interval<Ends>>;

/// Does a point lie left of an interval (-1), right of it (1) or inside (0)? On an edge it
/// lies on the outer side.
template <class Ends>
[[nodiscard]] int SideOf(const Interval<Ends>& interval, GridPoint p) noexcept {
  if (SideOfDescent(interval.leftUpper, interval.leftLower, p) <= 0) return -1;
  return SideOfDescent(interval.rightUpper, interval.rightLower, p) >= 0 ? 1 : 0;
}

}  // namespace VORNEX
