// Questions to two regions, and how far regions are.
//
// Coordinates are compared in steps of the coarser grid, where those of the finer one are exact
// doubles. All throw std::bad_alloc, and RegionRefusal (region_refusal.h) by ZELVAN_TOO_COARSE
// where one step is more than 2^200 times the other: there products of coordinates would underflow.
#pragma once

#include <cstdint>

#include "interface/region.h"

namespace zelvan {

/// Have both a point in common? Boundaries belong to regions; so in all questions.
[[nodiscard]] bool Intersects(const zelvan_region* a, const zelvan_region* b);

/// Have they points in common, but no inner points?
[[nodiscard]] bool Touches(const zelvan_region* a, const zelvan_region* b);

/// Has the first all points of the second?
[[nodiscard]] bool Covers(const zelvan_region* a, const zelvan_region* b);

/// The nearest places of two regions. Of one without polygons: infinity, and no numbers.
struct RegionDistance {
  double distance;
  WorldPoint first;
  WorldPoint second;
};

[[nodiscard]] RegionDistance DistanceBetween(const zelvan_region* a, const zelvan_region* b);

/// What of a region is meant by its distance: inside it, 0 for all of it.
enum class Extent { kAll, kBoundary };

/// The nearest place of a region for each of some points, and its distance. Either array may be
/// null.
void FindNearest(const zelvan_region* region, Extent extent, const double* xy, std::uint32_t count,
                 double* places, double* distances);

}  // namespace zelvan
