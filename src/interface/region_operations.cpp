// Operations on regions (region_operations.h).
#include "interface/region_operations.h"

#include <limits>

#include "interface/region_move.h"
#include "interface/region_refusal.h"
#include "interface/region_sweep.h"

namespace zelvan {

RegionHandle Combine(overlay::Operation operation, const zelvan_region* a, const zelvan_region* b) {
  const std::uint32_t lost = AddLosses(LostOf(a), LostOf(b));
  if (IsEmpty(a) || IsEmpty(b)) {
    if (operation == overlay::Operation::kIntersect ||
        (operation == overlay::Operation::kSubtract && IsEmpty(a)))
      return Share(nullptr, lost);
    return Share(IsEmpty(a) ? b : a, lost);
  }
  if (IsSame(a, b))
    return Share(
        operation == overlay::Operation::kUnite || operation == overlay::Operation::kIntersect
            ? a
            : nullptr,
        lost);
  const zelvan_region* const both[] = {a, b};
  const RegionGrid grid = GridFor(both);
  const RegionHandle first = OnGrid(a, grid, MoveCost::kFaithful);
  const RegionHandle second = OnGrid(b, grid, MoveCost::kFaithful);
  RegionSweep sweep;
  sweep.Reserve(first->flat.points.size() + second->flat.points.size());
  sweep.AddFirst(first->flat);
  sweep.AddSecond(second->flat);
  return MakeRegion(grid, sweep.Run(operation, FillRule::Positive, FillRule::Positive), lost);
}

RegionHandle UniteRegions(std::span<const zelvan_region* const> regions) {
  const zelvan_region* last = nullptr;  // of those that differ from each other
  bool isOne = true;
  std::size_t points = 0;
  std::uint32_t lost = 0;
  for (const zelvan_region* region : regions) {
    lost = AddLosses(lost, LostOf(region));
    if (IsEmpty(region)) continue;
    points += region->flat.points.size();
    isOne = isOne && (last == nullptr || IsSame(last, region));
    last = region;
  }
  if (isOne) return Share(last, lost);
  Require(points <= std::numeric_limits<std::int32_t>::max(), ZELVAN_TOO_LARGE);
  const RegionGrid grid = GridFor(regions);
  RegionSweep sweep;
  sweep.Reserve(points);
  for (const zelvan_region* region : regions) {
    if (!IsEmpty(region)) sweep.AddFirst(OnGrid(region, grid, MoveCost::kFaithful)->flat);
  }
  return MakeRegion(grid, sweep.Run(FillRule::Positive), lost);
}

}  // namespace zelvan
