// The Boolean engine: two regions on one grid, one operation, a new region.
//
// Exact integer arithmetic and snap rounding: no tolerances. Both operands must
// be in grid form on the same grid; the result is on that grid. The operands keep
// their geometry, flags and labels. Any closed contours are accepted; what they
// cross of themselves counts by the even-odd rule.
#pragma once

#include <zelvan/error.h>

#include "boolean/labels.h"
#include "polygon/records.h"

namespace zelvan {

/// Combines the rings a and b (each may be null) into a new ring, null when the
/// result is empty. Throws nothing; after a failure the result is null.
/// @return ERR::OK, ERR::NOMEM, or ERR::FAIL
ERR::CODE Boolean(const Area* a, const Area* b, Area*& result, BoolOp op) noexcept;

/// The same on two rings, not null, that the engine may label and split; they
/// stay the caller's.
ERR::CODE CombineCopies(Area* a, Area* b, Area*& result, BoolOp op) noexcept;

}  // namespace zelvan
