// Offsets of regions (region_offset.h).
#include "interface/region_offset.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "interface/region_move.h"
#include "interface/region_refusal.h"
#include "interface/region_sweep.h"
#include "offset/range.h"

namespace zelvan {

namespace {

// Tolerances that leave room for rounding: of arms and of crossings, 0.71 steps each, of which
// one step is granted; and on a coarser grid of the region's points and its edges as well.
constexpr double kLeastTolerance = 1.0;
constexpr double kLeastToleranceMoved = 3.0;
constexpr double kSpentOnRounding = 0.5;
constexpr double kSpentOnMoving = 1.5;

constexpr double kMostRatio = 0x1p16;  // of a miter's tip to the distance

// How far from the region an offset reaches, in distances.
double ReachOf(const zelvan_region& region, const offset::Style& style) {
  if (style.join != offset::Join::kMiter) return 1.125;
  double least = 4.0;  // |u + v|^2 of normals at a corner with a tip
  for (std::size_t i = 0; i < region.flat.Rings(); ++i) {
    const auto ring = region.flat.Ring(i);
    offset::Side from = offset::RightSideOf(ring[ring.size() - 2], ring.back(), 0.0);
    GridPoint corner = ring.back();
    for (const GridPoint after : ring) {
      const offset::Side to = offset::RightSideOf(corner, after, 0.0);
      const double square = 2.0 + 2.0 * offset::Dot(from.normal, to.normal);
      if (square * style.miterLimit * style.miterLimit >= 4.0) least = std::min(least, square);
      corner = after;
      from = to;
    }
  }
  return std::max(1.125, 2.0 / std::sqrt(least));
}

RegionGrid GridOfGrown(const zelvan_region& region, double reach) {
  const double margin = reach + 2.0 * region.grid.Step();
  WorldBox box = BoundsOf(region);
  box.min = {box.min.x - margin, box.min.y - margin};
  box.max = {box.max.x + margin, box.max.y + margin};
  if (region.grid.Holds(box)) return region.grid;
  const auto grid = RegionGrid::Covering(box, region.grid.Exponent());
  if (!grid) throw RegionRefusal{ZELVAN_OUTSIDE_GRID};
  return *grid;
}

// Is no place of the region that far from its boundary?
bool Vanishes(const zelvan_region& region, double distance) noexcept {
  const WorldBox box = BoundsOf(region);
  return 2.0 * distance > std::min(box.max.x - box.min.x, box.max.y - box.min.y);
}

// The raw curves of all rings, on the region's outer side or its inner one.
class OffsetSweep {
 public:
  OffsetSweep(offset::RawCurve&& curve, bool grows) : curve_(std::move(curve)), grows_(grows) {}

  [[nodiscard]] FlatRegion Run(const zelvan_region& region) {
    const FlatRegion& flat = region.flat;
    sweep_.Reserve(2 * flat.points.size());
    for (std::size_t i = 0; i < flat.Polygons(); ++i) {
      const std::uint32_t outer = flat.polygonOffsets[i];
      if (!grows_ && IsFilled(region.ringBoxes[outer])) continue;
      AddRing(flat.Ring(outer));
      for (std::uint32_t k = outer + 1; k < flat.polygonOffsets[i + 1]; ++k) {
        if (!grows_ || !IsFilled(region.ringBoxes[k])) AddRing(flat.Ring(k));
      }
    }
    return sweep_.Run(grows_ ? FillRule::Positive : FillRule::Negative);
  }

 private:
  // Is no place in a ring farther from it than the distance?
  [[nodiscard]] bool IsFilled(const GridBox& box) const noexcept {
    const double width = static_cast<double>(box.max.gx) - box.min.gx;
    const double height = static_cast<double>(box.max.gy) - box.min.gy;
    return std::min(width, height) <= 2.0 * curve_.Distance();
  }

  void AddRing(std::span<const GridPoint> ring) {
    curve_.Clear();
    if (grows_) {
      curve_.AddRing(ring);
    } else {
      reversed_.assign(ring.rbegin(), ring.rend());
      curve_.AddRing(reversed_);
    }
    points_ += curve_.Points().size();
    Require(points_ <= std::numeric_limits<std::int32_t>::max(), ZELVAN_TOO_LARGE);
    offset::BringIntoRange(curve_.Points(), ring_);
    sweep_.AddFirst(ring_);
  }

  offset::RawCurve curve_;
  bool grows_;
  RegionSweep sweep_;
  std::vector<GridPoint> reversed_;
  std::vector<GridPoint> ring_;
  std::size_t points_ = 0;
};

}  // namespace

double ArcError(double distance, double tolerance, double leastTolerance) noexcept {
  const double spent = leastTolerance > kLeastTolerance ? kSpentOnMoving : 0.0;
  const double counted = std::max({tolerance, leastTolerance, distance * 0x1p-20});
  return std::min(counted - kSpentOnRounding - spent, distance / 8.0);
}

RegionHandle OffsetRegion(const zelvan_region* region, double distance,
                          const OffsetOptions& options) {
  if (IsEmpty(region)) return Share(region);
  const bool grows = distance > 0.0;
  const double size = std::fabs(distance);
  if (size < region->grid.Step()) return Share(region);
  if (!grows && Vanishes(*region, size)) return Share(nullptr, region->lost);
  offset::Style style = options.style;
  style.miterLimit = std::min(style.miterLimit, kMostRatio);
  const RegionGrid grid =
      grows ? GridOfGrown(*region, size * ReachOf(*region, style)) : region->grid;
  const RegionHandle moved = OnGrid(region, grid, MoveCost::kFaithful);
  const double steps = size / grid.Step();
  const double tolerance = options.tolerance != 0.0 ? options.tolerance / grid.Step() : steps / 500;
  const double least = grid == region->grid ? kLeastTolerance : kLeastToleranceMoved;
  OffsetSweep sweep({steps, ArcError(steps, tolerance, least), style}, grows);
  return MakeRegion(grid, sweep.Run(*moved), region->lost);
}

}  // namespace zelvan
