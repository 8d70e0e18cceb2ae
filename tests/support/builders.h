// The two builders of triangles against each other.
#pragma once

#include <zelvan/error.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "polygon/area.h"
#include "support/delaunay_checker.h"
#include "support/mesh_checker.h"
#include "triangulation/area_sweep.h"
#include "triangulation/triangulate.h"

namespace zelvan::test {

/// Cuts every area of a sound region by the sweep, which must not give up, and by the
/// insertion of edges, and judges its Delaunay triangulation. @return what is wrong, or nothing
inline std::string CompareBuilders(Area* ring) {
  std::vector<std::array<const VertexNode*, 3>> sets[2];
  std::string wrong;
  ForEachArea(ring, [&](Area* area) { wrong += CheckDelaunay(*area); });
  for (auto& set : sets) {
    if (&set == sets) {
      ForEachArea(ring, [&](Area* area) {
        if (!VORNEX::TriangulateBySweep(*area)) wrong += "the sweep gave up\n";
      });
    } else if (VORNEX::TriangulateAreas(ring, {.seed = 1}) != ERR::OK) {
      wrong += "the insertion failed\n";
    }
    if (!wrong.empty()) return wrong;
    ForEachArea(ring, [&](const Area* area) {
      wrong += CheckTriangles(*area);
      for (std::uint32_t i = 0; i < area->triangleCount; ++i) {
        const Triangle& t = area->triangles[i];
        std::array<const VertexNode*, 3> corners{t.a, t.b, t.c};
        std::sort(corners.begin(), corners.end(), std::less<>());
        set.push_back(corners);
      }
    });
    std::sort(set.begin(), set.end());
  }
  return sets[0] == sets[1] ? wrong : wrong + "the sets of triangles differ";
}

}  // namespace zelvan::test
