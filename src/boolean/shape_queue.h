// A queue of shapes combined with one shape: the same areas, contours, first vertices
// and box as Unite or Subtract with each in turn, for less.
//
// Most operations of a queue touch nothing: a hole strictly inside, an island apart.
// Such a contour is linked where the operation would have put it, without a sweep,
// which takes time that depends on its own size alone. Tables are made once.
//
// Why that is the same. Call a region settled when an operation with a contour that
// comes near none of its edges would give back all its contours, head for head. Its
// edges then pass no hot pixel but on its centre, and its contours run as the assembly
// would trace them; a contour that stays a step away from every edge adds no crossing,
// passes none of the region's pixels and has none passed, so it changes nothing of this.
// What the operation does with such a contour follows from the face it lies in:
//
//               in the region                            outside
//   Subtract    a hole, behind the area's others         nothing
//   Unite       nothing                                  an area, behind all others
//
// The contour itself comes back with its own head as long as it is plain
// (snapped_contour.h), and the new region is settled too. Vertices keep their grid as
// long as the contour lies within the region's box.
//
// Whether a region is settled is seen, not proved: an operation that gives what linking
// the contour gives has shown it. So a queue begins with one operation or more, and so
// it goes on after each contour that does touch something.
#pragma once

#include <list>
#include <memory>

#include "polygon/records.h"

namespace zelvan {

using ShapeQueue = std::list<std::unique_ptr<Shape>>;

/// Unites the shape with each of the others in turn. Raises what Unite raises; then
/// those before the failing one stay combined, or, when memory for their tables is
/// missing, none.
void UniteAll(Shape& shape, const ShapeQueue& others);

/// The same for the region of `shape` less those of the others.
void SubtractAll(Shape& shape, const ShapeQueue& others);

}  // namespace zelvan
