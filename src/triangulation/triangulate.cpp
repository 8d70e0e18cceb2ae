// The entries of the triangulation engine (triangulate.h).
#include "triangulation/triangulate.h"

#include "polygon/area.h"
#include "triangulation/engine.h"
#include "triangulation/mesh.h"

namespace VORNEX {

ERR::CODE TriangulateAreas(zelvan::Area* ring, const InsertionOrder& order) {
  try {
    zelvan::ForEachArea(ring, [&](zelvan::Area* area) { TRIAGLOBS().Run(area, order); });
    return ERR::OK;
  } catch (...) {
    return ERR::Clear();
  }
}

}  // namespace VORNEX

namespace zelvan {

namespace {

void DeleteMesh(VORNEX::TriangleMesh* mesh) noexcept {
  delete mesh;
}

}  // namespace

bool Triangulate(Shape& shape, const VORNEX::InsertionOrder& order) {
  if (shape.areas == nullptr || TriangulateAreas(shape.areas, order) != ERR::OK) return false;
  shape.mesh = MeshOwner(new VORNEX::TriangleMesh(shape.vertexTable), DeleteMesh);
  FillMesh(*shape.mesh, shape.areas);
  return true;
}

}  // namespace zelvan
