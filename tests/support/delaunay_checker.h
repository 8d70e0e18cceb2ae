// An independent judge of Delaunay triangulations: it decides by determinants of numbers of
// any length, and knows neighbours by the ends of edges.
#pragma once

#include <string>

#include "polygon/records.h"

namespace zelvan::test {

/// The sign of the determinant of the lifted points: positive when d lies inside the circle
/// through a, b, c, counter-clockwise.
[[nodiscard]] int InCircle(GridPoint a, GridPoint b, GridPoint c, GridPoint d);

/// Cuts an area in each way and makes each result, and one after random flips, Delaunay:
/// triangles as CheckTriangles wants them, neighbours mutual and none on contours, each
/// time the same result, in its order, with every edge legal. The area keeps it.
/// @return what is wrong, or nothing
[[nodiscard]] std::string CheckDelaunay(Area& area);

}  // namespace zelvan::test
