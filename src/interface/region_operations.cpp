// Operations on regions (region_operations.h).
#include "interface/region_operations.h"

#include <limits>

#include "interface/region_move.h"
#include "interface/region_refusal.h"
#include "interface/region_sweep.h"

namespace zelvan {

RegionHandle Combine(BoolOp op, const zelvan_region* a, const zelvan_region* b) {
  const std::uint32_t lost = AddLosses(LostOf(a), LostOf(b));
  if (IsEmpty(a) || IsEmpty(b)) {
    if (op == INTERSECT || (op == SUBTRACT && IsEmpty(a))) return Share(nullptr, lost);
    return Share(IsEmpty(a) ? b : a, lost);
  }
  if (IsSame(a, b)) return Share(op == UNION || op == INTERSECT ? a : nullptr, lost);
  const zelvan_region* const both[] = {a, b};
  const RegionGrid grid = GridFor(both);
  const RegionHandle first = OnGrid(a, grid, MoveCost::kFaithful);
  const RegionHandle second = OnGrid(b, grid, MoveCost::kFaithful);
  Operation operation;
  operation.a.Add(first->flat);
  operation.b.Add(second->flat);
  return MakeRegion(grid, operation.Run(op, {}), lost);
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
  Operation operation;
  for (const zelvan_region* region : regions) {
    if (!IsEmpty(region)) operation.a.Add(OnGrid(region, grid, MoveCost::kFaithful)->flat);
  }
  return MakeRegion(grid, operation.Run(FillRule::Positive), lost);
}

}  // namespace zelvan
