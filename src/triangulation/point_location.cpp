// The first edge, and the search for the trapezoid of a point.
#include "triangulation/engine.h"

namespace VORNEX {

namespace {

bool GoesLeft(GridPoint p, GridPoint other, const Segment& e) noexcept {
  if (!IsEndpoint(p, e)) return LiesLeftOfEdge(p, e);
  if (p.gy == other.gy) return other.gx < p.gx;
  return IsLeftOf(other, e);
}

QueryNode* Step(GridPoint p, GridPoint other, const QueryNode* node) noexcept {
  if (node->kind == QNODE_X) return GoesLeft(p, other, node->edge) ? node->loChild : node->hiChild;
  const GridPoint w = p == node->point ? other : p;
  return GreaterThan(w, node->point) ? node->hiChild : node->loChild;
}

}  // namespace

QueryNode* LocateSink(GridPoint p, GridPoint other, QueryNode* node) noexcept {
  while (node->kind != QNODE_SINK) node = Step(p, other, node);
  return node;
}

void SearchBatch::Add(GridPoint p, GridPoint other, QueryNode** root) noexcept {
  searches_[count_++] = {p, other, *root, root};
}

// The searches go down in step: first all nodes of a round are read, which the
// machine can do at once, then each search takes its turn.
void SearchBatch::Run() noexcept {
  for (;;) {
    std::uint32_t active = 0;
    for (std::uint32_t i = 0; i < count_; ++i) active += searches_[i].node->kind != QNODE_SINK;
    if (active == 0) break;
    for (std::uint32_t i = 0; i < count_; ++i) {
      Search& s = searches_[i];
      if (s.node->kind != QNODE_SINK) s.node = Step(s.p, s.other, s.node);
    }
  }
  for (std::uint32_t i = 0; i < count_; ++i) *searches_[i].root = searches_[i].node;
  count_ = 0;
}

QueryNode* TRIAGLOBS::TakeSink(QueryNode* parent, Trapezoid* trapezoid) {
  QueryNode* sink = nodePool.Take();
  sink->kind = QNODE_SINK;
  sink->trapezoid = trapezoid;
  sink->parent = parent;
  return sink;
}

//        S4 above
//   ---- hiP ----         R asks for hiP, Y2 for loP, X for the edge
//    S2   |   S1
//   ---- loP ----
//        S3 below
QueryNode* TRIAGLOBS::InitQuery(VertexNode* v) {
  const bool upward = RunsUpward(SegmentOf(v));
  const GridPoint hiP = upward ? v->next->grid : v->grid;
  const GridPoint loP = upward ? v->grid : v->next->grid;

  QueryNode* r = nodePool.Take();
  QueryNode* y2 = nodePool.Take();
  QueryNode* x = nodePool.Take();
  QueryNode* s1 = TakeSink(x, nullptr);
  QueryNode* s2 = TakeSink(x, nullptr);
  QueryNode* s3 = TakeSink(y2, nullptr);
  QueryNode* s4 = TakeSink(r, nullptr);
  r->kind = QNODE_Y;
  r->point = hiP;
  r->hiChild = s4;
  r->loChild = y2;
  y2->kind = QNODE_Y;
  y2->point = loP;
  y2->hiChild = x;
  y2->loChild = s3;
  y2->parent = r;
  x->kind = QNODE_X;
  x->edge = SegmentOf(v);
  x->hiChild = s1;
  x->loChild = s2;
  x->parent = y2;

  Trapezoid* left = trapPool.Take();
  Trapezoid* right = trapPool.Take();
  Trapezoid* below = trapPool.Take();
  Trapezoid* above = trapPool.Take();
  left->rightEdge = right->leftEdge = v;
  left->hi = right->hi = above->lo = hiP;
  left->lo = right->lo = below->hi = loP;
  left->up0 = right->up0 = above;
  left->down0 = right->down0 = below;
  above->hi = TOP;
  above->down0 = below->up0 = left;
  above->down1 = below->up1 = right;
  below->lo = BOTTOM;
  left->sink = s2;
  right->sink = s1;
  below->sink = s3;
  above->sink = s4;
  s1->trapezoid = right;
  s2->trapezoid = left;
  s3->trapezoid = below;
  s4->trapezoid = above;
  return r;
}

}  // namespace VORNEX
