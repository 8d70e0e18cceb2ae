// The tables of a shape: its vertices, contour by contour, and the heads and sizes
// of its contours. Areas in ring order; in each the outer contour, then the holes.
#pragma once

#include <cstdint>
#include <vector>

#include "polygon/shape.h"

namespace zelvan {

struct ShapeTables {
  VertexTable vertexTable;
  std::vector<VertexNode*> contourStarts;
  std::vector<std::uint32_t> contourSizes;
};

/// The tables of a ring of areas in grid form; empty for a null ring. Throws
/// std::bad_alloc.
[[nodiscard]] ShapeTables MakeTables(const Area* ring);

/// Hands the tables to the shape whose ring they were made from.
void AdoptTables(Shape& shape, ShapeTables&& tables) noexcept;

/// Refills the tables from the shape's areas. On std::bad_alloc they are empty.
void RebuildTables(Shape& shape);

}  // namespace zelvan
