// The areas that the answers are held against, and how far the snap to a grid may
// move them.
#pragma once

#include <vector>

#include "harness.h"
#include "job.h"

namespace bench {

/// Twice the signed area: positive when counter-clockwise.
double TwiceArea(const Xyz& contour);

/// The sum over the polygons, each without its holes.
double AreaOf(const std::vector<Polygon>& polygons);

/// How far the area may move when each vertex moves on its own by up to a step of
/// 2^-20 of the box along each axis, and a side of the box by a few.
double GridTolerance(const std::vector<Xyz>& contours);

}  // namespace bench
