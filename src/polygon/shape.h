// Shape: a polygon, with the tables by which its vertices and contours are numbered.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "polygon/records.h"
#include "polygon/vertex_table.h"

namespace VORNEX {
class TriangleMesh;
}  // namespace VORNEX

namespace zelvan {

/// Owns a mesh without knowing its type: the engine that made it says how it ends.
using MeshOwner = std::unique_ptr<VORNEX::TriangleMesh, void (*)(VORNEX::TriangleMesh*) noexcept>;

inline void NoMesh(VORNEX::TriangleMesh* /*none*/) noexcept {}

/// A polygon: a ring of areas on the grid of a world box, with the tables by
/// which its vertices and contours are numbered. Owns all of it.
struct Shape {
  Shape() = default;
  Shape(const Shape&) = delete;
  Shape& operator=(const Shape&) = delete;
  ~Shape();

  Area* areas = nullptr;                    ///< first area of the ring, or null
  VertexTable vertexTable;                  ///< every vertex, contour by contour
  MeshOwner mesh{nullptr, NoMesh};          ///< the last triangulation, or null
  std::vector<VertexNode*> contourStarts;   ///< the head of each contour, in table order
  std::vector<std::uint32_t> contourSizes;  ///< the count of each contour, in table order
  WorldPoint boxMin{};
  WorldPoint boxMax{};
};

}  // namespace zelvan
