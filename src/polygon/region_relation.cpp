// What is looked at before the sweep: boxes, and the way that it goes (region_relation.h).
#include "polygon/region_relation.h"

#include <algorithm>

#include "polygon/relation_sweep.h"
#include "polygon/sweep_axis.h"

namespace zelvan {

namespace {

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

AxisLengths OpenEdges(const PlacedRegion& region, const WorldBox& common) noexcept {
  AxisLengths lengths;
  for (std::size_t i = 0; i < region.region.Rings(); ++i) {
    if (Meets(BoxOf(region, region.ringBoxes[i]), common)) lengths.Add(region.region.Ring(i));
  }
  return lengths.Per(region.box);
}

template <class Point, class PlaceA, class PlaceB, class ToPlane>
Relation Swept(const PlacedRegion& a, const PlacedRegion& b, const WorldBox& common, unsigned last,
               PlaceA placeA, PlaceB placeB, ToPlane toPlane) {
  const AxisLengths openA = OpenEdges(a, common);
  const AxisLengths openB = OpenEdges(b, common);
  const bool isTurned = openA.x + openB.x > openA.y + openB.y;
  const WorldBox box{Turned(common.min, isTurned), Turned(common.max, isTurned)};
  relation::RelationSweep<Point> sweep(box, isTurned, last);
  sweep.Add(a, relation::kFirst, placeA);
  sweep.Add(b, relation::kSecond, placeB);
  Relation relation =
      sweep.Run([&](Point p) { return Turned(toPlane(Turned(p, isTurned)), isTurned); });
  relation.place = Turned(relation.place, isTurned);
  return relation;
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
