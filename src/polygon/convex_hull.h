// The convex hull of a region, and the least box around it.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "polygon/flat_region.h"
#include "polygon/placement.h"

namespace zelvan {

/// The corners of a region's convex hull, counter-clockwise from the least point on (x, then y):
/// exact, in O(n log n) steps (Andrew 1979). For a region with at least one polygon. Throws
/// std::bad_alloc.
[[nodiscard]] std::vector<GridPoint> HullOf(const FlatRegion& region);

/// The corners of the box of least area around a hull, counter-clockwise, in the coordinates that
/// `place` gives: one side runs along an edge of the hull (Freeman and Shapira 1975), all of which
/// are tried in O(n) steps (Toussaint 1983). Areas are compared as doubles, off by less than 2^-50
/// of themselves; of equal ones the box along the first edge is taken, whose direction is that of
/// the first side.
[[nodiscard]] std::array<WorldPoint, 4> LeastBoxAround(std::span<const GridPoint> hull,
                                                       const Placement& place) noexcept;

}  // namespace zelvan
