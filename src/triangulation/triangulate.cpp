// The entries of the triangulation engine (triangulate.h).
#include "triangulation/triangulate.h"

#include <new>
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

// One area into its triangles and the mesh, which may be null.
void TriangulateArea(zelvan::Area& area, const SweepSettings& settings) {
  TriangleMesh* mesh = settings.mesh;
  const std::size_t edges = mesh != nullptr ? mesh->edges().size() : 0;
  const std::size_t faces = mesh != nullptr ? mesh->faces().size() : 0;
  if (TriangulateBySweep(area, settings)) return;
  if (mesh != nullptr) mesh->Truncate(edges, faces);
  TRIAGLOBS().Run(&area);
  if (mesh != nullptr) FillMesh(*mesh, area);
}

// Calls work and tells how it ended.
template <class Work>
ERR::CODE CodeOf(Work work) {
  try {
    work();
    return ERR::OK;
  } catch (const std::bad_alloc&) {
    return ERR::NOMEM;
  } catch (...) {
    return ERR::Clear();
  }
}

void DeleteMesh(TriangleMesh* mesh) noexcept {
  delete mesh;
}

}  // namespace

ERR::CODE TriangulateAreas(zelvan::Area* ring) {
  return CodeOf(
      [=] { zelvan::ForEachArea(ring, [](zelvan::Area* area) { TriangulateArea(*area, {}); }); });
}

ERR::CODE TriangulateAreas(zelvan::Area* ring, const InsertionOrder& order) {
  return CodeOf([&] {
    zelvan::ForEachArea(ring, [&](zelvan::Area* area) { TRIAGLOBS().Run(area, order); });
  });
}

}  // namespace VORNEX

namespace zelvan {

bool Triangulate(Shape& shape) {
  using namespace VORNEX;
  if (shape.areas == nullptr) return false;
  MeshOwner mesh(nullptr, DeleteMesh);
  const ERR::CODE code = CodeOf([&] {
    mesh.reset(new TriangleMesh(shape.vertexTable));
    ReserveMesh(*mesh, shape.areas);
    const std::vector<std::int32_t> shared = SharedNumbers(shape.vertexTable);
    const bool isOnly = shape.areas->next == shape.areas;
    const KeyOrder* order = isOnly ? &shape.vertexTable.fromTheTop() : nullptr;
    std::int32_t first = 0;
    ForEachArea(shape.areas, [&](Area* area) {
      TriangulateArea(*area, {mesh.get(), AreaNumbering(first, shared), order});
      for (const Contour* c = area->contours; c != nullptr; c = c->next) {
        first += static_cast<std::int32_t>(c->count);
      }
    });
  });
  if (code != ERR::OK) return false;
  mesh->ReleaseIndex();
  shape.mesh = std::move(mesh);
  return true;
}

}  // namespace zelvan
