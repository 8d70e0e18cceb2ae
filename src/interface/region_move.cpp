// Regions on their way from one grid to another (region_move.h).
#include "interface/region_move.h"

#include <cmath>
#include <utility>
#include <vector>

#include "interface/region_refusal.h"
#include "interface/region_sweep.h"
#include "interface/ring_area.h"
#include "polygon/grid_mapping.h"

namespace zelvan {

namespace {

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

// What rounding took from a region, whose rings are not swept yet.
struct MoveLoss {
  std::uint32_t rings = 0;  // that enclose nothing any more, or have turned over
  bool isFaithful = true;   // does every polygon and hole keep its area, nearly?
};

class LossCount {
 public:
  LossCount(const FlatRegion& before, const FlatRegion& after, int exponents) noexcept
      : before_(before), after_(after), exponents_(exponents) {}

  [[nodiscard]] MoveLoss Run() {
    for (std::size_t i = 0; i < before_.Polygons(); ++i) CountPolygon(i);
    return loss_;
  }

 private:
  void CountPolygon(std::size_t polygon) {
    WideSum before;
    WideSum after;
    const std::uint32_t outer = before_.polygonOffsets[polygon];
    for (std::uint32_t i = outer; i < before_.polygonOffsets[polygon + 1]; ++i) {
      const WideSum was = TwiceAreaOf(before_.Ring(i));
      const WideSum is = TwiceAreaOf(after_.Ring(i));
      if (was.Sign() != is.Sign()) ++loss_.rings;
      if (i != outer) Compare(was, is);
      before.Add(was);
      after.Add(is);
    }
    Compare(before, after);
  }

  void Compare(const WideSum& was, const WideSum& is) {
    const double before = was.Double();
    const double after = std::ldexp(is.Double(), 2 * exponents_);
    loss_.isFaithful &= std::fabs(after - before) <= std::fabs(before) * 0x1p-10;
  }

  const FlatRegion& before_;
  const FlatRegion& after_;
  int exponents_;  // by which the step after exceeds that before
  MoveLoss loss_;
};

bool HasAllOf(const FlatRegion& after, const FlatRegion& before) noexcept {
  return after.Polygons() >= before.Polygons() &&
         after.Rings() - after.Polygons() >= before.Rings() - before.Polygons();
}

}  // namespace

RegionGrid GridFor(std::span<const zelvan_region* const> regions) {
  std::vector<GridClaim> claims;
  for (const zelvan_region* region : regions) {
    if (IsEmpty(region)) continue;
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

RegionHandle OnGrid(const zelvan_region* region, const RegionGrid& grid, MoveCost cost) {
  if (IsEmpty(region) || region->grid == grid) return Share(region);
  Require(grid.Holds(BoundsOf(*region)), ZELVAN_OUTSIDE_GRID);
  bool isExact = false;
  FlatRegion moved = Moved(*region, grid, isExact);
  if (isExact) return MakeRegion(grid, std::move(moved), region->lost);
  const int exponents = grid.Exponent() - region->grid.Exponent();
  const MoveLoss loss = LossCount(region->flat, moved, exponents).Run();
  Require(cost == MoveCost::kAny || loss.isFaithful, ZELVAN_TOO_COARSE);
  RegionSweep sweep;
  sweep.AddFirst(moved);
  FlatRegion result = sweep.Run(FillRule::Positive);
  Require(cost == MoveCost::kAny || HasAllOf(result, region->flat), ZELVAN_TOO_COARSE);
  return MakeRegion(grid, std::move(result), AddLosses(region->lost, loss.rings));
}

}  // namespace zelvan
