// Regions made of one other (region_parts.h).
#include "interface/region_parts.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "interface/region_refusal.h"
#include "interface/region_rings.h"
#include "polygon/input_predicates.h"

namespace zelvan {

namespace {

bool IsMove(const Transform& m) noexcept {
  return m[0] == 1.0 && m[1] == 0.0 && m[3] == 0.0 && m[4] == 1.0;
}

// A grid of the same step, which begins so far away; none where that is no grid, or where the way
// is no whole number of steps.
std::optional<RegionGrid> MovedGrid(const RegionGrid& grid, WorldPoint by) noexcept {
  const zelvan_grid from = grid.Data();
  const zelvan_grid to{from.x + by.x, from.y + by.y, from.step};
  const bool isExact = to.x - from.x == by.x && to.y - from.y == by.y &&  // both ways: no rounding
                       to.x - by.x == from.x && to.y - by.y == from.y;
  return isExact ? RegionGrid::From(to) : std::nullopt;
}

// On a grid of the same step that holds it; points do not move but with the grid of a region that
// was moved by whole steps.
RegionHandle OnGridOfSameStep(const zelvan_region& region, const RegionGrid& now,
                              const RegionGrid& grid) {
  FlatRegion flat = region.flat;
  if (!(now == grid)) {
    for (GridPoint& p : flat.points) p = grid.Move(p, now);
  }
  return MakeRegion(grid, std::move(flat), region.lost);
}

bool HoldsBox(const RegionGrid& grid, const RegionGrid& now, const zelvan_region& region) noexcept {
  return grid.Holds({now.PlaceOf(region.box.min), now.PlaceOf(region.box.max)});
}

// Rings as they come in, which are snapped and swept like all others.
class TransformedRings {
 public:
  TransformedRings(const zelvan_region& region, const Transform& m) : region_(region) {
    points_.reserve(2 * region.flat.points.size());
    for (const GridPoint point : region.flat.points) {
      const WorldPoint p = region.grid.PlaceOf(point);
      points_.push_back(m[0] * p.x + m[1] * p.y + m[2]);
      points_.push_back(m[3] * p.x + m[4] * p.y + m[5]);
    }
  }

  [[nodiscard]] RingInput Rings() const noexcept {
    return {points_.data(), region_.flat.ringOffsets};
  }

  // The region's own grid if it holds them, else the finest that does.
  [[nodiscard]] RegionGrid Grid() const {
    const RingInput rings = Rings();
    const RegionGrid covering = GridCovering({&rings, 1});  // refuses what is not finite
    for (std::size_t i = 0; i < points_.size(); i += 2) {
      if (!region_.grid.Snap({points_[i], points_[i + 1]})) return covering;
    }
    return region_.grid;
  }

 private:
  const zelvan_region& region_;
  std::vector<double> points_;
};

}  // namespace

RegionHandle PolygonOf(const zelvan_region& region, std::uint32_t polygon) {
  const FlatRegion& all = region.flat;
  const std::uint32_t first = all.FirstPoint(polygon);
  const std::uint32_t end = all.FirstPoint(polygon + 1);
  FlatRegion one;
  one.points.assign(all.points.data() + first, all.points.data() + end);
  for (std::uint32_t i = all.polygonOffsets[polygon]; i < all.polygonOffsets[polygon + 1]; ++i) {
    one.ringOffsets.push_back(all.ringOffsets[i + 1] - first);
  }
  one.polygonOffsets.push_back(static_cast<std::uint32_t>(one.Rings()));
  ForEachTouch(all, polygon, [&](auto points) {
    for (const std::uint32_t i : points) one.touches.push_back(i - first);
  });
  return MakeRegion(region.grid, std::move(one), 0);
}

RegionHandle Transformed(const zelvan_region& region, const Transform& transform,
                         const std::optional<RegionGrid>& grid) {
  const bool isFinite =
      std::all_of(transform.begin(), transform.end(), [](double v) { return std::isfinite(v); });
  Require(isFinite, ZELVAN_NOT_FINITE);
  if (IsMove(transform)) {
    const auto moved = MovedGrid(region.grid, {transform[2], transform[5]});
    if (moved) {
      const RegionGrid& wanted = grid ? *grid : region.grid;
      const bool isWanted =
          wanted.Exponent() == moved->Exponent() && HoldsBox(wanted, *moved, region);
      if (isWanted || !grid) return OnGridOfSameStep(region, *moved, isWanted ? wanted : *moved);
    }
  }
  const TransformedRings rings(region, transform);
  // A mirror turns rings round. The sign of the determinant is exact.
  const int turn = SideSign({transform[0], transform[1]}, {0.0, 0.0}, {transform[3], transform[4]});
  const FillRule rule = turn > 0 ? FillRule::Positive : FillRule::Negative;
  RegionHandle made =
      RegionOfRings(rings.Rings(), rule, RingTurns::kAsGiven, grid ? *grid : rings.Grid());
  return Share(made.get(), AddLosses(region.lost, LostOf(made.get())));
}

}  // namespace zelvan
