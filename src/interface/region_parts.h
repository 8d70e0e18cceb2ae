// Regions made of one other: a polygon of it, and what a transform makes of it.
//
// All throw std::bad_alloc, what the engine raises, and RegionRefusal (region_refusal.h).
#pragma once

#include <array>
#include <optional>

#include "interface/region.h"
#include "interface/region_grid.h"

namespace zelvan {

/// One polygon of a region that has so many.
[[nodiscard]] RegionHandle PolygonOf(const zelvan_region& region, std::uint32_t polygon);

/// x' = m[0] x + m[1] y + m[2], y' = m[3] x + m[4] y + m[5].
using Transform = std::array<double, 6>;

/// A region transformed, on a given grid or on the one that zelvan_region_transform takes.
[[nodiscard]] RegionHandle Transformed(const zelvan_region& region, const Transform& transform,
                                       const std::optional<RegionGrid>& grid);

}  // namespace zelvan
