// From the pieces of boundaries to regions in their canonical order.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "overlay/boundary.h"
#include "polygon/flat_region.h"

namespace zelvan::overlay {

/// The region that a boundary encloses. Uses the pieces up. Throws std::bad_alloc;
/// raises ERR::FAIL if pieces do not close, which is a contradiction.
[[nodiscard]] FlatRegion RegionWithin(Boundary& boundary);

/// The regions that pieces of several enclose, one after the other, each in its canonical order but
/// with every point that a piece begins in. What the part `outside` bounds is left out.
/// @param regionOf   of each piece its region, or kNone for a piece that is left out
/// @param ends       receives the number of polygons of the first region, of the first two, ...
/// @param polygonOf  receives the polygon that each piece bounds, or kNone; may be null
/// Throws and raises like RegionWithin.
[[nodiscard]] FlatRegion RegionsWithin(Boundary& boundary, std::span<const std::uint32_t> regionOf,
                                       std::uint32_t outside, std::vector<std::uint32_t>& ends,
                                       std::vector<std::uint32_t>* polygonOf);

}  // namespace zelvan::overlay
