// The triangles of a region.
#pragma once

#include <cstdint>

#include "polygon/flat_region.h"

namespace zelvan {

/// Work done, for tests that hold it against a bound.
struct RegionWork {
  std::uint64_t intervals = 0;  ///< looked at by searches
  std::uint64_t flips = 0;
  std::uint64_t links = 0;  ///< of fronts, walked to where these are split
};

/// Cuts a region, coordinates from -2^30 to 2^30 - 1, polygon by polygon into its n + 2h - 2a
/// triangles: n vertices, h holes, a touching rings. Which triangles these are depends on each
/// polygon alone, wherever it lies.
/// @param delaunay    the constrained Delaunay triangulation, in its order (flips.h); else any
/// @param triangles   receives three vertex numbers each
/// @param neighbours  receives three triangle numbers each (zelvan/region_c.h); may be null
/// Throws std::bad_alloc, raises ERR::FAIL for what is no region; what was written before stays.
RegionWork CutRegion(const FlatRegion& region, bool delaunay, std::uint32_t* triangles,
                     std::int32_t* neighbours);

}  // namespace zelvan
