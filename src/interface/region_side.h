// Where points lie in a region, decided exactly: by the index of the region's edges, which is made
// when as many points are asked for as it takes scans to make it, or by a scan before that and
// where there is no memory. Both answer alike.
#pragma once

#include <cstdint>

#include "interface/region.h"
#include "polygon/grid.h"

namespace zelvan {

/// Writes for each of some points, x and y in turn, 1 inside, 0 on the boundary, -1 outside; one
/// that is not finite lies outside.
void FindSides(const zelvan_region& region, const double* xy, std::uint32_t count,
               std::int8_t* sides) noexcept;

/// The same of one point, by a scan of all edges of the rings in whose boxes it lies.
[[nodiscard]] int SideByScan(const zelvan_region& region, WorldPoint p) noexcept;

/// Makes the index. Throws std::bad_alloc, std::length_error.
void Prepare(const zelvan_region& region);

}  // namespace zelvan
