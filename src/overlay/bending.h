// Snap rounding of those edges alone that need it.
//
// The bent edges B are the least set that holds each edge with a crossing on it that is no grid
// point, and each edge that meets, off its centre, a hot pixel that an edge of B meets. Edges
// of B go through the centres of all hot pixels that they meet; all others are split only where
// they go through a centre exactly.
//
// The pieces meet at ends alone. Of the hot pixels that B meets, an edge e outside B meets none
// off its centre, and those at the ends of e that B meets are among them. So snap rounding of B
// and e on these pixels leaves e straight and B as it is, and its guarantee holds for e and B;
// two edges outside B cross in grid points alone.
#pragma once

#include "overlay/edges.h"
#include "overlay/sweep.h"

namespace zelvan::overlay {

/// The pieces of all edges that were active in a sweep, their vertices in order.
/// @param edges  those that the sweep went over, its vertices sorted
/// Throws std::bad_alloc.
[[nodiscard]] EdgeSet SplitEdges(const EdgeSet& edges, Sweep& sweep);

}  // namespace zelvan::overlay
