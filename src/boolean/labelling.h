// Labelling: where every edge lies with respect to both operands.
//
// A point lies in an operand when a ray from it crosses the operand's contours an
// odd number of times; for a stored polygon that is its region, and it gives every
// other closed contour a region too. Crossing an edge changes membership in the
// operands that have an odd number of copies of it and in no other. So from one
// known place the membership of both sides of every edge that hangs together with
// it follows: around each pixel, sector by sector, and along each chain of edges
// to the next pixel. The known places are the sweep's seeds. Of edges that hang
// together, take the first place, in (x, then y) order, where a segment starts:
// none of them lies left of its column, and none starts below it, so the segments
// that the sweep has counted below it are all of others, and those keep their side
// of the place when they are snapped.
//
// No label depends on the direction in which a contour runs. An edge that has its
// operand to its right is marked TURNED and is walked the other way round; stored
// polygons have none, contours that cross themselves do.
#pragma once

#include <vector>

#include "boolean/sweep.h"
#include "polygon/records.h"

namespace zelvan {

/// Labels every edge that is not dropped, and links the two copies of each shared
/// edge. Seeds in (x, then y) order. Throws std::bad_alloc.
void LabelEdges(const std::vector<Seed>& seeds);

/// Labels every contour of an operand from its labelled edges: crossed when one
/// of its vertices has entries, else as its head's edge.
void LabelContours(Area* ring) noexcept;

}  // namespace zelvan
