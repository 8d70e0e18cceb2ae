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

#include "polygon/build_shape.h"

namespace zelvan {

/// True when two segments of the chain P0, P1, ..., Pn-1 that share no point
/// cross. The closing segment is not tested. Numbers must be finite. Throws
/// std::bad_alloc.
/// @param apart  if not null, set to whether no two segments of the chain can touch, nor
///               neighbours fold back, once its points are rounded to the grid of their box;
///               false where that is not plain (nearness.h)
[[nodiscard]] bool HasSelfCrossing(const PointList& list, bool* apart = nullptr);

/// Steps 1 and 3 on their own, for tests.
enum class ChainContact { kNone, kTouch, kCrossing };
[[nodiscard]] ChainContact FindContactBySweep(const PointList& list, bool* apart = nullptr);
[[nodiscard]] bool HasSelfCrossingByBoxes(const PointList& list);

}  // namespace zelvan
