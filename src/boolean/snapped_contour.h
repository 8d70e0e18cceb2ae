// Single contours on the grid: is one sound, or plain, and what region is it if not?
//
// A contour that is simple in doubles can cross itself on the grid, run along itself,
// touch itself from inside or turn over, where its parts come within a step of each
// other. It is then replaced by the region of its positive winding numbers there, once it
// is turned counter-clockwise: what it covers twice is covered.
#pragma once

#include "polygon/shape.h"

namespace zelvan {

/// Does the engine, given this contour in grid form with nothing within a step of it,
/// give it back, up to vertices on straight lines and the direction? True only where no
/// edge comes within half a step of a vertex that is not its own, nor of another edge.
/// Work is O(n), each edge being compared with few others, or the answer is false; so
/// it can be for contours of many edges side by side. Throws std::bad_alloc.
[[nodiscard]] bool IsPlain(const Contour* contour);

/// Is the one contour of an area, in grid form, sound (soundness.h)? For most that are,
/// cheaper looks tell: what the validation saw, IsPlain for few edges, a sweep for any
/// contact for many. Throws std::bad_alloc, raises ERR::NOMEM.
/// @param chainIsApart  that the edges but the closing one do not touch is known, from
///                      before they were rounded (HasSelfCrossing)
[[nodiscard]] bool IsSoundContour(const Area* area, bool chainIsApart);

/// Replaces a shape's one contour by the region around which it winds more often in the
/// direction of its area than in the other, on the same grid: areas with or without holes,
/// or none. Raises ERR::NOMEM, ERR::FAIL, throws std::bad_alloc; the shape is then as it was.
void ReplaceByRegion(Shape& shape);

}  // namespace zelvan
