// Inserting one edge into the trapezoidation, and the build that inserts all.
//
// What holds between two steps of the walk: the trapezoids already passed are split
// into a left part (the old record) and a right part (a new one) and linked among
// themselves; the trapezoid to come still has the two parts above it as up0 and up1,
// and `usave` carries a third upper neighbour when another chain enters it there.
// Each vertex that the walk passes is checked to lie on the side on which its edges
// already lie, and the last trapezoid must be the one located for the lower end, so
// an edge that crosses another is found out when the second of the two is inserted.
#include <zelvan/error.h>

#include <algorithm>
#include <utility>

#include "triangulation/engine.h"

namespace VORNEX {

namespace {

void Replace(Trapezoid*& link, const Trapezoid* from, Trapezoid* to) noexcept {
  if (link == from) link = to;
}

// The slot of two links that names t. Raises FAIL when neither does.
Trapezoid*& SlotOf(Trapezoid*& link0, Trapezoid*& link1, const Trapezoid* t) {
  if (link0 != t && link1 != t) ERR::Raise(ERR::FAIL);
  return link0 == t ? link0 : link1;
}

// One upper neighbour above the first trapezoid: one of the parts closes at the
// top when an edge meets the new one there, else u gets a second lower neighbour. A
// side of t ends at its top just when u has another edge there; to ask the edge for
// its ends would cost a look at far memory.
void TopCusp(Trapezoid* t, Trapezoid* tn) {
  Trapezoid* u = t->up0;
  Trapezoid*& slot = SlotOf(u->down0, u->down1, t);
  if (t->leftEdge != u->leftEdge) {
    slot = tn;
    t->up0 = nullptr;
  } else if (t->rightEdge != u->rightEdge) {
    slot = t;
    tn->up0 = nullptr;
  } else {
    u->down1 = tn;
  }
}

// The mirror: one lower neighbour below the last trapezoid.
void BottomCusp(Trapezoid* t, Trapezoid* tn) {
  Trapezoid* d = t->down0;
  Trapezoid*& slot = SlotOf(d->up0, d->up1, t);
  if (t->leftEdge != d->leftEdge) {
    slot = tn;
    t->down0 = nullptr;
  } else if (t->rightEdge != d->rightEdge) {
    slot = t;
    tn->down0 = nullptr;
  } else {
    d->up1 = tn;
  }
}

void LinkTop(Trapezoid* t, Trapezoid* tn) {
  if (t->up0 == nullptr) return;
  if (t->up1 == nullptr) {
    TopCusp(t, tn);
    return;
  }
  tn->up0 = t->up1;
  t->up1->down0 = tn;
  tn->up1 = nullptr;
  t->up1 = nullptr;
}

void LinkBottom(Trapezoid* t, Trapezoid* tn) {
  if (t->down0 == nullptr) return;
  if (t->down1 == nullptr) {
    BottomCusp(t, tn);
    return;
  }
  t->down0->up0 = t;
  t->down1->up0 = tn;
  tn->down0 = t->down1;
  t->down1->up1 = nullptr;
  t->down0->up1 = nullptr;
  tn->down1 = nullptr;
  t->down1 = nullptr;
}

// Two lower neighbours, divided by a vertex at t.lo: the edge passes it on one side.
// The right part keeps the copied links when the left neighbour is entered; the next
// step corrects them.
Trapezoid* TwoBelow(Trapezoid* t, Trapezoid* tn, const VertexNode* v) noexcept {
  Trapezoid* d0 = t->down0;
  Trapezoid* d1 = t->down1;
  if (!LiesLeftOfEdge(t->lo, SegmentOf(v))) {
    d1->up0 = tn;
    d0->up1 = tn;
    t->down1 = nullptr;
    return d0;
  }
  d1->up1 = tn;
  tn->down0 = d1;
  tn->down1 = nullptr;
  return d1;
}

// On which side of the walk the vertex at t.lo lies by the edges inserted so far,
// where t has one lower neighbour.
Side SideOfPassedVertex(const Trapezoid* t) {
  const Trapezoid* d = t->down0;
  if (d->up0 != nullptr && d->up1 != nullptr) return d->up0 == t ? Side::kRight : Side::kLeft;
  const bool leftEnds = d->leftEdge != t->leftEdge;
  const bool rightEnds = d->rightEdge != t->rightEdge;
  if (leftEnds == rightEnds) ERR::Raise(ERR::FAIL);
  return leftEnds ? Side::kLeft : Side::kRight;
}

}  // namespace

Trapezoid* TRIAGLOBS::InsertEndpoint(bool isUpper, QueryNode* root, GridPoint p, GridPoint other) {
  Trapezoid* t = Locate(p, other, root);
  // An end of a side of t is not between hi and lo, so p is a boundary just when it
  // is one of the two.
  if (t->hi == p || t->lo == p) return t;
  Trapezoid* tl = trapPool.Take();
  *tl = *t;
  tl->hi = t->lo = p;
  tl->up0 = t;
  tl->up1 = nullptr;
  t->down0 = tl;
  t->down1 = nullptr;
  for (Trapezoid* d : {tl->down0, tl->down1}) {
    if (d == nullptr) continue;
    Replace(d->up0, t, tl);
    Replace(d->up1, t, tl);
  }
  QueryNode* node = t->sink;
  node->kind = QNODE_Y;
  node->point = p;
  node->loChild = tl->sink = TakeSink(node, tl);
  node->hiChild = t->sink = TakeSink(node, t);
  return isUpper ? tl : t;
}

Trapezoid* TRIAGLOBS::SplitByEdge(Trapezoid* t, VertexNode* v) {
  QueryNode* node = t->sink;
  if (node == nullptr) ERR::Raise(ERR::FAIL);  // given back: the links contradict each other
  QueryNode* left = TakeSink(node, t);
  QueryNode* right = TakeSink(node, nullptr);
  Trapezoid* tn = trapPool.Take();
  right->trapezoid = tn;
  node->kind = QNODE_X;
  node->edge = SegmentOf(v);
  node->hiChild = right;
  node->loChild = left;
  *tn = *t;
  t->sink = left;
  tn->sink = right;
  return tn;
}

void TRIAGLOBS::ContinueFromAbove(Trapezoid* t, Trapezoid* tn) {
  if (t->up0 == nullptr || t->up1 == nullptr) ERR::Raise(ERR::FAIL);
  tn->up0 = t->up1;
  tn->up1 = nullptr;
  tn->up0->down0 = tn;
  if (usave == nullptr) {
    t->up1 = nullptr;
  } else if (uside == Side::kLeft) {
    t->up1 = nullptr;
    tn->up1 = usave;
    t->up0->down0 = t;
    usave->down0 = tn;
  } else {
    t->up1 = t->up0;
    t->up0 = usave;
    t->up1->down0 = t;
    usave->down0 = t;
  }
  usave = nullptr;
}

Trapezoid* TRIAGLOBS::OneBelow(Trapezoid* t, Trapezoid* tn, const VertexNode* v) {
  Trapezoid* d = t->down0;
  const Side passed = LiesLeftOfEdge(t->lo, SegmentOf(v)) ? Side::kLeft : Side::kRight;
  if (passed != SideOfPassedVertex(t)) ERR::Raise(ERR::FAIL);
  if (d->up0 != nullptr && d->up1 != nullptr) {
    uside = d->up0 == t ? Side::kLeft : Side::kRight;
    usave = d->up0 == t ? d->up1 : d->up0;
  }
  d->up0 = t;
  d->up1 = tn;
  return d;
}

void TRIAGLOBS::InsertEdge(VertexNode* v) {
  GridPoint upper = v->grid;
  GridPoint lower = v->next->grid;
  QueryNode* upperRoot = v->triVertex->root0;
  QueryNode* lowerRoot = v->next->triVertex->root1;
  if (upper == lower) ERR::Raise(ERR::FAIL);
  if (GreaterThan(lower, upper)) {
    std::swap(upper, lower);
    std::swap(upperRoot, lowerRoot);
  }
  Trapezoid* const first = InsertEndpoint(true, upperRoot, upper, lower);
  Trapezoid* const last = InsertEndpoint(false, lowerRoot, lower, upper);
  Trapezoid* firstRight = nullptr;
  usave = nullptr;
  uside = Side::kLeft;

  Trapezoid* t = first;
  for (;;) {
    if (GreaterThan(lower, t->lo)) ERR::Raise(ERR::FAIL);
    const bool ends = t->lo == lower;
    if (ends && t != last) ERR::Raise(ERR::FAIL);
    Trapezoid* tn = SplitByEdge(t, v);
    if (firstRight == nullptr) {
      firstRight = tn;
      LinkTop(t, tn);
    } else {
      ContinueFromAbove(t, tn);
    }
    Trapezoid* below = nullptr;
    if (ends) {
      LinkBottom(t, tn);
    } else {
      if (t->down0 == nullptr) ERR::Raise(ERR::FAIL);
      below = t->down1 != nullptr ? TwoBelow(t, tn, v) : OneBelow(t, tn, v);
      if (!GreaterThan(t->lo, below->lo)) ERR::Raise(ERR::FAIL);
    }
    tn->leftEdge = t->rightEdge = v;
    if (ends) break;
    t = below;
  }
  MergeTrapezoids(v, first, lower, Side::kLeft);
  MergeTrapezoids(v, firstRight, lower, Side::kRight);
}

// Vertices are visited in ring order, not in insertion order: neighbours take the
// same way through the graph, and the order of pure searches does not matter.
void TRIAGLOBS::RefreshRoots() {
  SearchBatch batch;
  for (const zelvan::Contour* contour = area->contours; contour != nullptr;
       contour = contour->next) {
    const VertexNode* v = contour->head;
    do {
      TriVertex* record = v->triVertex;
      if (record->root0 != nullptr) {
        batch.Add(v->grid, v->next->grid, &record->root0);
        batch.Add(v->grid, v->prev->grid, &record->root1);
        if (batch.Full()) batch.Run();
      }
      v = v->next;
    } while (v != contour->head);
  }
  batch.Run();
}

// Inserts the edges of `order` before entry `end`. The two ends of some edges to come
// are looked up together first; their own searches then start close to the goal.
void TRIAGLOBS::InsertUntil(std::uint32_t end) {
  SearchBatch batch;
  while (nextToInsert < end) {
    const std::uint32_t stop = std::min(end, nextToInsert + SearchBatch::kCapacity / 2);
    for (std::uint32_t i = nextToInsert; i < stop; ++i) {
      const VertexNode* v = order[i];
      batch.Add(v->grid, v->next->grid, &v->triVertex->root0);
      batch.Add(v->next->grid, v->grid, &v->next->triVertex->root1);
    }
    batch.Run();
    for (; nextToInsert < stop; ++nextToInsert) {
      VertexNode* v = order[nextToInsert];
      InsertEdge(v);
      v->triVertex->root0 = nullptr;  // its own search is over
    }
  }
}

void TRIAGLOBS::BuildTrapezoids() {
  QueryNode* root = InitQuery(order[0]);
  for (std::uint32_t i = 0; i < vertexCount; ++i) {
    TriVertex* record = order[i]->triVertex;
    record->root0 = record->root1 = root;
  }
  nextToInsert = 1;
  const std::uint32_t phases = LogStar(vertexCount);
  for (std::uint32_t h = 1; h <= phases; ++h) {
    InsertUntil(PhaseEnd(vertexCount, h));
    if (nextToInsert < vertexCount) RefreshRoots();
  }
  InsertUntil(vertexCount);
}

}  // namespace VORNEX
