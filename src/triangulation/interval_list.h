// The intervals in which the sweep line meets the inside of an area, from left to right:
// a list for the neighbours, and over it a treap (Seidel and Aragon 1996) for searching
// by place and for inserting and removing in expected logarithmic time.
//
// What holds here: no edge lies left of the one before it at the height of the sweep
// line; edges of neighbouring intervals may touch there. Priorities come from the
// numbers of the intervals, so that every run makes the same tree.
#pragma once

#include <cstdint>
#include <vector>

#include "triangulation/sweep_records.h"

namespace VORNEX {

struct Interval {
  GridPoint leftUpper;   ///< the edge on the left, from its upper end
  GridPoint leftLower;   ///< to its lower end
  GridPoint rightUpper;  ///< the same on the right
  GridPoint rightLower;
  std::uint32_t leftChain;   ///< the lowest link of the chain opposite the left edge
  std::uint32_t rightChain;  ///< the same for the right edge; both end in the last vertex met
  std::uint32_t rightEdge;   ///< the edge on the right by its name
  std::uint32_t before;      ///< the neighbour on the left, or kNone
  std::uint32_t after;       ///< the neighbour on the right, or kNone
  std::uint32_t parent;
  std::uint32_t child[2];
};

class IntervalList {
 public:
  IntervalList() = default;

  /// Where a point lies: in an interval, or between two.
  struct Place {
    std::uint32_t inside;  ///< the interval strictly inside of which it lies, or kNone
    std::uint32_t before;  ///< the last interval that lies left of it; kNone for none
    std::uint32_t after;   ///< the first that lies right of it; kNone for none
  };

  [[nodiscard]] Interval& operator[](std::uint32_t i) noexcept { return intervals_[i]; }
  [[nodiscard]] const Interval& operator[](std::uint32_t i) const noexcept { return intervals_[i]; }

  /// A point on an edge lies on its outer side.
  /// @param from  an interval that may be near, or kNone
  [[nodiscard]] Place Find(GridPoint p, std::uint32_t from) noexcept;

  /// A new interval between two neighbours, either of which may be kNone. Its edges
  /// and chains are to be filled in. References to intervals end. Throws std::bad_alloc.
  std::uint32_t Insert(std::uint32_t before, std::uint32_t after);
  void Remove(std::uint32_t i) noexcept;

  /// Intervals looked at by all searches so far.
  [[nodiscard]] std::uint64_t steps() const noexcept { return steps_; }

 private:
  [[nodiscard]] bool Walk(GridPoint p, Place& place, std::uint32_t from) noexcept;
  [[nodiscard]] Place Descend(GridPoint p) noexcept;
  [[nodiscard]] std::uint32_t Take();
  void Attach(std::uint32_t i, std::uint32_t parent, int side) noexcept;
  void RotateUp(std::uint32_t i) noexcept;
  void ReplaceChild(std::uint32_t parent, std::uint32_t old, std::uint32_t now) noexcept;

  std::vector<Interval> intervals_;
  std::uint32_t root_ = kNone;
  std::uint32_t free_ = kNone;  // removed intervals, linked by `after`
  std::uint64_t steps_ = 0;
};

}  // namespace VORNEX
