// Meshes that own their arrays (region_mesh.h).
#include "interface/region_mesh.h"

#include <memory>

#include "triangulation/region_triangles.h"

namespace zelvan {

namespace {

// Arrays without values, which the engine fills.
struct OwnedMesh : zelvan_mesh {
  std::unique_ptr<double[]> ownXy;
  std::unique_ptr<std::uint32_t[]> ownTriangles;
  std::unique_ptr<std::int32_t[]> ownNeighbours;
};

}  // namespace

void MeshReleaser::operator()(const zelvan_mesh* mesh) const noexcept {
  delete static_cast<const OwnedMesh*>(mesh);
}

MeshHandle MeshOf(const zelvan_region* region, bool isDelaunay, bool hasNeighbours) {
  auto* const mesh = new OwnedMesh{};
  MeshHandle owner(mesh);
  if (IsEmpty(region)) return owner;
  mesh->counts = CountsOf(region);
  mesh->ownXy.reset(new double[2 * std::size_t{mesh->counts.vertices}]);
  mesh->ownTriangles.reset(new std::uint32_t[3 * std::size_t{mesh->counts.triangles}]);
  if (hasNeighbours) {
    mesh->ownNeighbours.reset(new std::int32_t[3 * std::size_t{mesh->counts.triangles}]);
  }
  mesh->xy = mesh->ownXy.get();
  mesh->triangles = mesh->ownTriangles.get();
  mesh->neighbours = mesh->ownNeighbours.get();
  double* xy = mesh->ownXy.get();
  for (const GridPoint point : region->flat.points) {
    const WorldPoint p = region->grid.PlaceOf(point);
    *xy++ = p.x;
    *xy++ = p.y;
  }
  CutRegion(region->flat, isDelaunay, mesh->ownTriangles.get(), mesh->ownNeighbours.get());
  return owner;
}

}  // namespace zelvan
