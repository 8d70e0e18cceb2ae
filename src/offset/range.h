// Curves that leave the range of grid points, brought back into it.
//
// Each place of a curve goes to the nearest one of the range. That moves the curve continuously,
// and no place outside the range crosses the inside; so inside the range all winding numbers
// stay. An edge that leaves the range gets a vertex where it does, rounded along the range's
// side.
#pragma once

#include <span>
#include <vector>

#include "polygon/grid.h"

namespace zelvan::offset {

/// A closed curve of whole numbers below 2^50 as grid points in [-2^30, 2^30). Replaces `ring`.
/// Throws std::bad_alloc.
void BringIntoRange(std::span<const WorldPoint> curve, std::vector<GridPoint>& ring);

}  // namespace zelvan::offset
