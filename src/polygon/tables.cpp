// The tables of a shape (tables.h).
#include "polygon/tables.h"

#include <cstddef>
#include <utility>

#include "polygon/area.h"

namespace zelvan {

ShapeTables MakeTables(const Area* ring) {
  std::size_t vertexCount = 0;
  std::size_t contourCount = 0;
  ForEachContour(ring, [&](const Contour* contour) {
    vertexCount += contour->count;
    ++contourCount;
  });

  ShapeTables tables;
  std::vector<VertexNode*> vertices;
  vertices.reserve(vertexCount);
  tables.contourStarts.reserve(contourCount);
  tables.contourSizes.reserve(contourCount);
  ForEachContour(ring, [&](const Contour* contour) {
    ForEachVertex(contour, [&](VertexNode* v) { vertices.push_back(v); });
    tables.contourStarts.push_back(contour->head);
    tables.contourSizes.push_back(contour->count);
  });
  tables.vertexTable.Assign(std::move(vertices));
  return tables;
}

void AdoptTables(Shape& shape, ShapeTables&& tables) noexcept {
  shape.vertexTable = std::move(tables.vertexTable);
  shape.contourStarts = std::move(tables.contourStarts);
  shape.contourSizes = std::move(tables.contourSizes);
}

void RebuildTables(Shape& shape) {
  shape.vertexTable.Clear();
  shape.contourStarts.clear();
  shape.contourSizes.clear();
  AdoptTables(shape, MakeTables(shape.areas));
}

}  // namespace zelvan
