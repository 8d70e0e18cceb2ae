// The Boolean engine: two sets of rings on one grid, one operation, a new region.
//
// An operand is any number of closed rings, which may run in any direction and cross,
// touch or repeat themselves and each other; its fill rule makes a region of them.
// So one operation can unite or subtract any number of contours at once:
//
//   CombineRings({region}, {contours, FillRule::NonZero}, result, SUBTRACT)
//
// gives the region less each of the contours, where these all run counter-clockwise.
//
// Exact integer arithmetic and snap rounding: no tolerances. Both operands must
// be in grid form on the same grid; the result is on that grid. The operands keep
// their geometry, flags and labels. The result is a region like every stored one:
// outer contours counter-clockwise, holes clockwise and in their areas, and neither
// spikes nor contours without area.
#pragma once

#include <zelvan/error.h>

#include <cstdint>

#include "boolean/cross_entry.h"
#include "boolean/labels.h"
#include "boolean/winding.h"
#include "polygon/records.h"

namespace zelvan {

/// Combines two regions, each a ring of areas or null, into a new one, null when the
/// result is empty. What their contours cross of themselves counts by the even-odd
/// rule; where one is null, the result is a copy of the other, with its triangles, or
/// empty. Throws nothing; after a failure the result is null.
/// @return ERR::OK, ERR::NOMEM, or ERR::FAIL
ERR::CODE Boolean(const Area* a, const Area* b, Area*& result, BoolOp op) noexcept;

/// One operand: the contours of all areas of a ring (which may be null), whatever
/// their directions, flags and order, and the rule by which they bound a region.
/// Repeated points and rings of less than three points are ignored.
struct RingSet {
  const Area* areas = nullptr;
  FillRule rule = FillRule::EvenOdd;
};

/// Combines the regions of two sets of rings; all else as with Boolean.
ERR::CODE CombineRings(const RingSet& a, const RingSet& b, Area*& result, BoolOp op) noexcept;

/// The region that one set of rings bounds.
inline ERR::CODE RegionOf(const RingSet& rings, Area*& result) noexcept {
  return CombineRings(rings, {}, result, UNION);
}

/// What the contours of a result are.
enum class ResultForm : std::uint8_t {
  kContours,  ///< as stored: without points on straight runs
  kWalks      ///< with a vertex wherever the boundary meets itself or met something, marked
              ///< VERTEX_MAY_TOUCH (polygon/flat_region.h makes simple rings of them)
};

/// Combines two rings of areas (each may be null) that the engine may label and split;
/// they stay the caller's, and the records must outlive them. No two neighbouring points of a
/// contour may be equal.
ERR::CODE CombineCopies(Area* a, Area* b, Area*& result, BoolOp op, SweepRecords& records,
                        FillRules rules = {}, ResultForm form = ResultForm::kContours) noexcept;

/// The first half of that: splits and labels the copies. What an operation takes of each
/// contour is then for CollectContour (assembly.h). Raises ERR::NOMEM, throws
/// std::bad_alloc; the copies are still whole.
void LabelCopies(Area* a, Area* b, SweepRecords& records, FillRules rules = {});

}  // namespace zelvan
