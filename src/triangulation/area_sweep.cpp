// The events of the sweep (area_sweep.h).
#include "triangulation/area_sweep.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "triangulation/chains.h"
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

class AreaSweep {
 public:
  AreaSweep(zelvan::Area& area, FlatArea& flat, const SweepSettings& settings)
      : flat_(flat),
        vertices_(flat.vertices),
        wanted_(area.triangleCount),
        writer_(area, flat.vertices, settings.mesh, settings.numbering),
        chains_(writer_) {}

  /// @return false for a contradiction
  [[nodiscard]] bool Run(zelvan::KeyOrder order);

  [[nodiscard]] SweepCounts counts() const noexcept {
    return {intervals_.steps(), chains_.steps()};
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

  [[nodiscard]] IntervalList::Place Locate(const Corner& at);
  [[nodiscard]] std::uint32_t Nearby(std::uint32_t v) const noexcept;
  [[nodiscard]] std::uint32_t TakeInterval(std::uint32_t edge) noexcept;
  [[nodiscard]] bool KeepsClearOnLeft(std::uint32_t i) const noexcept;
  [[nodiscard]] bool KeepsClearOnRight(std::uint32_t i) const noexcept;
  [[nodiscard]] std::uint32_t StepTo(const Interval& interval, std::uint32_t left,
                                     std::uint32_t right);
  void SetLeft(std::uint32_t i, const Event& event);
  void SetRight(std::uint32_t i, const Event& event);

  const FlatArea& flat_;
  std::span<SweepVertex> vertices_;
  std::uint32_t wanted_;  // triangles
  TriangleWriter writer_;
  Chains chains_;
  IntervalList intervals_;
};

bool AreaSweep::Run(zelvan::KeyOrder order) {
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
  return writer_.count() == wanted_;
}

// The neighbours of a vertex on its contour stand beside it, but for those of the first
// and the last.
Event AreaSweep::EventAt(std::uint32_t v) const noexcept {
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
void AreaSweep::ArrangeShared(std::span<std::uint32_t> positions) const {
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

bool AreaSweep::Handle(const Event& event) {
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
std::uint32_t AreaSweep::Nearby(std::uint32_t v) const noexcept {
  constexpr std::uint32_t kReach = 8;
  for (std::uint32_t d = 1; d <= kReach; ++d) {
    if (v >= d && vertices_[v - d].interval != kNone) return vertices_[v - d].interval;
    if (v + d < vertices_.size() && vertices_[v + d].interval != kNone)
      return vertices_[v + d].interval;
  }
  return kNone;
}

// Where a vertex lies whose edges the sweep has not met.
IntervalList::Place AreaSweep::Locate(const Corner& at) {
  return intervals_.Find([&](const Interval& interval) { return SideOf(interval, at.point); },
                         Nearby(at.vertex));
}

// The interval that an edge bounds, which ends now; kNone when its upper end was not met.
std::uint32_t AreaSweep::TakeInterval(std::uint32_t edge) noexcept {
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
bool AreaSweep::KeepsClearOnLeft(std::uint32_t i) const noexcept {
  const std::uint32_t before = intervals_.Before(i);
  if (before == kNone) return true;
  const Interval& interval = intervals_[i];
  const GridPoint upper = intervals_[before].rightUpper;
  const GridPoint lower = intervals_[before].rightLower;
  const std::int64_t side = SideOfDescent(upper, lower, interval.leftLower);
  return side > 0 ||
         (side == 0 && OnlyTouches(interval.leftUpper, interval.leftLower, upper, lower));
}

// The same for the right edge and the interval after it.
bool AreaSweep::KeepsClearOnRight(std::uint32_t i) const noexcept {
  const std::uint32_t after = intervals_.After(i);
  if (after == kNone) return true;
  const Interval& interval = intervals_[i];
  const GridPoint upper = intervals_[after].leftUpper;
  const GridPoint lower = intervals_[after].leftLower;
  const std::int64_t side = SideOfDescent(upper, lower, interval.rightLower);
  return side < 0 ||
         (side == 0 && OnlyTouches(interval.rightUpper, interval.rightLower, upper, lower));
}

// The edge from the last vertex of an interval to a new one, at which its edge `left`
// or `right` ends, or neither.
std::uint32_t AreaSweep::StepTo(const Interval& interval, std::uint32_t left, std::uint32_t right) {
  if (left != kNone && chains_.IsSingle(interval.leftChain)) return left;
  if (right != kNone && chains_.IsSingle(interval.rightChain)) return right;
  return writer_.AddDiagonal();
}

// The vertex's own edge goes down from here as the left edge of an interval.
void AreaSweep::SetLeft(std::uint32_t i, const Event& event) {
  Interval& interval = intervals_[i];
  interval.leftUpper = event.at.point;
  interval.leftLower = event.nextPoint;
  interval.leftChain = chains_.Start(event.at);
  vertices_[event.at.vertex].interval = i;
}

// The edge before the vertex goes down from here as the right edge of an interval.
void AreaSweep::SetRight(std::uint32_t i, const Event& event) {
  Interval& interval = intervals_[i];
  interval.rightUpper = event.at.point;
  interval.rightLower = event.prevPoint;
  interval.rightChain = chains_.Start(event.at);
  interval.rightEdge = event.prev;
  vertices_[event.prev].interval = i;
}

bool AreaSweep::GoOnLeft(const Event& event) {
  const std::uint32_t edge = event.prev;
  const std::uint32_t i = TakeInterval(edge);
  if (i == kNone) return false;
  Interval& interval = intervals_[i];
  if (!KeepsClearOnLeft(i)) return false;
  const std::uint32_t step = StepTo(interval, edge, kNone);
  if (!chains_.CloseLeft(interval.leftChain, event.at, step, edge)) return false;
  interval.rightChain = chains_.AppendAndCut(interval.rightChain, event.at, step);
  if (interval.rightChain == kNone) return false;
  SetLeft(i, event);
  return true;
}

bool AreaSweep::GoOnRight(const Event& event) {
  const std::uint32_t edge = event.at.vertex;
  const std::uint32_t i = TakeInterval(edge);
  if (i == kNone) return false;
  Interval& interval = intervals_[i];
  if (!KeepsClearOnRight(i)) return false;
  const std::uint32_t step = StepTo(interval, kNone, edge);
  if (!chains_.CloseRight(interval.rightChain, event.at, step, edge)) return false;
  interval.leftChain = chains_.Append(interval.leftChain, event.at, step);
  SetRight(i, event);
  return true;
}

bool AreaSweep::Open(const Event& event) {
  const IntervalList::Place place = Locate(event.at);
  if (place.at != kNone) return false;
  const std::uint32_t i = intervals_.Insert({}, place.before, place.after);
  SetLeft(i, event);
  SetRight(i, event);
  return true;
}

// The interval keeps what lies left of the vertex; a new one takes the rest.
bool AreaSweep::Split(const Event& event) {
  const std::uint32_t i = Locate(event.at).at;
  if (i == kNone) return false;
  const std::uint32_t rest = intervals_.Insert({}, i, intervals_.After(i));
  Interval& left = intervals_[i];
  Interval& right = intervals_[rest];
  const std::uint32_t step = writer_.AddDiagonal();
  right.rightUpper = left.rightUpper;
  right.rightLower = left.rightLower;
  right.rightEdge = left.rightEdge;
  vertices_[right.rightEdge].interval = rest;
  right.rightChain = chains_.AppendAndCut(left.rightChain, event.at, step);
  if (right.rightChain == kNone) return false;
  left.leftChain = chains_.Append(left.leftChain, event.at, step);
  SetRight(i, event);
  SetLeft(rest, event);
  return true;
}

bool AreaSweep::End(const Event& event) {
  const std::uint32_t leftEdge = event.prev;
  const std::uint32_t rightEdge = event.at.vertex;
  const std::uint32_t i = TakeInterval(leftEdge);
  if (i == kNone || TakeInterval(rightEdge) != i) return false;
  const Interval& interval = intervals_[i];
  if (!KeepsClearOnLeft(i) || !KeepsClearOnRight(i)) return false;
  const std::uint32_t step = StepTo(interval, leftEdge, rightEdge);
  if (!chains_.CloseLeft(interval.leftChain, event.at, step, leftEdge) ||
      !chains_.CloseRight(interval.rightChain, event.at, step, rightEdge))
    return false;
  intervals_.Remove(i);
  return true;
}

// The interval on the left takes over the other one.
bool AreaSweep::Merge(const Event& event) {
  const std::uint32_t leftEdge = event.prev;
  const std::uint32_t rightEdge = event.at.vertex;
  const std::uint32_t l = TakeInterval(rightEdge);
  const std::uint32_t r = TakeInterval(leftEdge);
  if (l == kNone || r == kNone || intervals_.After(l) != r) return false;
  Interval& left = intervals_[l];
  Interval& right = intervals_[r];
  const std::uint32_t stepLeft = StepTo(left, kNone, rightEdge);
  const std::uint32_t stepRight = StepTo(right, leftEdge, kNone);
  if (!chains_.CloseRight(left.rightChain, event.at, stepLeft, rightEdge) ||
      !chains_.CloseLeft(right.leftChain, event.at, stepRight, leftEdge))
    return false;
  left.leftChain = chains_.Append(left.leftChain, event.at, stepLeft);
  left.rightChain = chains_.AppendAndCut(right.rightChain, event.at, stepRight);
  if (left.rightChain == kNone) return false;
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

bool Sweep(zelvan::Area& area, const SweepSettings& settings) {
  FlatArea flat;
  if (!Flatten(area, flat)) return false;
  const std::size_t contours = flat.firsts.size() - 1;
  area.triangleCount = static_cast<std::uint32_t>(flat.nodes.size() + 2 * contours - 4);
  // Not by std::make_unique_for_overwrite, which older standard libraries lack.
  area.triangles.reset(new zelvan::Triangle[area.triangleCount]);
  AreaSweep sweep(area, flat, settings);
  const bool isKnown =
      settings.order != nullptr && settings.order->positions.size() == flat.vertices.size();
  const bool found = sweep.Run(isKnown ? *settings.order : OrderOf(flat.vertices));
  if (settings.counts != nullptr) *settings.counts = sweep.counts();
  return found;
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

}  // namespace VORNEX
