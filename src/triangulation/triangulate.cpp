// The entries of the triangulation engine (triangulate.h).
#include "triangulation/triangulate.h"

#include <zelvan/error.h>

#include <utility>
#include <vector>

#include "polygon/area.h"
#include "polygon/shape.h"
#include "triangulation/area_sweep.h"
#include "triangulation/engine.h"
#include "triangulation/mesh.h"

namespace VORNEX {

namespace {

// For each vertex of a table the lowest one on its point where there are several, else
// -1; empty where no point has several.
std::vector<std::int32_t> SharedNumbers(const zelvan::VertexTable& table) {
  const zelvan::KeyOrder& order = table.fromTheTop();
  std::vector<std::int32_t> shared;
  if (order.equal.empty()) return shared;
  shared.assign(table.size(), -1);
  for (const zelvan::KeyOrder::Run& run : order.equal) {
    for (std::uint32_t k = run.begin; k < run.end; ++k) {
      shared[order.positions[k]] = static_cast<std::int32_t>(order.positions[run.begin]);
    }
  }
  return shared;
}

// Makes room for a mesh of all areas: each diagonal belongs to two triangles, each contour
// edge to one.
void ReserveMesh(TriangleMesh& mesh, const zelvan::Area* ring) {
  std::size_t vertices = 0;
  std::size_t triangles = 0;
  zelvan::ForEachArea(ring, [&](const zelvan::Area* area) {
    std::size_t inArea = 0;
    for (const zelvan::Contour* c = area->contours; c != nullptr; c = c->next) {
      inArea += c->count;
      triangles += std::size_t{c->count} + 2;
    }
    vertices += inArea;
    triangles -= 4;
  });
  mesh.Reserve((3 * triangles + vertices) / 2, triangles);
}

// Cuts one area into its triangles and into the mesh of the settings.
void TriangulateArea(zelvan::Area& area, const SweepSettings& settings) {
  TriangleMesh& mesh = *settings.mesh;
  const std::size_t edges = mesh.edges().size();
  const std::size_t faces = mesh.faces().size();
  if (TriangulateBySweep(area, settings)) return;
  mesh.Truncate(edges, faces);
  TRIAGLOBS().Run(&area);
  FillMesh(mesh, area);
}

// Cuts all areas of a shape into their triangles and into the mesh.
void TriangulateAreas(zelvan::Shape& shape, TriangleMesh& mesh) {
  ReserveMesh(mesh, shape.areas);
  const std::vector<std::int32_t> shared = SharedNumbers(shape.vertexTable);
  const bool isOnly = shape.areas->next == shape.areas;
  const zelvan::KeyOrder* order = isOnly ? &shape.vertexTable.fromTheTop() : nullptr;
  std::int32_t first = 0;
  zelvan::ForEachArea(shape.areas, [&](zelvan::Area* area) {
    TriangulateArea(*area, {&mesh, AreaNumbering(first, shared), order});
    for (const zelvan::Contour* c = area->contours; c != nullptr; c = c->next) {
      first += static_cast<std::int32_t>(c->count);
    }
  });
}

void DeleteMesh(TriangleMesh* mesh) noexcept {
  delete mesh;
}

}  // namespace

}  // namespace VORNEX

namespace zelvan {

bool Triangulate(Shape& shape) {
  if (shape.areas == nullptr) return false;
  try {
    MeshOwner mesh(new VORNEX::TriangleMesh(shape.vertexTable), VORNEX::DeleteMesh);
    VORNEX::TriangulateAreas(shape, *mesh);
    mesh->ReleaseIndex();
    shape.mesh = std::move(mesh);
    return true;
  } catch (...) {
    ERR::Clear();
    return false;
  }
}

}  // namespace zelvan
