// The events of a plane sweep (area_sweep.h), for any vertices and either cutter.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "triangulation/interval_list.h"
#include "triangulation/sweep_records.h"

namespace VORNEX {

// The kinds of vertices in the order in which those on one point are met: what ends
// makes room for what starts, and a wedge opens (split) before what lies in it (open).
enum class Kind : std::uint8_t { kSpike, kEnd, kMerge, kLeft, kRight, kSplit, kOpen };

struct Event {
  Corner at;
  std::uint32_t prev;  // on the contour
  std::uint32_t next;
  GridPoint prevPoint;
  GridPoint nextPoint;
  Kind kind;
};

/// @tparam Cutter     cuts the triangles: Chains or Fronts
/// @tparam kMayCross  may edges cross or run along each other? Else nobody looks for that.
template <class Cutter, bool kMayCross>
class PlaneSweep {
 public:
  explicit PlaneSweep(Cutter& cutter) noexcept : cutter_(cutter) {}

  /// Starts with these vertices; what was there before is forgotten.
  void Begin(std::span<SweepVertex> vertices) noexcept {
    vertices_ = vertices;
    intervals_.Clear();
  }

  /// Puts the vertices on one point into the order in which Run wants them.
  void ArrangeShared(std::span<std::uint32_t> positions) const;

  /// @param order  all vertices, from the highest to the lowest, equally high ones from right
  ///               to left, those on one point arranged
  /// @return false for a contradiction. Throws std::bad_alloc
  [[nodiscard]] bool Run(std::span<const std::uint32_t> order);

  /// Intervals looked at by all searches so far.
  [[nodiscard]] std::uint64_t steps() const noexcept { return intervals_.steps(); }

 private:
  void ReadEvent(std::uint32_t v, Event& event) const noexcept;

  [[nodiscard]] bool Handle(const Event& event);
  [[nodiscard]] bool GoOnLeft(const Event& event);
  [[nodiscard]] bool GoOnRight(const Event& event);
  [[nodiscard]] bool Open(const Event& event);
  [[nodiscard]] bool Split(const Event& event);
  [[nodiscard]] bool End(const Event& event);
  [[nodiscard]] bool Merge(const Event& event);

  using Ends = typename Cutter::Ends;
  using Place = typename IntervalList<Ends>::Place;

  [[nodiscard]] Place Locate(const Corner& at);
  [[nodiscard]] std::uint32_t Nearby(std::uint32_t v) const noexcept;
  [[nodiscard]] std::uint32_t TakeInterval(std::uint32_t edge) noexcept;
  [[nodiscard]] bool KeepsClearOnLeft(std::uint32_t i) const noexcept;
  [[nodiscard]] bool KeepsClearOnRight(std::uint32_t i) const noexcept;
  void SetLeft(std::uint32_t i, const Event& event);
  void SetRight(std::uint32_t i, const Event& event);

  std::span<SweepVertex> vertices_;
  Cutter& cutter_;
  IntervalList<Ends> intervals_;
};

template <class Cutter, bool kMayCross>
bool PlaneSweep<Cutter, kMayCross>::Run(std::span<const std::uint32_t> order) {
  // A vertex waits for memory when it is looked at first; those of a batch wait together.
  constexpr std::size_t kBatch = 16;
  Event batch[kBatch];
  for (std::size_t begin = 0; begin < order.size(); begin += kBatch) {
    const std::size_t size = std::min(kBatch, order.size() - begin);
    for (std::size_t k = 0; k < size; ++k) ReadEvent(order[begin + k], batch[k]);
    for (std::size_t k = 0; k < size; ++k) {
      if (!Handle(batch[k])) return false;
    }
  }
  return true;
}

// Field by field: a copy of words just written in halves would wait for them.
template <class Cutter, bool kMayCross>
void PlaneSweep<Cutter, kMayCross>::ReadEvent(std::uint32_t v, Event& event) const noexcept {
  const SweepVertex& vertex = vertices_[v];
  const GridPoint p = vertex.point;
  const GridPoint prevPoint = vertices_[vertex.prev].point;
  const GridPoint nextPoint = vertices_[vertex.next].point;
  event.at.point = p;
  event.at.vertex = v;
  event.prev = vertex.prev;
  event.next = vertex.next;
  event.prevPoint = prevPoint;
  event.nextPoint = nextPoint;
  const bool prevAbove = GreaterThan(prevPoint, p);
  const bool nextAbove = GreaterThan(nextPoint, p);
  if (prevAbove != nextAbove) {
    event.kind = prevAbove ? Kind::kLeft : Kind::kRight;
  } else {
    const std::int64_t turn = zelvan::Cross(prevPoint, p, nextPoint);
    const bool convex = turn > 0;
    event.kind = turn == 0   ? Kind::kSpike
                 : prevAbove ? (convex ? Kind::kEnd : Kind::kMerge)
                             : (convex ? Kind::kOpen : Kind::kSplit);
  }
}

// Vertices on one point by their kind; those that open intervals from right to left, so
// that each finds the one before it on its right.
template <class Cutter, bool kMayCross>
void PlaneSweep<Cutter, kMayCross>::ArrangeShared(std::span<std::uint32_t> positions) const {
  std::sort(positions.begin(), positions.end(), [&](std::uint32_t a, std::uint32_t b) {
    Event first, second;
    ReadEvent(a, first);
    ReadEvent(b, second);
    if (first.kind != second.kind) return first.kind < second.kind;
    if (first.kind == Kind::kOpen) {
      const std::int64_t side = zelvan::Cross(first.at.point, first.nextPoint, second.nextPoint);
      if (side != 0) return side < 0;
    }
    return a < b;
  });
}

template <class Cutter, bool kMayCross>
bool PlaneSweep<Cutter, kMayCross>::Handle(const Event& event) {
  switch (event.kind) {
    case Kind::kSpike:
      return false;
    case Kind::kLeft:
      return GoOnLeft(event);
    case Kind::kRight:
      return GoOnRight(event);
    case Kind::kOpen:
      return Open(event);
    case Kind::kSplit:
      return Split(event);
    case Kind::kEnd:
      return End(event);
    case Kind::kMerge:
      return Merge(event);
  }
  return false;
}

// An interval that an edge near a vertex on the contour bounds, or kNone: where to begin
// looking for the vertex.
template <class Cutter, bool kMayCross>
std::uint32_t PlaneSweep<Cutter, kMayCross>::Nearby(std::uint32_t v) const noexcept {
  constexpr std::uint32_t kReach = 8;
  for (std::uint32_t d = 1; d <= kReach; ++d) {
    if (v >= d && vertices_[v - d].interval != kNone) return vertices_[v - d].interval;
    if (v + d < vertices_.size() && vertices_[v + d].interval != kNone)
      return vertices_[v + d].interval;
  }
  return kNone;
}

// Where a vertex lies whose edges the sweep has not met.
template <class Cutter, bool kMayCross>
typename PlaneSweep<Cutter, kMayCross>::Place PlaneSweep<Cutter, kMayCross>::Locate(
    const Corner& at) {
  return intervals_.Find([&](const Interval<Ends>& interval) { return SideOf(interval, at.point); },
                         Nearby(at.vertex));
}

// The interval that an edge bounds, which ends now; kNone when its upper end was not met.
template <class Cutter, bool kMayCross>
std::uint32_t PlaneSweep<Cutter, kMayCross>::TakeInterval(std::uint32_t edge) noexcept {
  const std::uint32_t i = vertices_[edge].interval;
  vertices_[edge].interval = kNone;
  return i;
}

// An edge from endedUpper ends at a point of a facing edge. Does it only touch that one,
// and not run along it?
inline bool OnlyTouches(GridPoint endedUpper, GridPoint ended, GridPoint upper,
                        GridPoint lower) noexcept {
  return ended == upper || SideOfDescent(upper, lower, endedUpper) != 0;
}

// The left edge of an interval ends. Does it keep clear of the interval before it?
template <class Cutter, bool kMayCross>
bool PlaneSweep<Cutter, kMayCross>::KeepsClearOnLeft(std::uint32_t i) const noexcept {
  if constexpr (!kMayCross) return true;
  const std::uint32_t before = intervals_.Before(i);
  if (before == kNone) return true;
  const Interval<Ends>& interval = intervals_[i];
  const GridPoint upper = intervals_[before].rightUpper;
  const GridPoint lower = intervals_[before].rightLower;
  const std::int64_t side = SideOfDescent(upper, lower, interval.leftLower);
  return side > 0 ||
         (side == 0 && OnlyTouches(interval.leftUpper, interval.leftLower, upper, lower));
}

// The same for the right edge and the interval after it.
template <class Cutter, bool kMayCross>
bool PlaneSweep<Cutter, kMayCross>::KeepsClearOnRight(std::uint32_t i) const noexcept {
  if constexpr (!kMayCross) return true;
  const std::uint32_t after = intervals_.After(i);
  if (after == kNone) return true;
  const Interval<Ends>& interval = intervals_[i];
  const GridPoint upper = intervals_[after].leftUpper;
  const GridPoint lower = intervals_[after].leftLower;
  const std::int64_t side = SideOfDescent(upper, lower, interval.rightLower);
  return side < 0 ||
         (side == 0 && OnlyTouches(interval.rightUpper, interval.rightLower, upper, lower));
}

// The vertex's own edge goes down from here as the left edge of an interval.
template <class Cutter, bool kMayCross>
void PlaneSweep<Cutter, kMayCross>::SetLeft(std::uint32_t i, const Event& event) {
  Interval<Ends>& interval = intervals_[i];
  interval.leftUpper = event.at.point;
  interval.leftLower = event.nextPoint;
  vertices_[event.at.vertex].interval = i;
}

// The edge before the vertex goes down from here as the right edge of an interval.
template <class Cutter, bool kMayCross>
void PlaneSweep<Cutter, kMayCross>::SetRight(std::uint32_t i, const Event& event) {
  Interval<Ends>& interval = intervals_[i];
  interval.rightUpper = event.at.point;
  interval.rightLower = event.prevPoint;
  interval.rightEdge = event.prev;
  vertices_[event.prev].interval = i;
}

template <class Cutter, bool kMayCross>
bool PlaneSweep<Cutter, kMayCross>::GoOnLeft(const Event& event) {
  const std::uint32_t edge = event.prev;
  const std::uint32_t i = TakeInterval(edge);
  if (i == kNone) return false;
  if (!KeepsClearOnLeft(i)) return false;
  if (!cutter_.GoOnLeft(intervals_[i].ends, event.at, edge)) return false;
  SetLeft(i, event);
  return true;
}

template <class Cutter, bool kMayCross>
bool PlaneSweep<Cutter, kMayCross>::GoOnRight(const Event& event) {
  const std::uint32_t edge = event.at.vertex;
  const std::uint32_t i = TakeInterval(edge);
  if (i == kNone) return false;
  if (!KeepsClearOnRight(i)) return false;
  if (!cutter_.GoOnRight(intervals_[i].ends, event.at, edge)) return false;
  SetRight(i, event);
  return true;
}

template <class Cutter, bool kMayCross>
bool PlaneSweep<Cutter, kMayCross>::Open(const Event& event) {
  const Place place = Locate(event.at);
  if (place.at != kNone) return false;
  const std::uint32_t i = intervals_.Insert({}, place.before, place.after);
  cutter_.Open(intervals_[i].ends, event.at);
  SetLeft(i, event);
  SetRight(i, event);
  return true;
}

// The interval keeps what lies left of the vertex; a new one takes the rest.
template <class Cutter, bool kMayCross>
bool PlaneSweep<Cutter, kMayCross>::Split(const Event& event) {
  const std::uint32_t i = Locate(event.at).at;
  if (i == kNone) return false;
  const std::uint32_t rest = intervals_.Insert({}, i, intervals_.After(i));
  Interval<Ends>& left = intervals_[i];
  Interval<Ends>& right = intervals_[rest];
  right.rightUpper = left.rightUpper;
  right.rightLower = left.rightLower;
  right.rightEdge = left.rightEdge;
  vertices_[right.rightEdge].interval = rest;
  if (!cutter_.Split(left.ends, right.ends, event.at)) return false;
  SetRight(i, event);
  SetLeft(rest, event);
  return true;
}

template <class Cutter, bool kMayCross>
bool PlaneSweep<Cutter, kMayCross>::End(const Event& event) {
  const std::uint32_t leftEdge = event.prev;
  const std::uint32_t rightEdge = event.at.vertex;
  const std::uint32_t i = TakeInterval(leftEdge);
  if (i == kNone || TakeInterval(rightEdge) != i) return false;
  if (!KeepsClearOnLeft(i) || !KeepsClearOnRight(i)) return false;
  if (!cutter_.End(intervals_[i].ends, event.at, leftEdge, rightEdge)) return false;
  intervals_.Remove(i);
  return true;
}

// The interval on the left takes over the other one.
template <class Cutter, bool kMayCross>
bool PlaneSweep<Cutter, kMayCross>::Merge(const Event& event) {
  const std::uint32_t leftEdge = event.prev;
  const std::uint32_t rightEdge = event.at.vertex;
  const std::uint32_t l = TakeInterval(rightEdge);
  const std::uint32_t r = TakeInterval(leftEdge);
  if (l == kNone || r == kNone || intervals_.After(l) != r) return false;
  Interval<Ends>& left = intervals_[l];
  const Interval<Ends>& right = intervals_[r];
  if (!cutter_.Merge(left.ends, right.ends, event.at, rightEdge, leftEdge)) return false;
  left.rightUpper = right.rightUpper;
  left.rightLower = right.rightLower;
  left.rightEdge = right.rightEdge;
  vertices_[left.rightEdge].interval = l;
  intervals_.Remove(r);
  return true;
}

}  // namespace VORNEX
