// The sweep that tells what regions have in common (region_relation.h): for points of one grid, and
// for places in doubles.
//
// What holds here:
//  - The status has the edges that the sweep line crosses, from below; of two that run on each
//  other
//    the first region's comes first. Each knows the regions that the face above it lies in.
//  - Where an edge ends or begins, those that pass there, one of each region at most, are looked at
//    again. Every face begins in such a place.
//  - A crossing is seen when the edges become neighbours, before the sweep comes there.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <tuple>
#include <vector>

#include "memory/lazy_order.h"
#include "memory/ordered_list.h"
#include "polygon/input_predicates.h"
#include "polygon/placement.h"
#include "polygon/region_relation.h"
#include "polygon/sweep_axis.h"

namespace zelvan::relation {

inline constexpr unsigned kAllFacts = kShared | kOverlapping | kLeaving;

// On which side of the line from a to b a point lies: 1 to the left.
inline int Turn(GridPoint a, GridPoint b, GridPoint p) noexcept {
  const std::int64_t cross = Cross(a, b, p);
  return (cross > 0) - (cross < 0);
}
inline int Turn(WorldPoint a, WorldPoint b, WorldPoint p) noexcept {
  return SideSign(b, a, p);
}

inline auto Key(GridPoint p) noexcept {
  return std::tuple(p.gx, p.gy);
}
inline auto Key(WorldPoint p) noexcept {
  return std::tuple(p.x, p.y);
}

// Where segments cross that do.
inline WorldPoint CrossingOf(WorldPoint a, WorldPoint b, WorldPoint c, WorldPoint d) noexcept {
  const auto cross = [](WorldPoint u, WorldPoint v) { return u.x * v.y - u.y * v.x; };
  const WorldPoint u{b.x - a.x, b.y - a.y};
  const WorldPoint v{d.x - c.x, d.y - c.y};
  const double ratio = cross({c.x - a.x, c.y - a.y}, v) / cross(u, v);
  const double t = ratio >= 0.0 ? std::min(ratio, 1.0) : 0.0;  // or no number
  return {a.x + t * u.x, a.y + t * u.y};
}

// Of one region or the other: bit 0 stands for the first, bit 1 for the second.
using Operands = unsigned;
inline constexpr Operands kFirst = 1;
inline constexpr Operands kSecond = 2;

template <class Point>
class RelationSweep {
 public:
  // Sweeps along the x axis or, with the axes exchanged, along the other.
  // @param common  the box of both regions, exchanged as they will be
  RelationSweep(const WorldBox& common, bool isTurned, unsigned last) noexcept
      : common_(common), isTurned_(isTurned), last_(last) {}

  // Takes the edges of a region that can have a part; place(p) is where its point p lies.
  template <class Place>
  void Add(const PlacedRegion& region, Operands operand, Place place);

  // toPlane(point) is a place, with the axes as the sweep has them.
  template <class ToPlane>
  Relation Run(ToPlane toPlane);

 private:
  struct Edge {
    Point low;  // in order of (x, y)
    Point high;
    Operands operand;
    bool isInsideAbove;  // of its own region
    Operands above = 0;  // the regions that the face above it lies in
    std::uint32_t place = 0;
  };
  struct Event {
    Point at;
    std::uint32_t edge;
    bool isStart;
  };
  using Status = OrderedList<std::uint32_t>;  // edges from below

  int SideOf(std::uint32_t edge, Point p) const noexcept {
    return Turn(edges_[edge].low, edges_[edge].high, p);
  }

  void TakeOut(std::uint32_t edge);
  void PutIn(std::uint32_t edge);
  void LookForCrossing(std::uint32_t placeBelow, std::uint32_t placeAbove);
  void LookAround(Point p, Operands touching);
  void LookAtFace(Operands operands) noexcept;
  void CountFromBelow();
  bool IsDone() const noexcept { return (facts_ & last_) != 0; }
  bool HasPart(const WorldBox& box) const noexcept {
    return box.min.x <= common_.max.x && box.max.x >= common_.min.x && box.min.y <= common_.max.y;
  }

  WorldBox common_;
  bool isTurned_;
  unsigned last_;
  unsigned facts_ = 0;
  bool isCrossing_ = false;
  std::uint32_t crossing_[2] = {0, 0};  // the edges that cross
  std::vector<Edge> edges_;
  std::vector<Event> events_;
  Status status_;
  std::uint32_t near_ = Status::kNone;  // a place in it where the present event is
};

template <class Point>
template <class Place>
void RelationSweep<Point>::Add(const PlacedRegion& region, Operands operand, Place place) {
  const auto boxOf = [&](GridPoint min, GridPoint max) {
    return WorldBox{Turned(region.place(min), isTurned_), Turned(region.place(max), isTurned_)};
  };
  for (std::size_t i = 0; i < region.region.Rings(); ++i) {
    if (!HasPart(boxOf(region.ringBoxes[i].min, region.ringBoxes[i].max))) continue;
    const std::span<const GridPoint> ring = region.region.Ring(i);
    GridPoint from = ring.back();
    for (const GridPoint to : ring) {
      const bool isForward = Turned(from, isTurned_) < Turned(to, isTurned_);
      const GridPoint low = isForward ? from : to;
      const GridPoint high = isForward ? to : from;
      const GridPoint min{std::min(from.gx, to.gx), std::min(from.gy, to.gy)};
      const GridPoint max{std::max(from.gx, to.gx), std::max(from.gy, to.gy)};
      from = to;
      if (!HasPart(boxOf(min, max))) continue;
      const auto edge = static_cast<std::uint32_t>(edges_.size());
      edges_.push_back({Turned(place(low), isTurned_), Turned(place(high), isTurned_), operand,
                        isForward != isTurned_});
      events_.push_back({edges_.back().low, edge, true});
      events_.push_back({edges_.back().high, edge, false});
    }
  }
}

template <class Point>
template <class ToPlane>
Relation RelationSweep<Point>::Run(ToPlane toPlane) {
  LazyOrder order(events_, [](const Event& a, const Event& b) {
    if (Key(a.at) != Key(b.at)) return Key(a.at) < Key(b.at);
    return a.isStart != b.isStart ? b.isStart : a.edge < b.edge;
  });
  bool isInside = false;  // the box of both
  std::size_t i = 0;
  while (const Event* const first = order.At(i)) {
    const Point p = first->at;
    if (toPlane(p).x > common_.max.x) break;
    if (!isInside && toPlane(p).x >= common_.min.x) {
      CountFromBelow();  // what begins before the box lies there already
      isInside = true;
    }
    Operands touching = 0;
    near_ = Status::kNone;
    for (const Event* event = first; event != nullptr && Key(event->at) == Key(p);
         event = order.At(++i)) {
      touching |= edges_[event->edge].operand;
      event->isStart ? PutIn(event->edge) : TakeOut(event->edge);
      if (isCrossing_) {
        const Edge& e = edges_[crossing_[0]];
        const Edge& f = edges_[crossing_[1]];
        return {kAllFacts,
                CrossingOf(toPlane(e.low), toPlane(e.high), toPlane(f.low), toPlane(f.high))};
      }
    }
    if (isInside) LookAround(p, touching);
    if (IsDone()) return {facts_, toPlane(p)};
  }
  return {facts_, {}};
}

template <class Point>
void RelationSweep<Point>::TakeOut(std::uint32_t edge) {
  const std::uint32_t place = edges_[edge].place;
  const std::uint32_t below = status_.Before(place);
  const std::uint32_t above = status_.After(place);
  status_.Remove(place);
  near_ = below != Status::kNone ? below : above;
  LookForCrossing(below, above);
}

template <class Point>
void RelationSweep<Point>::PutIn(std::uint32_t edge) {
  const Edge& added = edges_[edge];
  const auto side = [&](std::uint32_t other) {
    const int ofStart = SideOf(other, added.low);
    if (ofStart != 0) return ofStart;
    const int ofEnd = SideOf(other, added.high);
    if (ofEnd != 0) return ofEnd;
    return added.operand > edges_[other].operand ? 1 : -1;  // they run on each other
  };
  const auto found = status_.Find(side, near_);
  const std::uint32_t place = status_.Insert(edge, found.before, found.after);
  edges_[edge].place = place;
  near_ = place;
  LookForCrossing(found.before, place);
  LookForCrossing(place, found.after);
}

// Strictly between the ends of both; else an end will be there.
template <class Point>
void RelationSweep<Point>::LookForCrossing(std::uint32_t placeBelow, std::uint32_t placeAbove) {
  if (placeBelow == Status::kNone || placeAbove == Status::kNone) return;
  const std::uint32_t e = status_[placeBelow];
  const std::uint32_t f = status_[placeAbove];
  if (edges_[e].operand == edges_[f].operand) return;
  if (SideOf(e, edges_[f].low) * SideOf(e, edges_[f].high) >= 0) return;
  if (SideOf(f, edges_[e].low) * SideOf(f, edges_[e].high) >= 0) return;
  isCrossing_ = true;
  crossing_[0] = e;
  crossing_[1] = f;
}

// At a place where edges end or begin: the edges that lead on from it, from below. @param
// touching  the regions that have an edge with an end there
template <class Point>
void RelationSweep<Point>::LookAround(Point p, Operands touching) {
  const auto found = status_.Find([&](std::uint32_t edge) { return SideOf(edge, p); }, near_);
  std::uint32_t first = found.at != Status::kNone ? found.at : found.after;
  if (found.at != Status::kNone) {
    for (std::uint32_t below = status_.Before(first);
         below != Status::kNone && SideOf(status_[below], p) == 0; below = status_.Before(first)) {
      first = below;
    }
  }
  const std::uint32_t under = found.at != Status::kNone ? status_.Before(first) : found.before;
  Operands operands = under != Status::kNone ? edges_[status_[under]].above : 0;
  for (std::uint32_t place = first; place != Status::kNone && SideOf(status_[place], p) == 0;) {
    Edge& edge = edges_[status_[place]];
    touching |= edge.operand;
    operands = edge.isInsideAbove ? operands | edge.operand : operands & ~edge.operand;
    edge.above = operands;
    place = status_.After(place);
    const bool isFace = place == Status::kNone || SideOf(status_[place], p) != 0 ||
                        Turn(edge.low, edge.high, edges_[status_[place]].high) != 0;
    if (isFace) LookAtFace(operands);
  }
  if (touching == (kFirst | kSecond)) facts_ |= kShared;
}

template <class Point>
void RelationSweep<Point>::LookAtFace(Operands operands) noexcept {
  if (operands == (kFirst | kSecond)) facts_ |= kShared | kOverlapping;
  if (operands == kSecond) facts_ |= kLeaving;
}

// Where the sweep comes into the box of both regions.
template <class Point>
void RelationSweep<Point>::CountFromBelow() {
  Operands operands = 0;
  for (std::uint32_t place = status_.Find([](std::uint32_t) { return -1; }).after;
       place != Status::kNone; place = status_.After(place)) {
    Edge& edge = edges_[status_[place]];
    operands = edge.isInsideAbove ? operands | edge.operand : operands & ~edge.operand;
    edge.above = operands;
  }
}

}  // namespace zelvan::relation
