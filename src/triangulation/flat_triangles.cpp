// Cutting an area into flat triangles: by the sweep, and where that gives up by the insertion
// of edges, whose triangles are joined along their edges.
#include "triangulation/flat_triangles.h"

#include <zelvan/error.h>

#include <algorithm>
#include <new>
#include <utility>

#include "polygon/area.h"
#include "triangulation/area_sweep.h"
#include "triangulation/engine.h"

namespace VORNEX {

namespace {

// A diagonal as one of its triangles has it.
struct Side {
  std::uint64_t ends;  // the lower number in the high half
  bool goesUp;         // to the higher number
  std::uint32_t triangle;
  std::uint32_t corner;

  friend bool operator<(const Side& a, const Side& b) noexcept {
    return std::pair(a.ends, a.goesUp) < std::pair(b.ends, b.goesUp);
  }
};

void RunInsertion(zelvan::Area& area) {
  try {
    TRIAGLOBS().Run(&area);
  } catch (CException* problem) {
    const ERR::CODE code = ERR::Delete(problem);
    if (code == ERR::NOMEM) throw std::bad_alloc();
    ERR::Raise(code);
  }
}

void NumberVertices(zelvan::Area& area) noexcept {
  std::int32_t number = 0;
  for (const zelvan::Contour* c = area.contours; c != nullptr; c = c->next) {
    zelvan::ForEachVertex(c, [&](VertexNode* v) { v->number = number++; });
  }
}

std::vector<Side> DiagonalsOf(const zelvan::Area& area) {
  std::vector<Side> sides;
  for (std::uint32_t t = 0; t < area.triangleCount; ++t) {
    const zelvan::Triangle& triangle = area.triangles[t];
    const VertexNode* corners[] = {triangle.a, triangle.b, triangle.c, triangle.a};
    for (std::uint32_t k = 0; k < 3; ++k) {
      if (corners[k]->next == corners[k + 1]) continue;
      const auto from = static_cast<std::uint32_t>(corners[k]->number);
      const auto to = static_cast<std::uint32_t>(corners[k + 1]->number);
      const std::uint64_t low = std::min(from, to);
      sides.push_back({low << 32 | std::max(from, to), from < to, t, k});
    }
  }
  std::sort(sides.begin(), sides.end());
  return sides;
}

FlatTriangles Join(const zelvan::Area& area) {
  FlatTriangles flat;
  for (std::uint32_t t = 0; t < area.triangleCount; ++t) {
    const auto& [a, b, c] = area.triangles[t];
    flat.corners.push_back({static_cast<std::uint32_t>(a->number),
                            static_cast<std::uint32_t>(b->number),
                            static_cast<std::uint32_t>(c->number)});
  }
  flat.neighbours.assign(area.triangleCount, {-1, -1, -1});
  const std::vector<Side> sides = DiagonalsOf(area);
  for (std::size_t k = 1; k < sides.size(); ++k) {
    const Side& s = sides[k - 1];
    const Side& t = sides[k];
    if (s.ends != t.ends || s.goesUp == t.goesUp) continue;
    flat.neighbours[s.triangle][s.corner] = static_cast<std::int32_t>(t.triangle);
    flat.neighbours[t.triangle][t.corner] = static_cast<std::int32_t>(s.triangle);
  }
  return flat;
}

void DropTriangles(zelvan::Area& area) noexcept {
  area.triangles.reset();
  area.triangleCount = 0;
}

}  // namespace

FlatTriangles CutArea(zelvan::Area& area, Cutting cutting) {
  DropTriangles(area);
  FlatTriangles flat;
  if (CutBySweep(area, cutting, flat)) return flat;
  RunInsertion(area);
  try {
    NumberVertices(area);
    flat = Join(area);
  } catch (...) {
    DropTriangles(area);
    throw;
  }
  DropTriangles(area);
  return flat;
}

}  // namespace VORNEX
