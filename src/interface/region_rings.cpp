// Regions from rings of doubles (region_rings.h).
#include "interface/region_rings.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "interface/region_refusal.h"
#include "interface/region_sweep.h"
#include "interface/ring_area.h"
#include "polygon/grid_mapping.h"

namespace zelvan {

namespace {

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

std::optional<RegionGrid> FinestCovering(const WorldBox& box) noexcept {
  return RegionGrid::Covering(box, std::numeric_limits<int>::min());
}

// The first point that no grid holds together with those before it.
[[noreturn]] void RefuseFarthest(const RingInput& rings) {
  WorldBox box{{rings.xy[0], rings.xy[1]}, {rings.xy[0], rings.xy[1]}};
  for (std::uint32_t i = 0; i < rings.Rings(); ++i) {
    ForEachPoint(rings, i, [&](WorldPoint p, zelvan_fault place) {
      MergeBoxes(box.min, box.max, p, p);
      if (!FinestCovering(box)) throw RegionRefusal{ZELVAN_OUTSIDE_GRID, place};
    });
  }
  throw RegionRefusal{ZELVAN_INTERNAL};
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

// What a ring winds around that runs round as much to the left as to the right.
FlatRegion Enclosed(std::span<const GridPoint> balanced) {
  if (balanced.size() < 4) return {};
  Operation operation;
  operation.a.Add(balanced);
  return operation.Run(FillRule::NonZero);
}

// Has a ring of at least one point an area in the host's units, more than rounding can make?
bool HasArea(const RingInput& rings, std::uint32_t ring) {
  const std::uint32_t first = rings.offsets[ring];
  const std::uint32_t offsets[] = {0, rings.offsets[ring + 1] - first};
  const RingInput alone{rings.xy + 2 * std::size_t{first}, offsets};
  const RegionGrid grid = GridCovering(alone);
  std::vector<WorldPoint> points;  // in steps, where no product over- or underflows
  ForEachPoint(alone, 0, [&](WorldPoint p, zelvan_fault) { points.push_back(grid.StepsOf(p)); });
  const WorldPoint origin = points.front();
  WorldPoint a{points.back().x - origin.x, points.back().y - origin.y};
  double twice = 0.0;
  double size = 0.0;
  double length = 0.0;
  for (const WorldPoint& p : points) {
    const WorldPoint b{p.x - origin.x, p.y - origin.y};
    twice += a.x * b.y - a.y * b.x;
    size += std::fabs(a.x * b.y) + std::fabs(a.y * b.x);
    length += std::fabs(b.x - a.x) + std::fabs(b.y - a.y);
    a = b;
  }
  const auto count = static_cast<double>(points.size());
  if (std::fabs(twice) > (count + 4.0) * 0x1p-52 * size) return true;
  std::vector<GridPoint> snapped;
  SnapRing(alone, 0, grid, snapped);
  return DoubleOf(TwiceArea(Enclosed(snapped))) > 2.0 * (length + count);
}

}  // namespace

RegionGrid GridCovering(const RingInput& rings) {
  if (rings.Points() == 0) return {};
  WorldBox box{{rings.xy[0], rings.xy[1]}, {rings.xy[0], rings.xy[1]}};
  for (std::uint32_t i = 0; i < rings.Rings(); ++i) {
    ForEachPoint(rings, i, [&](WorldPoint p, zelvan_fault) { MergeBoxes(box.min, box.max, p, p); });
  }
  const auto grid = FinestCovering(box);
  if (!grid) RefuseFarthest(rings);
  return *grid;
}

RegionHandle RegionOfRings(const RingInput& rings, FillRule rule, RingTurns turns,
                           const RegionGrid& grid) {
  Operation operation;
  std::vector<GridPoint> ring;
  std::uint32_t lost = 0;
  for (std::uint32_t i = 0; i < rings.Rings(); ++i) {
    SnapRing(rings, i, grid, ring);
    const int turn = TwiceAreaOf(ring).Sign();
    const bool isGone = turn == 0 && !ring.empty() && Enclosed(ring).Polygons() == 0;
    if (isGone && HasArea(rings, i)) ++lost;
    if (turns == RingTurns::kCounterClockwise && turn < 0) std::reverse(ring.begin(), ring.end());
    operation.a.Add(ring);
  }
  return MakeRegion(grid, operation.Run(rule), lost);
}

}  // namespace zelvan
