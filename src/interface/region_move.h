// Regions on their way from one grid to another.
//
// All throw std::bad_alloc, what the engine raises, and RegionRefusal (region_refusal.h).
#pragma once

#include <span>

#include "interface/region.h"
#include "interface/region_grid.h"

namespace zelvan {

/// The grid for an operation on regions, empty ones among them.
[[nodiscard]] RegionGrid GridFor(std::span<const zelvan_region* const> regions);

/// What a move may cost. A faithful one loses no polygon and no hole, and leaves each its area
/// but for 2^-10 of it; else it is refused.
enum class MoveCost { kFaithful, kAny };

/// A region on a grid that holds it.
[[nodiscard]] RegionHandle OnGrid(const zelvan_region* region, const RegionGrid& grid,
                                  MoveCost cost);

}  // namespace zelvan
