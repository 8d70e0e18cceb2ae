// The events of the sweep (area_sweep.h).
#include "triangulation/area_sweep.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "triangulation/chains.h"
#include "triangulation/fronts.h"
#include "triangulation/interval_list.h"
#include "triangulation/sweep_records.h"
#include "triangulation/triangle_writer.h"

namespace VORNEX {

namespace {

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

// The vertices of an area, contour by contour.
struct FlatArea {
  std::vector<VertexNode*> nodes;
  std::vector<SweepVertex> vertices;
  std::vector<bool> isEnd;            // first or last of its contour
  std::vector<std::uint32_t> firsts;  // of each contour, and the number of all
};

// Cutter cuts the triangles: Chains or Fronts.
template <class Cutter>
class AreaSweep {
 public:
  AreaSweep(FlatArea& flat, TriangleWriter& writer)
      : flat_(flat), vertices_(flat.vertices), writer_(writer), cutter_(writer) {}

  /// @return false for a contradiction
  [[nodiscard]] bool Run(zelvan::KeyOrder order);

  [[nodiscard]] SweepCounts counts() const noexcept {
    return {intervals_.steps(), cutter_.steps()};
  }

 private:
  [[nodiscard]] Event EventAt(std::uint32_t v) const noexcept;
  void ArrangeShared(std::span<std::uint32_t> positions) const;

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

  const FlatArea& flat_;
  std::span<SweepVertex> vertices_;
  const TriangleWriter& writer_;
  Cutter cutter_;
  IntervalList<Ends> intervals_;
};

template <class Cutter>
bool AreaSweep<Cutter>::Run(zelvan::KeyOrder order) {
  const std::span<std::uint32_t> positions(order.positions);
  for (const zelvan::KeyOrder::Run& run : order.equal) {
    ArrangeShared(positions.subspan(run.begin, run.end - run.begin));
  }
  // A vertex waits for memory when it is looked at first; those of a batch wait together.
  constexpr std::size_t kBatch = 16;
  Event batch[kBatch];
  for (std::size_t begin = 0; begin < positions.size(); begin += kBatch) {
    const std::size_t size = std::min(kBatch, positions.size() - begin);
    for (std::size_t k = 0; k < size; ++k) batch[k] = EventAt(positions[begin + k]);
    for (std::size_t k = 0; k < size; ++k) {
      if (!Handle(batch[k])) return false;
    }
  }
  return writer_.IsComplete();
}

// The neighbours of a vertex on its contour stand beside it, but for those of the first
// and the last.
template <class Cutter>
Event AreaSweep<Cutter>::EventAt(std::uint32_t v) const noexcept {
  std::uint32_t prev = v - 1;
  std::uint32_t next = v + 1;
  if (flat_.isEnd[v]) {
    const auto contour = std::upper_bound(flat_.firsts.begin(), flat_.firsts.end(), v);
    const std::uint32_t first = contour[-1];
    const std::uint32_t last = contour[0] - 1;
    if (v == first) prev = last;
    if (v == last) next = first;
  }
  const GridPoint p = vertices_[v].point;
  const GridPoint prevPoint = vertices_[prev].point;
  const GridPoint nextPoint = vertices_[next].point;
  Event event{{p, v, flat_.nodes[v]}, prev, next, prevPoint, nextPoint, Kind::kLeft};
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
  return event;
}

// Vertices on one point by their kind; those that open intervals from right to left, so
// that each finds the one before it on its right.
template <class Cutter>
void AreaSweep<Cutter>::ArrangeShared(std::span<std::uint32_t> positions) const {
  std::sort(positions.begin(), positions.end(), [&](std::uint32_t a, std::uint32_t b) {
    const Event first = EventAt(a);
    const Event second = EventAt(b);
    if (first.kind != second.kind) return first.kind < second.kind;
    if (first.kind == Kind::kOpen) {
      const std::int64_t side = zelvan::Cross(first.at.point, first.nextPoint, second.nextPoint);
      if (side != 0) return side < 0;
    }
    return a < b;
  });
}

template <class Cutter>
bool AreaSweep<Cutter>::Handle(const Event& event) {
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
template <class Cutter>
std::uint32_t AreaSweep<Cutter>::Nearby(std::uint32_t v) const noexcept {
  constexpr std::uint32_t kReach = 8;
  for (std::uint32_t d = 1; d <= kReach; ++d) {
    if (v >= d && vertices_[v - d].interval != kNone) return vertices_[v - d].interval;
    if (v + d < vertices_.size() && vertices_[v + d].interval != kNone)
      return vertices_[v + d].interval;
  }
  return kNone;
}

// Where a vertex lies whose edges the sweep has not met.
template <class Cutter>
typename AreaSweep<Cutter>::Place AreaSweep<Cutter>::Locate(const Corner& at) {
  return intervals_.Find([&](const Interval<Ends>& interval) { return SideOf(interval, at.point); },
                         Nearby(at.vertex));
}

// The interval that an edge bounds, which ends now; kNone when its upper end was not met.
template <class Cutter>
std::uint32_t AreaSweep<Cutter>::TakeInterval(std::uint32_t edge) noexcept {
  const std::uint32_t i = vertices_[edge].interval;
  vertices_[edge].interval = kNone;
  return i;
}

// An edge from endedUpper ends at a point of a facing edge. Does it only touch that one,
// and not run along it?
bool OnlyTouches(GridPoint endedUpper, GridPoint ended, GridPoint upper, GridPoint lower) noexcept {
  return ended == upper || SideOfDescent(upper, lower, endedUpper) != 0;
}

// The left edge of an interval ends. Does it keep clear of the interval before it?
template <class Cutter>
bool AreaSweep<Cutter>::KeepsClearOnLeft(std::uint32_t i) const noexcept {
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
template <class Cutter>
bool AreaSweep<Cutter>::KeepsClearOnRight(std::uint32_t i) const noexcept {
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
template <class Cutter>
void AreaSweep<Cutter>::SetLeft(std::uint32_t i, const Event& event) {
  Interval<Ends>& interval = intervals_[i];
  interval.leftUpper = event.at.point;
  interval.leftLower = event.nextPoint;
  vertices_[event.at.vertex].interval = i;
}

// The edge before the vertex goes down from here as the right edge of an interval.
template <class Cutter>
void AreaSweep<Cutter>::SetRight(std::uint32_t i, const Event& event) {
  Interval<Ends>& interval = intervals_[i];
  interval.rightUpper = event.at.point;
  interval.rightLower = event.prevPoint;
  interval.rightEdge = event.prev;
  vertices_[event.prev].interval = i;
}

template <class Cutter>
bool AreaSweep<Cutter>::GoOnLeft(const Event& event) {
  const std::uint32_t edge = event.prev;
  const std::uint32_t i = TakeInterval(edge);
  if (i == kNone) return false;
  if (!KeepsClearOnLeft(i)) return false;
  if (!cutter_.GoOnLeft(intervals_[i].ends, event.at, edge)) return false;
  SetLeft(i, event);
  return true;
}

template <class Cutter>
bool AreaSweep<Cutter>::GoOnRight(const Event& event) {
  const std::uint32_t edge = event.at.vertex;
  const std::uint32_t i = TakeInterval(edge);
  if (i == kNone) return false;
  if (!KeepsClearOnRight(i)) return false;
  if (!cutter_.GoOnRight(intervals_[i].ends, event.at, edge)) return false;
  SetRight(i, event);
  return true;
}

template <class Cutter>
bool AreaSweep<Cutter>::Open(const Event& event) {
  const Place place = Locate(event.at);
  if (place.at != kNone) return false;
  const std::uint32_t i = intervals_.Insert({}, place.before, place.after);
  cutter_.Open(intervals_[i].ends, event.at);
  SetLeft(i, event);
  SetRight(i, event);
  return true;
}

// The interval keeps what lies left of the vertex; a new one takes the rest.
template <class Cutter>
bool AreaSweep<Cutter>::Split(const Event& event) {
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

template <class Cutter>
bool AreaSweep<Cutter>::End(const Event& event) {
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
template <class Cutter>
bool AreaSweep<Cutter>::Merge(const Event& event) {
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

// @return false when a ring is not as long as its contour says, or shorter than 3
bool Flatten(const zelvan::Area& area, FlatArea& flat) {
  std::size_t n = 0;
  for (const zelvan::Contour* c = area.contours; c != nullptr; c = c->next) n += c->count;
  flat.nodes.reserve(n);
  flat.vertices.reserve(n);
  flat.isEnd.resize(n);
  for (const zelvan::Contour* c = area.contours; c != nullptr; c = c->next) {
    const std::size_t first = flat.nodes.size();
    VertexNode* v = c->head;
    for (std::uint32_t k = 0; k < c->count && (k == 0 || v != c->head); ++k, v = v->next) {
      flat.nodes.push_back(v);
      flat.vertices.push_back({v->grid, kNone, kNone});
    }
    if (c->count < 3 || v != c->head || flat.nodes.size() - first != c->count) return false;
    flat.firsts.push_back(static_cast<std::uint32_t>(first));
    flat.isEnd[first] = flat.isEnd[flat.nodes.size() - 1] = true;
  }
  flat.firsts.push_back(static_cast<std::uint32_t>(n));
  return n > 0;
}

zelvan::KeyOrder OrderOf(std::span<const SweepVertex> vertices) {
  return zelvan::SortByKey(static_cast<std::uint32_t>(vertices.size()), [=](std::uint32_t v) {
    return zelvan::KeyFromTheTop(vertices[v].point);
  });
}

std::uint32_t TrianglesOf(const FlatArea& flat) noexcept {
  const std::size_t contours = flat.firsts.size() - 1;
  return static_cast<std::uint32_t>(flat.vertices.size() + 2 * contours - 4);
}

bool Sweep(zelvan::Area& area, const SweepSettings& settings) {
  FlatArea flat;
  if (!Flatten(area, flat)) return false;
  area.triangleCount = TrianglesOf(flat);
  // Not by std::make_unique_for_overwrite, which older standard libraries lack.
  area.triangles.reset(new zelvan::Triangle[area.triangleCount]);
  TriangleWriter writer(area, flat.vertices, settings.mesh, settings.numbering);
  AreaSweep<Chains> sweep(flat, writer);
  const bool isKnown =
      settings.order != nullptr && settings.order->positions.size() == flat.vertices.size();
  const bool found = sweep.Run(isKnown ? *settings.order : OrderOf(flat.vertices));
  if (settings.counts != nullptr) *settings.counts = sweep.counts();
  return found;
}

template <class Cutter>
bool SweepFlat(FlatArea& flat, FlatTriangles& triangles) {
  TriangleWriter writer(flat.vertices, TrianglesOf(flat), triangles);
  return AreaSweep<Cutter>(flat, writer).Run(OrderOf(flat.vertices));
}

void DropTriangles(zelvan::Area& area) noexcept {
  area.triangles.reset();
  area.triangleCount = 0;
}

}  // namespace

bool TriangulateBySweep(zelvan::Area& area, const SweepSettings& settings) {
  DropTriangles(area);
  try {
    const bool found = Sweep(area, settings);
    if (!found) DropTriangles(area);
    return found;
  } catch (...) {
    DropTriangles(area);
    throw;
  }
}

bool CutBySweep(const zelvan::Area& area, Cutting cutting, FlatTriangles& triangles) {
  FlatArea flat;
  if (!Flatten(area, flat)) return false;
  return cutting == Cutting::kNearby ? SweepFlat<Fronts>(flat, triangles)
                                     : SweepFlat<Chains>(flat, triangles);
}

}  // namespace VORNEX
