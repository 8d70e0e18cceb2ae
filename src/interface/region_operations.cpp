// Regions by the Boolean engine (region_operations.h).
#include "interface/region_operations.h"

#include <zelvan/error.h>

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "boolean/boolean.h"
#include "interface/region_refusal.h"
#include "polygon/area_builder.h"
#include "polygon/contour.h"
#include "polygon/grid_mapping.h"

namespace zelvan {

namespace {

constexpr std::size_t kMostPoints = std::numeric_limits<std::int32_t>::max();

// One sweep over the contours of two operands, which it uses up.
class Operation {
 public:
  [[nodiscard]] FlatRegion Run(BoolOp op, FillRules rules) {
    OwnedRing result;
    const ERR::CODE code =
        CombineCopies(a.get(), b.get(), result.first, op, records_, rules, ResultForm::kWalks);
    if (code != ERR::OK) ERR::Raise(code);
    FlatRegion region = FlattenWalks(result.first);
    if (region.points.size() > kMostPoints) throw RegionRefusal{ZELVAN_TOO_LARGE};
    return region;
  }

  /// What the contours of the first operand bound.
  [[nodiscard]] FlatRegion Run(FillRule rule) { return Run(UNION, {rule, rule}); }

 private:
  SweepRecords records_;  // outlive the operands

 public:
  AreaBuilder a;
  AreaBuilder b;
};

// Calls visit(point, place) for each point of one ring; those that are not finite are refused.
template <class Visit>
void ForEachPoint(const RingInput& rings, std::uint32_t ring, Visit visit) {
  const std::uint32_t first = rings.offsets[ring];
  for (std::uint32_t i = first; i < rings.offsets[ring + 1]; ++i) {
    const WorldPoint p{rings.xy[2 * std::size_t{i}], rings.xy[2 * std::size_t{i} + 1]};
    const zelvan_fault place{ring, i - first};
    if (!std::isfinite(p.x) || !std::isfinite(p.y)) throw RegionRefusal{ZELVAN_NOT_FINITE, place};
    visit(p, place);
  }
}

void SnapRing(const RingInput& rings, std::uint32_t ring, const RegionGrid& grid,
              std::vector<GridPoint>& out) {
  out.clear();
  ForEachPoint(rings, ring, [&](WorldPoint p, zelvan_fault place) {
    const auto point = grid.Snap(p);
    if (!point) throw RegionRefusal{ZELVAN_OUTSIDE_GRID, place};
    out.push_back(*point);
  });
}

// A region with its points on another grid.
FlatRegion Moved(const zelvan_region& region, const RegionGrid& grid, bool& isExact) {
  FlatRegion moved = region.flat;
  isExact = true;
  for (GridPoint& p : moved.points) {
    const GridPoint there = grid.Move(p, region.grid);
    const WorldPoint before = region.grid.PlaceOf(p);
    const WorldPoint after = grid.PlaceOf(there);
    isExact = isExact && before.x == after.x && before.y == after.y;
    p = there;
  }
  return moved;
}

// A region on a grid that is at least as coarse. What rounding turned over is lost.
RegionHandle OnGrid(const zelvan_region* region, const RegionGrid& grid) {
  if (region == nullptr || region->grid == grid) return Share(region);
  bool isExact = false;
  FlatRegion moved = Moved(*region, grid, isExact);
  if (isExact) return MakeRegion(grid, std::move(moved));
  Operation operation;
  operation.a.Add(moved);
  return MakeRegion(grid, operation.Run(FillRule::Positive));
}

RegionGrid GridFor(std::span<const zelvan_region* const> regions) {
  std::vector<GridClaim> claims;
  for (const zelvan_region* region : regions) {
    if (region == nullptr) continue;
    if (!claims.empty() && claims.back().grid == region->grid) {
      const WorldBox box = BoundsOf(*region);
      WorldBox& all = claims.back().box;
      MergeBoxes(all.min, all.max, box.min, box.max);
    } else {
      claims.push_back({region->grid, BoundsOf(*region)});
    }
  }
  if (claims.size() == 1) return claims.front().grid;
  const auto grid = CommonGrid(claims);
  if (!grid) throw RegionRefusal{ZELVAN_OUTSIDE_GRID};
  return *grid;
}

}  // namespace

RegionGrid GridCovering(const RingInput& rings) {
  if (rings.Points() == 0) return {};
  WorldBox box{{rings.xy[0], rings.xy[1]}, {rings.xy[0], rings.xy[1]}};
  for (std::uint32_t i = 0; i < rings.Rings(); ++i) {
    ForEachPoint(rings, i,
                 [&](WorldPoint p, zelvan_fault /*place*/) { MergeBoxes(box.min, box.max, p, p); });
  }
  const auto grid = RegionGrid::Covering(box, std::numeric_limits<int>::min());
  if (!grid) throw RegionRefusal{ZELVAN_OUTSIDE_GRID};
  return *grid;
}

RegionHandle RegionOfRings(const RingInput& rings, FillRule rule, RingTurns turns,
                           const RegionGrid& grid) {
  Operation operation;
  std::vector<GridPoint> ring;
  for (std::uint32_t i = 0; i < rings.Rings(); ++i) {
    SnapRing(rings, i, grid, ring);
    Contour* const contour = operation.a.Add(ring);
    const bool mayTurn = contour != nullptr && turns == RingTurns::kCounterClockwise;
    if (mayTurn && TwiceArea(contour->head) < 0) ReverseContour(contour);
  }
  return MakeRegion(grid, operation.Run(rule));
}

RegionHandle Combine(BoolOp op, const zelvan_region* a, const zelvan_region* b) {
  if (a == nullptr || b == nullptr) {
    if (op == INTERSECT || (op == SUBTRACT && a == nullptr)) return nullptr;
    return Share(a != nullptr ? a : b);
  }
  const zelvan_region* const both[] = {a, b};
  const RegionGrid grid = GridFor(both);
  const RegionHandle first = OnGrid(a, grid);
  const RegionHandle second = OnGrid(b, grid);
  Operation operation;
  if (first != nullptr) operation.a.Add(first->flat);
  if (second != nullptr) operation.b.Add(second->flat);
  return MakeRegion(grid, operation.Run(op, {}));
}

RegionHandle UniteRegions(std::span<const zelvan_region* const> regions) {
  std::size_t points = 0;
  for (const zelvan_region* region : regions) {
    if (region != nullptr) points += region->flat.points.size();
  }
  if (points == 0) return nullptr;
  if (points > kMostPoints) throw RegionRefusal{ZELVAN_TOO_LARGE};
  const RegionGrid grid = GridFor(regions);
  Operation operation;
  for (const zelvan_region* region : regions) {
    const RegionHandle moved = OnGrid(region, grid);
    if (moved != nullptr) operation.a.Add(moved->flat);
  }
  return MakeRegion(grid, operation.Run(FillRule::Positive));
}

}  // namespace zelvan
