// The triangles of a region (region_mesh.h).
#include "interface/region_mesh.h"

#include <algorithm>

#include "polygon/region_walks.h"
#include "triangulation/flat_triangles.h"

namespace zelvan {

namespace {

// With the numbers of the region's points as corners.
VORNEX::FlatTriangles CutPolygon(const FlatRegion& region, std::size_t polygon, bool delaunay) {
  const PolygonWalks walks = WalksOf(region, polygon);
  const auto cutting = delaunay ? VORNEX::Cutting::kNearby : VORNEX::Cutting::kTrapezoids;
  VORNEX::FlatTriangles cut = VORNEX::CutArea(*walks.area.get(), cutting);
  if (delaunay) VORNEX::MakeDelaunay(walks.places, cut);
  for (auto& corners : cut.corners) {
    for (std::uint32_t& corner : corners) corner = walks.points[corner];
  }
  return cut;
}

}  // namespace

void CutRegion(const FlatRegion& region, bool delaunay, std::uint32_t* triangles,
               std::int32_t* neighbours) {
  std::int32_t before = 0;  // triangles of the polygons so far
  for (std::size_t i = 0; i < region.Polygons(); ++i) {
    const VORNEX::FlatTriangles cut = CutPolygon(region, i, delaunay);
    for (const auto& corners : cut.corners) {
      triangles = std::copy(corners.begin(), corners.end(), triangles);
    }
    if (neighbours != nullptr) {
      for (const auto& across : cut.neighbours) {
        for (const std::int32_t t : across) *neighbours++ = t < 0 ? -1 : before + t;
      }
    }
    before += static_cast<std::int32_t>(cut.corners.size());
  }
}

}  // namespace zelvan
