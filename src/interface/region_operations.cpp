// Regions by the Boolean engine (region_operations.h).
#include "interface/region_operations.h"

#include <zelvan/error.h>

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "interface/region_refusal.h"
#include "overlay/overlay.h"
#include "polygon/grid_mapping.h"

namespace zelvan {

namespace {

constexpr std::size_t kMostPoints = std::numeric_limits<std::int32_t>::max();

// One overlay of the rings of two operands, which it uses up.
class Operation {
 public:
  void AddRing(std::span<const GridPoint> ring, bool isSecond = false, bool turns = false) {
    const int step = turns && TwiceAreaOf(ring) < 0 ? -1 : 1;
    edges_.AddRing(ring, isSecond ? overlay::Windings{0, step} : overlay::Windings{step, 0});
  }
  void Add(const FlatRegion& region, bool isSecond = false) {
    for (std::size_t i = 0; i < region.Rings(); ++i) AddRing(region.Ring(i), isSecond);
  }
  void Reserve(std::size_t n) { edges_.Reserve(n); }

  [[nodiscard]] FlatRegion Run(BoolOp op, FillRule first, FillRule second) {
    constexpr overlay::Operation operations[] = {
        overlay::Operation::kUnite, overlay::Operation::kIntersect, overlay::Operation::kSubtract,
        overlay::Operation::kExclusiveOr};
    FlatRegion region = overlay::Overlay(std::move(edges_), {operations[op], first, second});
    if (region.points.size() > kMostPoints) throw RegionRefusal{ZELVAN_TOO_LARGE};
    return region;
  }

  /// What the rings of the first operand bound.
  [[nodiscard]] FlatRegion Run(FillRule rule) { return Run(UNION, rule, rule); }

 private:
  static std::int64_t TwiceAreaOf(std::span<const GridPoint> ring) noexcept {
    std::int64_t sum = 0;
    for (std::size_t i = 2; i < ring.size(); ++i) sum += Cross(ring[0], ring[i - 1], ring[i]);
    return sum;
  }
  overlay::EdgeSet edges_;
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
  operation.Add(moved);
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
  operation.Reserve(rings.Points());
  std::vector<GridPoint> ring;
  for (std::uint32_t i = 0; i < rings.Rings(); ++i) {
    SnapRing(rings, i, grid, ring);
    operation.AddRing(ring, false, turns == RingTurns::kCounterClockwise);
  }
  return MakeRegion(grid, operation.Run(rule));
}

RegionHandle Combine(BoolOp op, const zelvan_region* a, const zelvan_region* b) {
  if (a == nullptr || b == nullptr) {
    if (op == INTERSECT || (op == SUBTRACT && a == nullptr)) return nullptr;
    return Share(a != nullptr ? a : b);
  }
  if (IsSame(a, b)) return op == UNION || op == INTERSECT ? Share(a) : nullptr;
  const zelvan_region* const both[] = {a, b};
  const RegionGrid grid = GridFor(both);
  const RegionHandle first = OnGrid(a, grid);
  const RegionHandle second = OnGrid(b, grid);
  Operation operation;
  operation.Reserve(a->flat.points.size() + b->flat.points.size());
  if (first != nullptr) operation.Add(first->flat);
  if (second != nullptr) operation.Add(second->flat, true);
  return MakeRegion(grid, operation.Run(op, FillRule::Positive, FillRule::Positive));
}

RegionHandle UniteRegions(std::span<const zelvan_region* const> regions) {
  const zelvan_region* last = nullptr;  // of those that differ from each other
  bool isOne = true;
  std::size_t points = 0;
  for (const zelvan_region* region : regions) {
    if (region == nullptr) continue;
    points += region->flat.points.size();
    isOne = isOne && (last == nullptr || IsSame(last, region));
    last = region;
  }
  if (isOne) return Share(last);
  if (points > kMostPoints) throw RegionRefusal{ZELVAN_TOO_LARGE};
  const RegionGrid grid = GridFor(regions);
  Operation operation;
  for (const zelvan_region* region : regions) {
    const RegionHandle moved = OnGrid(region, grid);
    if (moved != nullptr) operation.Add(moved->flat);
  }
  return MakeRegion(grid, operation.Run(FillRule::Positive));
}

}  // namespace zelvan
