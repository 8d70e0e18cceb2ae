// The exact decisions of the triangulation engine (predicates.h).
#include "triangulation/predicates.h"

namespace VORNEX {

namespace {

// Positive when p lies left of the upward direction of the edge between a and b.
std::int64_t UpwardCross(GridPoint a, GridPoint b, GridPoint p) noexcept {
  return GreaterThan(b, a) ? zelvan::Cross(a, b, p) : zelvan::Cross(b, a, p);
}

}  // namespace

bool IsLeftOf(GridPoint p, const VertexNode* e) noexcept {
  const GridPoint a = e->grid;
  const GridPoint b = e->next->grid;
  if (p.gy == b.gy) return p.gx < b.gx;
  if (p.gy == a.gy) return p.gx < a.gx;
  return UpwardCross(a, b, p) > 0;
}

bool LiesLeftOfEdge(GridPoint p, const VertexNode* e) noexcept {
  const std::int64_t side = UpwardCross(e->grid, e->next->grid, p);
  return side != 0 ? side > 0 : !RunsUpward(e);
}

}  // namespace VORNEX
