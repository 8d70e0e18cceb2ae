// The events of a plane sweep (area_sweep.h), for any vertices and either cutter.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

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
  [[nodiscard]] bool GoOn(Side side, const Event& event);
  [[nodiscard]] bool Open(const Event& event);
  [[nodiscard]] bool Split(const Event& event);
  [[nodiscard]] bool End(const Event& event);
  [[nodiscard]] bool Merge(const Event& event);

  using Ends = typename Cutter::Ends;
  using Place = typename IntervalList<Ends>::Place;

  [[nodiscard]] Place Locate(const Corner& at);
  [[nodiscard]] std::uint32_t Nearby(std::uint32_t v) const noexcept;
  [[nodiscard]] std::uint32_t UnlinkEdge(std::uint32_t edge) noexcept;
  [[nodiscard]] bool KeepsClear(Side side, std::uint32_t i) const noexcept;
  void SetEdge(Side side, std::uint32_t i, const Event& event) noexcept;
  void MoveRightEdge(std::uint32_t from, std::uint32_t to) noexcept;

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
      return GoOn(kLeft, event);
    case Kind::kRight:
      return GoOn(kRight, event);
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
  return intervals_.Find(
      [&](const Interval<Ends>& interval) { return PlaceBeside(interval, at.point); },
      Nearby(at.vertex));
}

// The interval that an edge bounds, where the edge ends now; kNone when its upper end was not met.
template <class Cutter, bool kMayCross>
std::uint32_t PlaneSweep<Cutter, kMayCross>::UnlinkEdge(std::uint32_t edge) noexcept {
  return std::exchange(vertices_[edge].interval, kNone);
}

// An edge ends at a point of a facing edge. Does it only touch that one, and not run along it?
inline bool OnlyTouches(const Descent& ended, const Descent& facing) noexcept {
  return ended.lower == facing.upper || SideOfDescent(facing, ended.upper) != 0;
}

// The edge on one side of an interval ends. Does it keep clear of the interval beside it?
template <class Cutter, bool kMayCross>
bool PlaneSweep<Cutter, kMayCross>::KeepsClear(Side side, std::uint32_t i) const noexcept {
  if constexpr (!kMayCross) return true;
  const std::uint32_t beside = side == kLeft ? intervals_.Before(i) : intervals_.After(i);
  if (beside == kNone) return true;
  const Descent& ended = intervals_[i].edge[side];
  const Descent& facing = intervals_[beside].edge[OtherSide(side)];
  const std::int64_t place = SideOfDescent(facing, ended.lower);
  return (side == kLeft ? place > 0 : place < 0) || (place == 0 && OnlyTouches(ended, facing));
}

// An edge of the vertex goes down from here on one side of an interval: on the left the edge to
// the next vertex, on the right the edge to the previous one.
template <class Cutter, bool kMayCross>
void PlaneSweep<Cutter, kMayCross>::SetEdge(Side side, std::uint32_t i,
                                            const Event& event) noexcept {
  Interval<Ends>& interval = intervals_[i];
  const std::uint32_t edge = side == kLeft ? event.at.vertex : event.prev;
  interval.edge[side] = {event.at.point, side == kLeft ? event.nextPoint : event.prevPoint};
  if (side == kRight) interval.rightEdge = edge;
  vertices_[edge].interval = i;
}

template <class Cutter, bool kMayCross>
void PlaneSweep<Cutter, kMayCross>::MoveRightEdge(std::uint32_t from, std::uint32_t to) noexcept {
  intervals_[to].edge[kRight] = intervals_[from].edge[kRight];
  intervals_[to].rightEdge = intervals_[from].rightEdge;
  vertices_[intervals_[to].rightEdge].interval = to;
}

// The contour goes on along one side of an interval.
template <class Cutter, bool kMayCross>
bool PlaneSweep<Cutter, kMayCross>::GoOn(Side side, const Event& event) {
  const std::uint32_t edge = side == kLeft ? event.prev : event.at.vertex;
  const std::uint32_t i = UnlinkEdge(edge);
  if (i == kNone || !KeepsClear(side, i)) return false;
  if (!cutter_.GoOn(side, intervals_[i].ends, event.at, edge)) return false;
  SetEdge(side, i, event);
  return true;
}

template <class Cutter, bool kMayCross>
bool PlaneSweep<Cutter, kMayCross>::Open(const Event& event) {
  const Place place = Locate(event.at);
  if (place.at != kNone) return false;
  const std::uint32_t i = intervals_.Insert({}, place.before, place.after);
  cutter_.Open(intervals_[i].ends, event.at);
  SetEdge(kLeft, i, event);
  SetEdge(kRight, i, event);
  return true;
}

// The interval keeps what lies left of the vertex; a new one takes the rest.
template <class Cutter, bool kMayCross>
bool PlaneSweep<Cutter, kMayCross>::Split(const Event& event) {
  const std::uint32_t i = Locate(event.at).at;
  if (i == kNone) return false;
  const std::uint32_t rest = intervals_.Insert({}, i, intervals_.After(i));
  MoveRightEdge(i, rest);
  if (!cutter_.Split(intervals_[i].ends, intervals_[rest].ends, event.at)) return false;
  SetEdge(kRight, i, event);
  SetEdge(kLeft, rest, event);
  return true;
}

template <class Cutter, bool kMayCross>
bool PlaneSweep<Cutter, kMayCross>::End(const Event& event) {
  const std::uint32_t leftEdge = event.prev;
  const std::uint32_t rightEdge = event.at.vertex;
  const std::uint32_t i = UnlinkEdge(leftEdge);
  if (i == kNone || UnlinkEdge(rightEdge) != i) return false;
  if (!KeepsClear(kLeft, i) || !KeepsClear(kRight, i)) return false;
  if (!cutter_.End(intervals_[i].ends, event.at, leftEdge, rightEdge)) return false;
  intervals_.Remove(i);
  return true;
}

// The interval on the left goes on as both.
template <class Cutter, bool kMayCross>
bool PlaneSweep<Cutter, kMayCross>::Merge(const Event& event) {
  const std::uint32_t leftEdge = event.prev;
  const std::uint32_t rightEdge = event.at.vertex;
  const std::uint32_t l = UnlinkEdge(rightEdge);
  const std::uint32_t r = UnlinkEdge(leftEdge);
  if (l == kNone || r == kNone || intervals_.After(l) != r) return false;
  if (!cutter_.Merge(intervals_[l].ends, intervals_[r].ends, event.at, rightEdge, leftEdge))
    return false;
  MoveRightEdge(r, l);
  intervals_.Remove(r);
  return true;
}

}  // namespace VORNEX
