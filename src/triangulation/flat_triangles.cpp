// Flat triangles (flat_triangles.h).
#include "triangulation/flat_triangles.h"

#include <unordered_map>

#include "polygon/area.h"
#include "triangulation/triangulate.h"

namespace VORNEX {

FlatTriangles CutArea(zelvan::Area& area) {
  zelvan::Area* ring = &area;
  const ERR::CODE code = TriangulateAreas(ring);
  if (code != ERR::OK) ERR::Raise(code);
  std::int32_t n = 0;
  for (zelvan::Contour* c = area.contours; c != nullptr; c = c->next) {
    zelvan::ForEachVertex(c, [&](zelvan::VertexNode* v) { v->number = n++; });
  }
  FlatTriangles t;
  std::unordered_map<std::uint64_t, std::pair<std::int32_t, int>> open;
  for (std::uint32_t i = 0; i < area.triangleCount; ++i) {
    const auto& tr = area.triangles[i];
    const std::array<std::uint32_t, 3> c = {static_cast<std::uint32_t>(tr.a->number),
                                            static_cast<std::uint32_t>(tr.b->number),
                                            static_cast<std::uint32_t>(tr.c->number)};
    t.corners.push_back(c);
    t.neighbours.push_back({-1, -1, -1});
    for (std::size_t k = 0; k < 3; ++k) {
      const std::uint64_t p = c[k];
      const std::uint64_t q = c[(k + 1) % 3];
      const auto it = open.find(q << 32 | p);
      if (it == open.end()) {
        open[p << 32 | q] = {static_cast<std::int32_t>(i), static_cast<int>(k)};
      } else {
        t.neighbours[i][k] = it->second.first;
        t.neighbours[static_cast<std::size_t>(it->second.first)]
                    [static_cast<std::size_t>(it->second.second)] = static_cast<std::int32_t>(i);
      }
    }
  }
  return t;
}

}  // namespace VORNEX
