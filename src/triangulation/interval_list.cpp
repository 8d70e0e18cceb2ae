// The treap over the list of intervals (interval_list.h).
#include "triangulation/interval_list.h"

namespace VORNEX {

namespace {

// Spreads the numbers of intervals over 32 bits (Fibonacci hashing, Knuth 1973, with
// the high half folded in).
std::uint32_t PriorityOf(std::uint32_t i) noexcept {
  const std::uint32_t h = (i + 1) * 0x9E3779B9u;
  return (h ^ (h >> 15)) * 0x85EBCA6Bu;
}

// Does a point lie left of an interval (-1), right of it (1) or inside (0)?
int SideOf(const Interval& interval, GridPoint p) noexcept {
  if (SideOfDescent(interval.leftUpper, interval.leftLower, p) <= 0) return -1;
  return SideOfDescent(interval.rightUpper, interval.rightLower, p) >= 0 ? 1 : 0;
}

}  // namespace

IntervalList::Place IntervalList::Find(GridPoint p, std::uint32_t from) noexcept {
  Place place{kNone, kNone, kNone};
  return from != kNone && Walk(p, place, from) ? place : Descend(p);
}

// Along the list, a few steps. @return false when the place is farther away
bool IntervalList::Walk(GridPoint p, Place& place, std::uint32_t from) noexcept {
  constexpr int kFewSteps = 6;
  int way = 0;
  for (int k = 0; k < kFewSteps; ++k) {
    ++steps_;
    const Interval& interval = intervals_[from];
    const int side = SideOf(interval, p);
    if (side == 0) {
      place.inside = from;
      return true;
    }
    const std::uint32_t to = side < 0 ? interval.before : interval.after;
    if (to == kNone || side == -way) {
      place.before = side < 0 ? interval.before : from;
      place.after = side < 0 ? from : interval.after;
      return true;
    }
    way = side;
    from = to;
  }
  return false;
}

IntervalList::Place IntervalList::Descend(GridPoint p) noexcept {
  Place place{kNone, kNone, kNone};
  std::uint32_t i = root_;
  while (i != kNone) {
    ++steps_;
    const int side = SideOf(intervals_[i], p);
    if (side == 0) {
      place.inside = i;
      break;
    }
    (side < 0 ? place.after : place.before) = i;
    i = intervals_[i].child[side < 0 ? 0 : 1];
  }
  return place;
}

std::uint32_t IntervalList::Take() {
  if (free_ == kNone) {
    intervals_.emplace_back();
    return static_cast<std::uint32_t>(intervals_.size() - 1);
  }
  const std::uint32_t i = free_;
  free_ = intervals_[i].after;
  return i;
}

// Of two neighbours either the left one has no right child or the right one no left child.
std::uint32_t IntervalList::Insert(std::uint32_t before, std::uint32_t after) {
  const std::uint32_t i = Take();
  Interval& interval = intervals_[i];
  interval.before = before;
  interval.after = after;
  if (before != kNone) intervals_[before].after = i;
  if (after != kNone) intervals_[after].before = i;
  if (before != kNone && intervals_[before].child[1] == kNone) {
    Attach(i, before, 1);
  } else {
    Attach(i, after, 0);
  }
  return i;
}

void IntervalList::Attach(std::uint32_t i, std::uint32_t parent, int side) noexcept {
  Interval& interval = intervals_[i];
  interval.parent = parent;
  interval.child[0] = interval.child[1] = kNone;
  if (parent == kNone) {
    root_ = i;
    return;
  }
  intervals_[parent].child[side] = i;
  const std::uint32_t priority = PriorityOf(i);
  while (intervals_[i].parent != kNone && PriorityOf(intervals_[i].parent) < priority) RotateUp(i);
}

//        p            i
//       / \          / \        and the mirror
//      i   c   ->   a   p
//     / \              / \ .
//    a   b            b   c
void IntervalList::RotateUp(std::uint32_t i) noexcept {
  Interval& interval = intervals_[i];
  const std::uint32_t p = interval.parent;
  Interval& parent = intervals_[p];
  const int side = parent.child[0] == i ? 0 : 1;
  const std::uint32_t inner = interval.child[1 - side];
  parent.child[side] = inner;
  if (inner != kNone) intervals_[inner].parent = p;
  ReplaceChild(parent.parent, p, i);
  interval.parent = parent.parent;
  interval.child[1 - side] = p;
  parent.parent = i;
}

void IntervalList::ReplaceChild(std::uint32_t parent, std::uint32_t old,
                                std::uint32_t now) noexcept {
  if (parent == kNone) {
    root_ = now;
  } else {
    std::uint32_t* child = intervals_[parent].child;
    child[child[0] == old ? 0 : 1] = now;
  }
}

void IntervalList::Remove(std::uint32_t i) noexcept {
  Interval& interval = intervals_[i];
  while (interval.child[0] != kNone && interval.child[1] != kNone) {
    const bool left = PriorityOf(interval.child[0]) > PriorityOf(interval.child[1]);
    RotateUp(interval.child[left ? 0 : 1]);
  }
  const std::uint32_t only = interval.child[interval.child[0] != kNone ? 0 : 1];
  ReplaceChild(interval.parent, i, only);
  if (only != kNone) intervals_[only].parent = interval.parent;
  if (interval.before != kNone) intervals_[interval.before].after = interval.after;
  if (interval.after != kNone) intervals_[interval.after].before = interval.before;
  interval.after = free_;
  free_ = i;
}

}  // namespace VORNEX
