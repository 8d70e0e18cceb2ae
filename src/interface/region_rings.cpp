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

// Calls visit(point, place) for each point of one ring, before which there are `before` rings of
// other inputs; points that are not finite are refused.
template <class Visit>
void ForEachPoint(const RingInput& rings, std::uint32_t before, std::uint32_t ring, Visit visit) {
  const std::uint32_t first = rings.offsets[ring];
  for (std::uint32_t i = first; i < rings.offsets[ring + 1]; ++i) {
    const WorldPoint p{rings.xy[2 * std::size_t{i}], rings.xy[2 * std::size_t{i} + 1]};
    const zelvan_fault place{before + ring, i - first};
    if (!std::isfinite(p.x) || !std::isfinite(p.y)) throw RegionRefusal{ZELVAN_NOT_FINITE, place};
    visit(p, place);
  }
}

std::optional<RegionGrid> FinestCovering(const WorldBox& box) noexcept {
  return RegionGrid::Covering(box, std::numeric_limits<int>::min());
}

// The first point that no grid holds together with those before it.
[[noreturn]] void RefuseFarthest(std::span<const RingInput> inputs) {
  std::optional<WorldBox> box;
  std::uint32_t before = 0;  // rings of the inputs so far
  for (const RingInput& rings : inputs) {
    for (std::uint32_t i = 0; i < rings.Rings(); ++i) {
      ForEachPoint(rings, before, i, [&](WorldPoint p, zelvan_fault place) {
        if (!box) box = {p, p};
        MergeBoxes(box->min, box->max, p, p);
        if (!FinestCovering(*box)) throw RegionRefusal{ZELVAN_OUTSIDE_GRID, place};
      });
    }
    before += rings.Rings();
  }
  throw RegionRefusal{ZELVAN_INTERNAL};
}

void SnapRing(const RingInput& rings, std::uint32_t before, std::uint32_t ring,
              const RegionGrid& grid, std::vector<GridPoint>& out) {
  out.clear();
  ForEachPoint(rings, before, ring, [&](WorldPoint p, zelvan_fault place) {
    const auto point = grid.Snap(p);
    if (!point) throw RegionRefusal{ZELVAN_OUTSIDE_GRID, place};
    out.push_back(*point);
  });
}

// What a ring winds around that runs round as much to the left as to the right.
FlatRegion Enclosed(std::span<const GridPoint> balanced) {
  if (balanced.size() < 4) return {};
  RegionSweep sweep;
  sweep.AddFirst(balanced);
  return sweep.Run(FillRule::NonZero);
}

// Has a ring of at least one point an area in the host's units, more than rounding can make?
bool HasArea(const RingInput& rings, std::uint32_t ring) {
  const std::uint32_t first = rings.offsets[ring];
  const std::uint32_t offsets[] = {0, rings.offsets[ring + 1] - first};
  const RingInput alone{rings.xy + 2 * std::size_t{first}, offsets};
  const RegionGrid grid = GridCovering({&alone, 1});
  std::vector<WorldPoint> points;  // in steps, where no product over- or underflows
  ForEachPoint(alone, 0, 0, [&](WorldPoint p, zelvan_fault) { points.push_back(grid.StepsOf(p)); });
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
  SnapRing(alone, 0, 0, grid, snapped);
  return DoubleOf(TwiceArea(Enclosed(snapped))) > 2.0 * (length + count);
}

// Calls visit(ring) for each ring on the grid, turned round where it must be.
// @return how many rings with an area have none on the grid
template <class Visit>
std::uint32_t ForEachSnapped(const RingInput& rings, std::uint32_t before, const RegionGrid& grid,
                             RingTurns turns, Visit visit) {
  std::vector<GridPoint> ring;
  std::uint32_t lost = 0;
  for (std::uint32_t i = 0; i < rings.Rings(); ++i) {
    SnapRing(rings, before, i, grid, ring);
    const int turn = TwiceAreaOf(ring).Sign();
    const bool isGone = turn == 0 && !ring.empty() && Enclosed(ring).Polygons() == 0;
    if (isGone && HasArea(rings, i)) ++lost;
    if (turns == RingTurns::kCounterClockwise && turn < 0) std::reverse(ring.begin(), ring.end());
    visit(ring);
  }
  return lost;
}

}  // namespace

RegionGrid GridCovering(std::span<const RingInput> inputs) {
  std::optional<WorldBox> box;
  std::uint32_t before = 0;  // rings of the inputs so far
  for (const RingInput& rings : inputs) {
    for (std::uint32_t i = 0; i < rings.Rings(); ++i) {
      ForEachPoint(rings, before, i, [&](WorldPoint p, zelvan_fault /*place*/) {
        if (!box) box = {p, p};
        MergeBoxes(box->min, box->max, p, p);
      });
    }
    before += rings.Rings();
  }
  if (!box) return {};
  const auto grid = FinestCovering(*box);
  if (!grid) RefuseFarthest(inputs);
  return *grid;
}

RegionHandle RegionOfRings(const RingInput& rings, FillRule rule, RingTurns turns,
                           const RegionGrid& grid) {
  RegionSweep sweep;
  sweep.Reserve(rings.Points());
  const std::uint32_t lost =
      ForEachSnapped(rings, 0, grid, turns, [&](const auto& ring) { sweep.AddFirst(ring); });
  return MakeRegion(grid, sweep.Run(rule), lost);
}

RegionHandle CombineRings(overlay::Operation operation, const RingOperand& a, const RingOperand& b,
                          const RegionGrid& grid) {
  RegionSweep sweep;
  sweep.Reserve(std::size_t{a.rings.Points()} + b.rings.Points());
  const std::uint32_t lostOfFirst = ForEachSnapped(a.rings, 0, grid, RingTurns::kAsGiven,
                                                   [&](const auto& ring) { sweep.AddFirst(ring); });
  const std::uint32_t lostOfSecond =
      ForEachSnapped(b.rings, a.rings.Rings(), grid, RingTurns::kAsGiven,
                     [&](const auto& ring) { sweep.AddSecond(ring); });
  return MakeRegion(grid, sweep.Run(operation, a.rule, b.rule),
                    AddLosses(lostOfFirst, lostOfSecond));
}

}  // namespace zelvan
