// The sweep that tells what regions have in common (region_relation.h).
#include "polygon/region_relation.h"

#include <algorithm>
#include <cstdint>
#include <tuple>
#include <vector>

#include "memory/ordered_list.h"
#include "polygon/input_predicates.h"

namespace zelvan {

namespace {

constexpr unsigned kAllFacts = kShared | kOverlapping | kLeaving;

// On which side of the line from a to b a point lies: 1 to the left.
int Turn(GridPoint a, GridPoint b, GridPoint p) noexcept {
  const std::int64_t cross = Cross(a, b, p);
  return (cross > 0) - (cross < 0);
}
int Turn(WorldPoint a, WorldPoint b, WorldPoint p) noexcept {
  return SideSign(b, a, p);
}

auto Key(GridPoint p) noexcept {
  return std::tuple(p.gx, p.gy);
}
auto Key(WorldPoint p) noexcept {
  return std::tuple(p.x, p.y);
}

WorldBox BoxOf(const PlacedRegion& region, const GridBox& box) noexcept {
  return {region.place(box.min), region.place(box.max)};
}

bool Meets(const WorldBox& a, const WorldBox& b) noexcept {
  return a.min.x <= b.max.x && b.min.x <= a.max.x && a.min.y <= b.max.y && b.min.y <= a.max.y;
}

bool Holds(const WorldBox& a, const WorldBox& b) noexcept {
  return a.min.x <= b.min.x && b.max.x <= a.max.x && a.min.y <= b.min.y && b.max.y <= a.max.y;
}

// What lies in both.
WorldBox Common(const WorldBox& a, const WorldBox& b) noexcept {
  return {{std::max(a.min.x, b.min.x), std::max(a.min.y, b.min.y)},
          {std::min(a.max.x, b.max.x), std::min(a.max.y, b.max.y)}};
}

// Where segments cross that do.
WorldPoint CrossingOf(WorldPoint a, WorldPoint b, WorldPoint c, WorldPoint d) noexcept {
  const auto cross = [](WorldPoint u, WorldPoint v) { return u.x * v.y - u.y * v.x; };
  const WorldPoint u{b.x - a.x, b.y - a.y};
  const WorldPoint v{d.x - c.x, d.y - c.y};
  const double ratio = cross({c.x - a.x, c.y - a.y}, v) / cross(u, v);
  const double t = ratio >= 0.0 ? std::min(ratio, 1.0) : 0.0;  // or no number
  return {a.x + t * u.x, a.y + t * u.y};
}

// Things in order, of which the first are sorted first, so that who ends early has sorted few.
template <class Item, class IsBefore>
class LazyOrder {
 public:
  LazyOrder(std::vector<Item>& items, IsBefore isBefore) : items_(items), isBefore_(isBefore) {}

  // Null behind the last.
  const Item* At(std::size_t i) {
    while (i >= sorted_ && sorted_ < items_.size()) SortMore();
    return i < items_.size() ? &items_[i] : nullptr;
  }

 private:
  void SortMore() {
    constexpr std::size_t first = 2048;
    constexpr std::size_t growth = 8;
    const std::size_t wanted = std::max(first, growth * sorted_);
    const std::size_t to = wanted < items_.size() / 2 ? wanted : items_.size();
    const auto begin = items_.begin() + static_cast<std::ptrdiff_t>(sorted_);
    const auto end = items_.begin() + static_cast<std::ptrdiff_t>(to);
    if (end != items_.end()) std::nth_element(begin, end, items_.end(), isBefore_);
    std::sort(begin, end, isBefore_);
    sorted_ = to;
  }

  std::vector<Item>& items_;
  IsBefore isBefore_;
  std::size_t sorted_ = 0;
};

// Of one region or the other: bit 0 stands for the first, bit 1 for the second.
using Operands = unsigned;
constexpr Operands kFirst = 1;
constexpr Operands kSecond = 2;

template <class Point>
class RelationSweep {
 public:
  explicit RelationSweep(unsigned last) noexcept : last_(last) {}

  // Takes the edges of a region that can have a part; place(p) is where its point p lies.
  template <class Place>
  void Add(const PlacedRegion& region, Operands operand, const WorldBox& common, Place place);

  // Sweeps across the box of both regions. toPlane(point) is a place.
  template <class ToPlane>
  Relation Run(const WorldBox& common, ToPlane toPlane);

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

  unsigned last_;
  unsigned facts_ = 0;
  bool isCrossing_ = false;
  std::uint32_t crossing_[2] = {0, 0};  // the edges that cross
  std::vector<Edge> edges_;
  std::vector<Event> events_;
  Status status_;
};

template <class Point>
template <class Place>
void RelationSweep<Point>::Add(const PlacedRegion& region, Operands operand, const WorldBox& common,
                               Place place) {
  const auto hasPart = [&](const WorldBox& box) {
    return box.min.x <= common.max.x && box.max.x >= common.min.x && box.min.y <= common.max.y;
  };
  for (std::size_t i = 0; i < region.region.Rings(); ++i) {
    if (!hasPart(BoxOf(region, region.ringBoxes[i]))) continue;
    const std::span<const GridPoint> ring = region.region.Ring(i);
    GridPoint from = ring.back();
    for (const GridPoint to : ring) {
      const bool isRightward = from < to;
      const GridPoint low = isRightward ? from : to;
      const GridPoint high = isRightward ? to : from;
      const GridBox box{{low.gx, std::min(low.gy, high.gy)}, {high.gx, std::max(low.gy, high.gy)}};
      from = to;
      if (!hasPart(BoxOf(region, box))) continue;
      const auto edge = static_cast<std::uint32_t>(edges_.size());
      edges_.push_back({place(low), place(high), operand, isRightward});
      events_.push_back({edges_.back().low, edge, true});
      events_.push_back({edges_.back().high, edge, false});
    }
  }
}

template <class Point>
template <class ToPlane>
Relation RelationSweep<Point>::Run(const WorldBox& common, ToPlane toPlane) {
  LazyOrder order(events_, [](const Event& a, const Event& b) {
    if (Key(a.at) != Key(b.at)) return Key(a.at) < Key(b.at);
    return a.isStart != b.isStart ? b.isStart : a.edge < b.edge;
  });
  bool isInside = false;  // the box of both
  std::size_t i = 0;
  while (const Event* const first = order.At(i)) {
    const Point p = first->at;
    if (toPlane(p).x > common.max.x) break;
    if (!isInside && toPlane(p).x >= common.min.x) {
      CountFromBelow();  // what begins before the box lies there already
      isInside = true;
    }
    Operands touching = 0;
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
  const auto found = status_.Find(side);
  const std::uint32_t place = status_.Insert(edge, found.before, found.after);
  edges_[edge].place = place;
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
  const auto found = status_.Find([&](std::uint32_t edge) { return SideOf(edge, p); });
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

template <class Point, class PlaceA, class PlaceB, class ToPlane>
Relation Swept(const PlacedRegion& a, const PlacedRegion& b, const WorldBox& common, unsigned last,
               PlaceA placeA, PlaceB placeB, ToPlane toPlane) {
  RelationSweep<Point> sweep(last);
  sweep.Add(a, kFirst, common, placeA);
  sweep.Add(b, kSecond, common, placeB);
  return sweep.Run(common, toPlane);
}

}  // namespace

Relation Relate(const PlacedRegion& a, const PlacedRegion& b, unsigned last) {
  const WorldBox boxA = BoxOf(a, a.box);
  const WorldBox boxB = BoxOf(b, b.box);
  const bool isLeaving = !Holds(boxA, boxB);
  if (!Meets(boxA, boxB) || (isLeaving && (last & kLeaving) != 0)) return {kLeaving, {}};
  const WorldBox common = Common(boxA, boxB);
  if (a.place == b.place) {
    const auto same = [](GridPoint p) { return p; };
    return Swept<GridPoint>(a, b, common, last, same, same, a.place);
  }
  const auto same = [](WorldPoint p) { return p; };
  return Swept<WorldPoint>(a, b, common, last, a.place, b.place, same);
}

}  // namespace zelvan
