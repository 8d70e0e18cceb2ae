// Offsets of regions: raw curves (offset/raw_curve.h), swept once.
#pragma once

#include "interface/region.h"
#include "offset/raw_curve.h"

namespace zelvan {

struct OffsetOptions {
  offset::Style style;
  double tolerance;  ///< of arcs, in the host's units; 0 for 1/500 of the distance
};

/// How far arcs may be off, in steps, for a tolerance in steps.
/// @param leastTolerance  what rounding needs
[[nodiscard]] double ArcError(double distance, double tolerance, double leastTolerance) noexcept;

/// A region grown by a finite distance, shrunk where it is negative. Throws std::bad_alloc, what
/// the engine raises, and RegionRefusal (region_refusal.h).
[[nodiscard]] RegionHandle OffsetRegion(const zelvan_region* region, double distance,
                                        const OffsetOptions& options);

}  // namespace zelvan
