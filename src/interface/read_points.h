// The host's array of coordinates as a stored polygon.
#pragma once

#include <memory>

#include "polygon/shape.h"

namespace zelvan {

/// Reads count / 3 points, (x, y, z) each, and builds the polygon they describe. Where a
/// contour crosses, covers or touches itself from inside on its grid, that is the region of
/// its positive winding numbers there (boolean/snapped_contour.h), of any number of areas; a
/// contour that crosses itself as given, by its closing edge, stays as it is.
/// @return null, nothing thrown, when they are no usable polygon, when `xyz` is
///         null, or when memory runs out
[[nodiscard]] std::unique_ptr<Shape> ReadPoints(int count, const double* xyz) noexcept;

}  // namespace zelvan
