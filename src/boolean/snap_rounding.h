// Snap rounding of one column (Guibas and Marimont 1998; Hobby 1999).
//
// A hot pixel is the unit square around a grid point at which an event of the
// column lies: rows from y - 1/2 (included) to y + 1/2 (excluded). Every segment
// that takes such a height over the strip from x - 1/2 to x + 1/2, cut to its own
// range, gets a vertex at the pixel's centre.
#pragma once

#include <cstdint>

#include "boolean/cross_entry.h"
#include "boolean/segment.h"

namespace zelvan {

/// The height of a segment that is not vertical at abscissa twiceX / 2, brought
/// to the grid.
[[nodiscard]] std::int32_t YAt(const Segment* s, std::int32_t twiceX) noexcept;

/// The rows in which a segment enters and leaves the strip of column x.
struct RowSpan {
  std::int32_t enter;
  std::int32_t leave;
};
[[nodiscard]] RowSpan SpanInColumn(const Segment* s, std::int32_t x) noexcept;

/// Gives a vertex at a hot pixel its two entries, at the end of the pixel's ring,
/// unless it has them.
void OnSnappedVertex(CrossEntry*& ringHead, VertexNode* vertex, EntryPool& pool);

}  // namespace zelvan
