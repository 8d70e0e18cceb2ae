// A queue of shapes combined with one shape: the same areas, contours, first vertices
// and box as Unite or Subtract with each in turn, for less.
//
// Most operations of a queue touch nothing: a hole strictly inside, an island apart.
// Such a contour is linked where the operation would have put it, without a sweep, in
// time that depends on its own size alone. Most others touch few contours: the rest pass
// by (near_operation.h). Tables are made once.
//
// Why that is the same. In a snap-stable region (bent_edges.h) no edge meets the pixel of a
// vertex but in its centre. So an operation bends none of the edges and traces the contours
// as they are, from the same heads, but where the new contour comes near: with that contour
// a step away from every edge, nowhere. What happens to such a contour follows from the
// face that it lies in:
//
//               in the region                            outside
//   Subtract    a hole, behind the area's others         nothing
//   Unite       nothing                                  an area, behind all others
//
// The contour comes back with its own head as long as it is plain (snapped_contour.h),
// and the new region is snap-stable too. Vertices keep their grid as long as the contour lies
// within the box of the grid and the region fills that.
#pragma once

#include <cstddef>
#include <list>
#include <memory>

#include "polygon/shape.h"

namespace zelvan {

using ShapeQueue = std::list<std::unique_ptr<Shape>>;

/// How many operations of a queue went which way, for the bounds in the tests. One with a
/// contour that collapses on the region's grid goes none.
struct QueueWays {
  std::size_t linked = 0;   ///< without a sweep
  std::size_t partial = 0;  ///< with the contours that it comes near
  std::size_t whole = 0;    ///< with the whole region
};

/// Unites the shape with each of the others in turn. Raises what Unite raises, throws
/// std::bad_alloc; the shapes before the failing one then stay combined, or, if memory for
/// their tables is missing, none.
QueueWays UniteAll(Shape& shape, const ShapeQueue& others);

/// The same for the region of `shape` less those of the others.
QueueWays SubtractAll(Shape& shape, const ShapeQueue& others);

}  // namespace zelvan
