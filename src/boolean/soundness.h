// Is a ring of areas a region: contours that touch from outside at the most, no edges
// that coincide, and the region to the left of every edge?
#pragma once

#include "polygon/records.h"

namespace zelvan {

/// Looks through a ring in grid form by one sweep, exactly; O(n log n). Neighbours on a contour
/// must differ. Throws std::bad_alloc, raises ERR::NOMEM.
[[nodiscard]] bool IsSound(const Area* ring);

}  // namespace zelvan
