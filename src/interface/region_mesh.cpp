// The triangles of a region (region_mesh.h).
#include "interface/region_mesh.h"

#include "polygon/area_builder.h"
#include "triangulation/flat_triangles.h"

namespace zelvan {

namespace {

VORNEX::FlatTriangles CutPolygon(const FlatRegion& region, std::size_t polygon, bool delaunay) {
  const std::uint32_t first = region.polygonOffsets[polygon];
  const std::uint32_t last = region.polygonOffsets[polygon + 1];
  AreaBuilder area;
  area.Add(region, first, last);
  VORNEX::FlatTriangles cut = VORNEX::CutArea(*area.get());
  if (delaunay) {
  }
  return cut;
}

}  // namespace

void CutRegion(const FlatRegion& region, bool delaunay, std::uint32_t* triangles,
               std::int32_t* neighbours) {
  std::int32_t before = 0;  // triangles of the polygons so far
  for (std::size_t i = 0; i < region.Polygons(); ++i) {
    const VORNEX::FlatTriangles cut = CutPolygon(region, i, delaunay);
    const std::uint32_t firstVertex = region.ringOffsets[region.polygonOffsets[i]];
    for (const auto& corners : cut.corners) {
      for (const std::uint32_t corner : corners) *triangles++ = firstVertex + corner;
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
