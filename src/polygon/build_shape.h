// From the host's points to a stored polygon: validation in doubles, then the
// grid of the contour's own box.
//
// One pass removes the points that lie on a line with their neighbours; what is
// left must have three points, an open chain that does not cross itself, and an
// area. The edge that closes the chain is not tested.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "polygon/contour.h"
#include "polygon/records.h"

namespace zelvan {

/// A point as the host gives it, in its own units; z is carried and dropped.
struct InputPoint {
  double x;
  double y;
  double z;
};
using PointList = std::vector<InputPoint>;

/// Removes in one pass around the closed polygon each point that lies on a line
/// with the last kept point before it and the point after it (IsCollinear): a
/// repeated point, a point on a straight run, the tip of a spike. A removal is
/// not revisited.
void RemoveCollinear(PointList& list);

/// Counts the ring, sets CONTOUR_CCW, and turns a clockwise contour round; the
/// head stays. Throws BadPolyError when the area is 0 or not finite.
Contour* FixOrientation(Contour* contour);

/// A counter-clockwise contour in world form from a list of points, which it
/// clears of collinear ones. Throws BadPolyError when the list is no usable
/// polygon, std::bad_alloc when memory runs out.
/// @param apart  as for HasSelfCrossing (self_crossing.h), without the edge that closes
[[nodiscard]] OwnedContour MakeContour(PointList& list, bool* apart = nullptr);

/// The stored polygon of a list of points: one area on the grid of its own box, or
/// no area when the contour collapses there. Null when the shape cannot be
/// allocated; throws as MakeContour does, and ERR::NOMEM.
[[nodiscard]] std::unique_ptr<Shape> BuildShape(PointList points, bool* apart = nullptr);

}  // namespace zelvan
