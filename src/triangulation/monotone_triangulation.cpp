// Triangles from the monotone rings. One of the two sides of a ring between its
// highest and its lowest vertex is a single edge; the walk along the other side cuts
// every convex corner at once and keeps the reflex ones on a stack.
#include <zelvan/error.h>

#include "triangulation/engine.h"

namespace VORNEX {

void TRIAGLOBS::TriangulateMonotones() {
  for (std::uint32_t k = 0; k < monotoneCount; ++k) TriangulateRing(monotones[k]);
}

void TRIAGLOBS::TriangulateRing(ChainNode* start) {
  start->marked = true;
  ChainNode* top = start;
  const VertexNode* u = start->vertex;
  GridPoint highest = u->grid;
  GridPoint lowest = u->grid;
  std::uint32_t count = 1;
  ChainNode* p = start->next;
  for (; p->vertex != u; p = p->next, ++count) {
    if (p->marked) return;  // the ring was handled through another entry
    p->marked = true;
    const GridPoint point = p->vertex->grid;
    if (GreaterThan(point, highest)) {
      highest = point;
      top = p;
    }
    if (GreaterThan(lowest, point)) lowest = point;
  }
  if (count < 3) ERR::Raise(ERR::FAIL);
  if (count == 3) {
    EmitTriangle(p->vertex, p->next->vertex, p->prev->vertex);
  } else {
    TriangulateMonotone(top, top->next->vertex->grid == lowest ? 0 : 1);
  }
}

void TRIAGLOBS::PushVertex(std::uint32_t& r, VertexNode* v) {
  if (r >= vertexCount) ERR::Raise(ERR::FAIL);
  reflexStack[++r] = v;
}

// The corner at the stack's top is convex when v turns left there. At the end of the
// walk every corner left must be: a ring of an area has three convex corners.
void TRIAGLOBS::TriangulateMonotone(ChainNode* top, int side) {
  const ChainNode* s = side == 1 ? top->prev : top;
  const VertexNode* endv = s->vertex;
  reflexStack[0] = s->next->vertex;
  reflexStack[1] = s->next->next->vertex;
  std::uint32_t r = 1;
  const ChainNode* cur = s->next->next->next;
  while (cur->vertex != endv || r > 1) {
    VertexNode* v = cur->vertex;
    if (r > 0) {
      VertexNode* a = reflexStack[r - 1];
      VertexNode* b = reflexStack[r];
      if (zelvan::Cross(b->grid, a->grid, v->grid) < 0) {
        EmitTriangle(a, b, v);
        --r;
        continue;
      }
      if (v == endv) ERR::Raise(ERR::FAIL);
    }
    PushVertex(r, v);
    cur = cur->next;
  }
  EmitTriangle(reflexStack[r - 1], reflexStack[r], cur->vertex);
}

}  // namespace VORNEX
