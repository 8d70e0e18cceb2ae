// The Boolean engine: two regions on one grid, one operation, a new region.
//
// The rings of an operand may run in any direction and cross, touch or repeat
// themselves and each other; the winding numbers tell what is inside (winding.h).
//
// Exact integer arithmetic and snap rounding: no tolerances. Both operands must
// be in grid form on the same grid; the result is on that grid. The operands keep
// their geometry, flags and labels. The result is a region like every stored one:
// outer contours counter-clockwise, holes clockwise and in their areas, and neither
// spikes nor contours without area.
#pragma once

#include <zelvan/error.h>

#include "boolean/cross_entry.h"
#include "boolean/labels.h"
#include "boolean/winding.h"
#include "polygon/records.h"

namespace zelvan {

/// Combines two regions, each a ring of areas or null, into a new one, null when the
/// result is empty. What their contours cross of themselves counts by the even-odd
/// rule; where one is null, the result is a copy of the other or
/// empty. Throws nothing; after a failure the result is null.
/// @return ERR::OK, ERR::NOMEM, or ERR::FAIL
ERR::CODE Boolean(const Area* a, const Area* b, Area*& result, BoolOp op) noexcept;

/// Combines two rings of areas (each may be null) that the engine may label and split;
/// they stay the caller's, and the records must outlive them. No two neighbouring points of a
/// contour may be equal.
/// @param rule  what is inside an operand, for both
ERR::CODE CombineCopies(Area* a, Area* b, Area*& result, BoolOp op, SweepRecords& records,
                        WindingRule rule = WindingRule::kOdd) noexcept;

/// The first half of that: splits and labels the copies. What an operation takes of each
/// contour is then for CollectContour (assembly.h). Raises ERR::NOMEM, throws
/// std::bad_alloc; the copies are still whole.
void LabelCopies(Area* a, Area* b, SweepRecords& records, WindingRule rule = WindingRule::kOdd);

}  // namespace zelvan
