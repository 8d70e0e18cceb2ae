// Operations on regions, each by one sweep.
//
// All throw std::bad_alloc, what the engine raises, and RegionRefusal (region_refusal.h).
#pragma once

#include <span>

#include "boolean/labels.h"
#include "interface/region.h"

namespace zelvan {

[[nodiscard]] RegionHandle Combine(BoolOp op, const zelvan_region* a, const zelvan_region* b);

/// The union of regions, null ones among them.
[[nodiscard]] RegionHandle UniteRegions(std::span<const zelvan_region* const> regions);

}  // namespace zelvan
