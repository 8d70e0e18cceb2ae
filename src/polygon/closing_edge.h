// Does the edge that closes the chain of an input contour cross it?
//
// Validation leaves that edge out, so a contour may cross itself there. A touch is no
// crossing: the chain must pass from one side of the edge to the other, be it within two
// edges, in a vertex, or along the edge. So a contour has the answer of its mirror image,
// and of the contour the other way round.
#pragma once

#include "polygon/input_point.h"

namespace zelvan {

/// True when the edge from the last point to the first crosses the rest of the contour: the
/// chain crosses it between its ends, or passes one of them like the middle of an eight.
/// Exact; for three finite points or more. Throws std::bad_alloc.
[[nodiscard]] bool ClosingEdgeCrosses(PointList list);

}  // namespace zelvan
