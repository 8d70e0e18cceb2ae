// Private copies of operands and their marking before an operation.
//
// Copies throw std::bad_alloc or raise ERR::NOMEM; what they had built is released.
#pragma once

#include <cstddef>

#include "polygon/contour.h"
#include "polygon/records.h"

namespace zelvan {

/// A copy of a contour in grid form, head for head.
[[nodiscard]] OwnedContour CopyContour(const Contour* contour);

/// A copy of a ring of areas without triangles; null for a null ring.
[[nodiscard]] Area* CopyAreas(const Area* ring);

/// Sets the engine's bits to those of a new operation: every contour unlabelled,
/// every edge unknown and of operand A or B, no entries.
void MarkOperand(Area* ring, bool isFirst) noexcept;

/// Number of vertices of a ring of areas; 0 for a null ring.
[[nodiscard]] std::size_t CountVertices(const Area* ring) noexcept;

}  // namespace zelvan
