// Does the open chain of an input contour cross itself?
//
// The verdict is that of testing every two segments that share no point with
// SegmentsCross, which holds a touch from one side for a crossing and from the
// other side not. Two segments that cross have a point in common, so:
//  1. A sweep over the chain (Shamos and Hoey 1976) looks for any contact of
//     segments that are not neighbours in the chain. None: no crossing. This is
//     what ordinary contours give, in O(n log n).
//  2. The contact found is a crossing: so says the verdict.
//  3. It is a mere touch or overlap: the pairs whose boxes meet are all tested,
//     found with a tree of boxes over the chain.
#pragma once

#include "polygon/input_point.h"

namespace zelvan {

/// How segments of the chain P0, P1, ..., Pn-1 meet that share no point, or neighbours that fold
/// back. The closing segment takes no part.
enum class ChainContact {
  kNoneOnGrid,  ///< not at all, also once the points are rounded to the grid of their box
  kNone,        ///< not at all
  kTouch,
  kCrossing
};

/// Tells whether a chain crosses itself: kCrossing, kNone, or kNoneOnGrid if that is plain
/// (nearness.h). Numbers must be finite. Throws std::bad_alloc.
[[nodiscard]] ChainContact FindContact(const PointList& list);

/// Steps 1 and 3 on their own. The sweep tells kNoneOnGrid only if it is asked.
[[nodiscard]] ChainContact FindContactBySweep(const PointList& list, bool asksForGrid = false);
[[nodiscard]] bool HasSelfCrossingByBoxes(const PointList& list);

}  // namespace zelvan
