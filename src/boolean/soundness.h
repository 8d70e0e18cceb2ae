// Is a ring of areas a region: contours that touch from outside at the most, no edges
// that coincide, and the region to the left of every edge?
//
// A result that moves to its own, finer grid moves points by up to half a step, and a vertex
// that touches an edge from outside can end up beyond it. If any point moved, one exact sweep
// looks for crossings, coincident edges, edges with the region on the wrong side, and touches
// from inside, which leave no triangulation. If there are any, the result stays on the common
// grid.
#pragma once

#include "polygon/records.h"

namespace zelvan {

/// Looks through a ring in grid form by one sweep, exactly; O(n log n). Neighbours on a contour
/// must differ. Throws std::bad_alloc, raises ERR::NOMEM.
[[nodiscard]] bool IsSound(const Area* ring);

}  // namespace zelvan
