// Where a grid point, or a whole contour, lies with respect to a contour.
// Even-odd rule, exact integer arithmetic, no tolerance.
#pragma once

#include "polygon/records.h"

namespace zelvan {

enum class Location { kOutside, kInside, kBoundary };

/// Where `p` lies with respect to the ring that starts at `contour->head`.
[[nodiscard]] Location Locate(GridPoint p, const Contour* contour) noexcept;

/// True when `p` lies strictly inside the contour's box and ring; false on an
/// edge or a vertex, and for a null contour.
[[nodiscard]] bool PointInContour(GridPoint p, const Contour* contour) noexcept;

/// True when `inner` lies inside `outer`, two contours that do not cross but may
/// touch. The head of `inner` decides; where it lies on the boundary of `outer`,
/// a point inside `inner` does. Equal contours lie inside each other. False for a
/// null `outer`.
[[nodiscard]] bool ContourInside(const Contour* inner, const Contour* outer) noexcept;

}  // namespace zelvan
