// Questions to two regions, and distances (region_questions.h).
#include "interface/region_questions.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <vector>

#include "interface/region_refusal.h"
#include "interface/region_side.h"
#include "polygon/region_distance.h"
#include "polygon/region_relation.h"

namespace zelvan {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr WorldPoint kNowhere{kNoNumber, kNoNumber};
constexpr double kFarthest = 0x1p400;  // in steps, from 0

// Two regions that have polygons, in steps of the coarser grid.
struct InCommonSteps {
  PlacedRegion a;
  PlacedRegion b;
  double step;
};

InCommonSteps PlacedTogether(const zelvan_region& a, const zelvan_region& b) {
  const int exponentA = a.grid.Exponent();
  const int exponentB = b.grid.Exponent();
  Require(std::abs(exponentA - exponentB) <= 200, ZELVAN_TOO_COARSE);
  const int exponent = std::max(exponentA, exponentB);
  return {PlacedIn(a, exponent), PlacedIn(b, exponent), std::ldexp(1.0, exponent)};
}

// Looks until one of the facts `last` is known.
unsigned FactsOf(const zelvan_region& a, const zelvan_region& b, unsigned last) {
  const InCommonSteps both = PlacedTogether(a, b);
  return Relate(both.a, both.b, last).facts;
}

WorldPoint Scaled(WorldPoint p, double step) noexcept {
  return {p.x * step, p.y * step};
}

TreeInPlane TreeOf(const zelvan_region& region, const Placement& place) {
  return {region.tree.Make(region.flat), place};
}

struct Nearest {
  WorldPoint place;
  double distance;
};

Nearest NearestTo(const zelvan_region& region, const TreeInPlane& tree, WorldPoint p) noexcept {
  const WorldPoint steps = region.grid.StepsOf(p);
  const bool isNear = std::fabs(steps.x) <= kFarthest && std::fabs(steps.y) <= kFarthest;
  if (!isNear) return {kNowhere, kInfinity};  // or no number
  const EdgeDistance found = FindNearest(tree, steps).distance;
  const double step = region.grid.Step();
  return {Scaled(found.place, step), std::sqrt(found.squared) * step};
}

}  // namespace

bool Intersects(const zelvan_region* a, const zelvan_region* b) {
  if (IsEmpty(a) || IsEmpty(b)) return false;
  return a == b || (FactsOf(*a, *b, kShared) & kShared) != 0;
}

bool Touches(const zelvan_region* a, const zelvan_region* b) {
  if (IsEmpty(a) || IsEmpty(b) || a == b) return false;
  return (FactsOf(*a, *b, kOverlapping) & (kShared | kOverlapping)) == kShared;
}

bool Covers(const zelvan_region* a, const zelvan_region* b) {
  if (IsEmpty(b) || a == b) return true;
  return !IsEmpty(a) && (FactsOf(*a, *b, kLeaving) & kLeaving) == 0;
}

RegionDistance DistanceBetween(const zelvan_region* a, const zelvan_region* b) {
  if (IsEmpty(a) || IsEmpty(b)) return {kInfinity, kNowhere, kNowhere};
  const InCommonSteps both = PlacedTogether(*a, *b);
  const Relation relation = Relate(both.a, both.b, kShared);
  if ((relation.facts & kShared) != 0) {
    const WorldPoint place = Scaled(relation.place, both.step);
    return {0.0, place, place};
  }
  const NearestPair pair = FindNearestPair(TreeOf(*a, both.a.place), TreeOf(*b, both.b.place));
  return {std::sqrt(pair.squared) * both.step, Scaled(pair.first, both.step),
          Scaled(pair.second, both.step)};
}

void FindNearest(const zelvan_region* region, Extent extent, const double* xy, std::uint32_t count,
                 double* places, double* distances) {
  const auto put = [&](std::size_t i, const Nearest& nearest) {
    if (distances != nullptr) distances[i] = nearest.distance;
    if (places == nullptr) return;
    places[2 * i] = nearest.place.x;
    places[2 * i + 1] = nearest.place.y;
  };
  if (IsEmpty(region)) {
    for (std::size_t i = 0; i < count; ++i) put(i, {kNowhere, kInfinity});
    return;
  }
  std::vector<std::int8_t> sides(extent == Extent::kAll ? count : 0);
  if (extent == Extent::kAll) FindSides(*region, xy, count, sides.data());
  const TreeInPlane tree = TreeOf(*region, PlacedIn(*region, region->grid.Exponent()).place);
  for (std::size_t i = 0; i < count; ++i) {
    const WorldPoint p{xy[2 * i], xy[2 * i + 1]};
    const bool isInside = extent == Extent::kAll && sides[i] >= 0;
    put(i, isInside ? Nearest{{p.x + 0.0, p.y + 0.0}, 0.0} : NearestTo(*region, tree, p));
  }
}

}  // namespace zelvan
