// Length, centroid, hull and least box of regions that have polygons.
#pragma once

#include <array>

#include "interface/region.h"

namespace zelvan {

/// Of all rings, off by less than 2^-51 of itself.
[[nodiscard]] double LengthOf(const zelvan_region& region) noexcept;

/// Off by less than 2^-50 of its largest coordinate and of the region's size.
[[nodiscard]] WorldPoint CentroidOf(const zelvan_region& region) noexcept;

/// Exact, on the grid of the region. Throws std::bad_alloc.
[[nodiscard]] RegionHandle HullRegion(const zelvan_region& region);

/// The corners of the box of least area (convex_hull.h). Throws std::bad_alloc.
[[nodiscard]] std::array<WorldPoint, 4> LeastBoxOf(const zelvan_region& region);

}  // namespace zelvan
