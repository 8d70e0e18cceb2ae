// Private copies of operands and their marking before an operation.
//
// Copies raise ERR::NOMEM; what they had built is released and the source keeps
// its geometry and flags.
#pragma once

#include <cstddef>

#include "polygon/records.h"

namespace zelvan {

/// A copy of a ring in grid form, head for head. With `link` each vertex and its
/// copy name each other in their `copy` fields.
[[nodiscard]] Contour* CopyContour(const Contour* contour, bool link);

/// A copy of an area, contours in their order, with its triangles.
[[nodiscard]] Area* CopyArea(const Area* area);

/// A copy of a ring of areas; null for a null ring.
[[nodiscard]] Area* CopyAreas(const Area* ring);

/// The same without triangles and without a trace in the source: what the engine
/// works on.
[[nodiscard]] Area* CopyOperand(const Area* ring);

/// Sets the engine's bits to those of a new operation: every contour unlabelled,
/// every edge unknown and of operand A or B, no entries.
void MarkOperand(Area* ring, bool isFirst) noexcept;

/// Number of vertices of a ring of areas; 0 for a null ring.
[[nodiscard]] std::size_t CountVertices(const Area* ring) noexcept;

}  // namespace zelvan
