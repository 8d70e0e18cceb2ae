// The two tables of a shape: its vertices, contour by contour, and the heads of
// its contours. Areas in ring order; in each the outer contour, then the holes.
#pragma once

#include <vector>

#include "polygon/records.h"

namespace zelvan {

struct ShapeTables {
  VertexTable vertexTable;
  std::vector<VertexNode*> contourStarts;
};

/// The tables of a ring of areas in grid form; empty for a null ring. Throws
/// std::bad_alloc.
[[nodiscard]] ShapeTables MakeTables(const Area* ring);

/// Hands the tables to the shape whose ring they were made from.
void AdoptTables(Shape& shape, ShapeTables&& tables) noexcept;

/// Refills both tables from the shape's areas. On std::bad_alloc both are empty.
void RebuildTables(Shape& shape);

}  // namespace zelvan
