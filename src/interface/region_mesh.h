// The triangles of a region.
#pragma once

#include <cstdint>

#include "polygon/flat_region.h"

namespace zelvan {

/// Cuts a region polygon by polygon into its n + 2h - 2a triangles.
/// @param triangles   receives three vertex numbers each
/// @param neighbours  receives three triangle numbers each (zelvan/region_c.h); may be null
/// Throws std::bad_alloc, raises ERR::NOMEM; what was written before stays.
void CutRegion(const FlatRegion& region, bool delaunay, std::uint32_t* triangles,
               std::int32_t* neighbours);

}  // namespace zelvan
