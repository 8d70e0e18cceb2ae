// Labelling: where every edge lies with respect to both operands.
//
// A point lies in an operand when the rule says so of its winding number there
// (winding.h). Across an edge the number of an operand changes by the operand's copies of
// it, counted with their directions. So from one known place the numbers on both
// sides of every edge that hangs together with it follow: around each pixel, sector
// by sector, and along each chain of edges to the next pixel. An edge whose two sides
// lie both inside or both outside its operand bounds nothing and is dropped. The
// known places are the sweep's seeds. Of edges that hang
// together, take the first place, in (x, then y) order, where a segment starts:
// none of them lies left of its column, and none starts below it, so the segments
// that the sweep has counted below it are all of others, and those keep their side
// of the place when they are snapped.
//
// So labels are right where edges cancel, where areas of one operand touch along an edge, and
// on rings that cross. No point is located for them: the sweep counts while it searches.
// Flooding visits each pixel once, and each chain from its two ends.
//
// An edge that has its operand to its right is marked TURNED and is walked the other
// way round; stored polygons have none, rings that cross or wind clockwise do.
#pragma once

#include <vector>

#include "boolean/sweep.h"
#include "polygon/records.h"

namespace zelvan {

/// Labels every edge that is not dropped, and links the two copies of each shared
/// edge. Seeds in (x, then y) order. Throws std::bad_alloc.
void LabelEdges(const std::vector<Seed>& seeds, WindingRule rule);

/// Labels every contour of an operand from its labelled edges: crossed when one
/// of its vertices has entries, else as its head's edge, and not where that bounds
/// nothing.
void LabelContours(Area* ring) noexcept;

}  // namespace zelvan
