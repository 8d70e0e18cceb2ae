// After an edge is inserted: the parts on one side of it that lie above each other
// between the same two edges become one trapezoid again.
#include <zelvan/error.h>

#include "triangulation/engine.h"

namespace VORNEX {

namespace {

void ReplaceUp(Trapezoid* d, const Trapezoid* from, Trapezoid* to) noexcept {
  if (d == nullptr) return;
  if (d->up0 == from) d->up0 = to;
  if (d->up1 == from) d->up1 = to;
}

// The lower neighbour of t that lies along edge v on the given side of it, or null.
Trapezoid* BelowAlong(const VertexNode* v, const Trapezoid* t, Side side) noexcept {
  for (Trapezoid* d : {t->down0, t->down1}) {
    if (d == nullptr) continue;
    if ((side == Side::kLeft ? d->rightEdge : d->leftEdge) == v) return d;
  }
  return nullptr;
}

}  // namespace

// Only sinks made by the current insertion are merged away, so no search root names
// one. Its record is marked by a null sink until it is taken again.
void TRIAGLOBS::Merge(Trapezoid* t, Trapezoid* below) {
  if (below->sink == nullptr) ERR::Raise(ERR::FAIL);
  QueryNode* parent = below->sink->parent;
  (parent->loChild == below->sink ? parent->loChild : parent->hiChild) = t->sink;
  t->down0 = below->down0;
  ReplaceUp(t->down0, below, t);
  t->down1 = below->down1;
  ReplaceUp(t->down1, below, t);
  t->lo = below->lo;
  below->sink = nullptr;
  trapPool.Give(below);
}

void TRIAGLOBS::MergeTrapezoids(const VertexNode* v, Trapezoid* first, GridPoint lowest,
                                Side side) {
  Trapezoid* t = first;
  while (t != nullptr && !GreaterThan(lowest, t->lo)) {
    Trapezoid* below = BelowAlong(v, t, side);
    if (below != nullptr && !GreaterThan(t->lo, below->lo)) ERR::Raise(ERR::FAIL);
    if (below != nullptr && below->leftEdge == t->leftEdge && below->rightEdge == t->rightEdge) {
      Merge(t, below);
    } else {
      t = below;
    }
  }
}

}  // namespace VORNEX
