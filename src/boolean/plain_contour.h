// Contours that an operation leaves as they are when nothing else is near.
#pragma once

#include "polygon/records.h"

namespace zelvan {

/// Does the engine, given this contour in grid form with nothing within a step of it,
/// give it back, up to vertices on straight lines and the direction? True only where no
/// edge comes within half a step of a vertex that is not its own, nor of another edge.
/// Work is O(n log n), or the answer is false: for few contours that are neither.
/// Throws std::bad_alloc.
[[nodiscard]] bool IsPlain(const Contour* contour);

}  // namespace zelvan
