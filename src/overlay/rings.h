// From the pieces of a boundary to a region in its canonical order.
#pragma once

#include "overlay/boundary.h"
#include "polygon/flat_region.h"

namespace zelvan::overlay {

/// The region that a boundary encloses. Uses the pieces up. Throws std::bad_alloc;
/// raises ERR::FAIL if pieces do not close, which is a contradiction.
[[nodiscard]] FlatRegion RegionWithin(Boundary& boundary);

}  // namespace zelvan::overlay
