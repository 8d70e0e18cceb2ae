// From the host's points to a stored polygon: validation in doubles, then the
// grid of the contour's own box.
//
// One pass removes the points that lie on a line with their neighbours; what is
// left must have three points, an open chain that does not cross itself, and an
// area. The edge that closes the chain is not tested.
#pragma once

#include <memory>

#include "polygon/contour.h"
#include "polygon/input_point.h"
#include "polygon/shape.h"

namespace zelvan {

/// Removes in one pass around the closed polygon each point that lies on a line
/// with the last kept point before it and the point after it (IsCollinear): a
/// repeated point, a point on a straight run, the tip of a spike. A removal is
/// not revisited.
void RemoveCollinear(PointList& list);

/// An input contour that has passed the validation but for its area.
class ValidatedContour {
 public:
  /// Takes the collinear points out of a list. Throws BadPolyError if what is left is no usable
  /// polygon, std::bad_alloc.
  explicit ValidatedContour(PointList points);

  [[nodiscard]] const PointList& Points() const noexcept { return points_; }

  /// Is it known that no edges touch on the grid of the contour's box, apart from the edge that
  /// closes it?
  [[nodiscard]] bool ChainStaysApart() const noexcept { return chainStaysApart_; }

 private:
  PointList points_;
  bool chainStaysApart_;
};

/// Counts the ring, sets CONTOUR_CCW, and turns a clockwise contour round; the
/// head stays. Throws BadPolyError when the area is 0 or not finite.
Contour* FixOrientation(Contour* contour);

/// The contour in world form, counter-clockwise. Throws BadPolyError if it has no area,
/// std::bad_alloc.
[[nodiscard]] OwnedContour MakeContour(const ValidatedContour& validated);

/// The stored polygon of a contour: one area on the grid of its own box, or no area if the
/// contour collapses there. Throws as MakeContour does, std::bad_alloc, and ERR::NOMEM.
[[nodiscard]] std::unique_ptr<Shape> BuildShape(const ValidatedContour& validated);

}  // namespace zelvan
