// The road between world coordinates and the grid of a world box.
//
// Per axis, a grid coordinate g and its world value v over a box [lo, hi]:
//   snap    g = floor((v - lo) / (hi - lo) * 1048575 + 0.5) - 524288
//   unsnap  v = (hi - lo) * (g + 524288) * (1 / 1048575) + lo
// Snapping moves a value inside the box by at most half a step, (hi - lo) /
// 1048575 / 2, and the ends of the box map onto the ends of the grid. Snapping an
// unsnapped value gives g back as long as a step is larger than the rounding of
// doubles at lo and hi.
#pragma once

#include "polygon/records.h"

namespace zelvan {

[[nodiscard]] GridPoint Snap(WorldPoint p, WorldPoint boxMin, WorldPoint boxMax) noexcept;
[[nodiscard]] WorldPoint Unsnap(GridPoint p, WorldPoint boxMin, WorldPoint boxMax) noexcept;

/// Brings a contour to the grid and frees each vertex that falls onto the one
/// before it, and the last one where it falls onto the head.
/// @return whether at least 3 vertices are left
bool SnapContour(Contour* contour, WorldPoint boxMin, WorldPoint boxMax) noexcept;

/// Snaps every contour of the ring that `ring` names by its first area; holes and
/// areas that collapse are freed.
void SnapRing(Area*& ring, WorldPoint boxMin, WorldPoint boxMax) noexcept;
void SnapShape(Shape& shape, WorldPoint boxMin, WorldPoint boxMax) noexcept;

/// Brings contours back to world form, their boxes included.
void UnsnapContour(Contour* contour, WorldPoint boxMin, WorldPoint boxMax) noexcept;
void UnsnapRing(Area* ring, WorldPoint boxMin, WorldPoint boxMax) noexcept;

}  // namespace zelvan
