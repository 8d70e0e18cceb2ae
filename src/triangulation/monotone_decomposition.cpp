// The split into monotone rings: wherever the two vertices on the top and the bottom
// of a trapezoid do not lie on the same side of it, the diagonal between them is
// added. The walk goes from one trapezoid inside the area to its neighbours and
// never across an edge; a diagonal cuts the ring being walked in two, and the table
// below says which neighbours lie on which side of it. The order of the visits
// decides the order of the rings, and so of the triangles.
//
// A vertex is named by an edge that ends there and bounds the area at that place, so
// that of several vertices on one point the right one is taken.
#include <zelvan/error.h>

#include "triangulation/engine.h"

namespace VORNEX {

namespace {

VertexNode* StartOf(VertexNode* edge) {
  if (edge == nullptr) ERR::Raise(ERR::FAIL);
  return edge;
}

VertexNode* EndOf(VertexNode* edge) {
  return StartOf(edge)->next;
}

// Between two edges of which the right one runs upward lies the area.
bool IsInside(const Trapezoid& t) noexcept {
  return t.leftEdge != nullptr && t.rightEdge != nullptr && RunsUpward(SegmentOf(t.rightEdge));
}

GridPoint Difference(GridPoint p, GridPoint q) noexcept {
  return {p.gx - q.gx, p.gy - q.gy};
}

std::int64_t Cross(GridPoint p, GridPoint q) noexcept {
  return std::int64_t{p.gx} * q.gy - std::int64_t{p.gy} * q.gx;
}

// Does direction c come before direction best when turning clockwise from d?
bool Better(GridPoint c, GridPoint best, GridPoint d) noexcept {
  const bool notRightOfBest = Cross(best, c) >= 0;
  const bool rightOfD = Cross(c, d) > 0;
  return Cross(best, d) >= 0 ? notRightOfBest && rightOfD : notRightOfBest || rightOfD;
}

// The ring of vertex a in which the diagonal to `target` lies, as a slot.
std::uint32_t ChooseSlot(const VertexNode* a, GridPoint target) noexcept {
  const TriVertex* record = a->triVertex;
  const GridPoint d = Difference(target, a->grid);
  std::uint32_t chosen = 0;
  GridPoint best = Difference(record->chainNext[0]->grid, a->grid);
  for (std::uint32_t i = 1; i < record->slotCount; ++i) {
    const GridPoint c = Difference(record->chainNext[i]->grid, a->grid);
    if (!Better(c, best, d)) continue;
    chosen = i;
    best = c;
  }
  return chosen;
}

void AddSlot(VertexNode* v, ChainNode* node, VertexNode* next) {
  TriVertex* record = v->triVertex;
  if (record->slotCount >= TriVertex::kSlots) ERR::Raise(ERR::FAIL);
  record->chainPos[record->slotCount] = node;
  record->chainNext[record->slotCount] = next;
  ++record->slotCount;
}

}  // namespace

void TRIAGLOBS::Monotonate() {
  Trapezoid* start = trapPool.Find([](const Trapezoid& t) {
    const bool pointed =
        (t.up0 == nullptr && t.up1 == nullptr) || (t.down0 == nullptr && t.down1 == nullptr);
    return pointed && IsInside(t);
  });
  if (start == nullptr) ERR::Raise(ERR::FAIL);
  monotoneCount = 1;
  if (start->up0 != nullptr) {
    Traverse({0, Direction::kFromAbove, start, start->up0, nullptr});
  } else {
    Traverse({0, Direction::kFromBelow, start, start->down0, nullptr});
  }
  while (pending != nullptr) {
    Visit* visit = pending;
    pending = visit->next;
    Traverse(*visit);
    visitPool.Give(visit);
  }
  // The inside of an area is in one piece; only edges that cross leave more.
  const auto missed = [](const Trapezoid& t) { return !t.visited && IsInside(t); };
  if (trapPool.Find(missed) != nullptr) ERR::Raise(ERR::FAIL);
}

void TRIAGLOBS::Traverse(const Visit& visit) {
  Trapezoid* t = visit.trapezoid;
  if (t == nullptr || t->visited) return;
  t->visited = true;
  if (t->leftEdge == nullptr || t->rightEdge == nullptr) ERR::Raise(ERR::FAIL);
  const int above = (t->up0 != nullptr) + (t->up1 != nullptr);
  const int below = (t->down0 != nullptr) + (t->down1 != nullptr);
  if (above == 0) {
    TraverseTop(visit);
  } else if (below == 0) {
    TraverseBottom(visit);
  } else if (above == 2) {
    below == 2 ? TraverseTwoByTwo(visit) : TraverseTwoAbove(visit);
  } else {
    below == 2 ? TraverseTwoBelow(visit) : TraverseOneByOne(visit);
  }
}

// No upper neighbour.
void TRIAGLOBS::TraverseTop(const Visit& visit) {
  Trapezoid* t = visit.trapezoid;
  if (t->down0 == nullptr || t->down1 == nullptr) {
    Continue(visit.ring, t, {Link::kDown0});
    return;
  }
  VertexNode* a = StartOf(t->down1->leftEdge);
  VertexNode* b = StartOf(t->leftEdge);
  if (visit.from == t->down1) {
    Divide(visit, b, a, {Link::kDown1}, {Link::kDown0});
  } else {
    Divide(visit, a, b, {Link::kDown0}, {Link::kDown1});
  }
}

// No lower neighbour.
void TRIAGLOBS::TraverseBottom(const Visit& visit) {
  Trapezoid* t = visit.trapezoid;
  if (t->up0 == nullptr || t->up1 == nullptr) {
    Continue(visit.ring, t, {Link::kUp0});
    return;
  }
  VertexNode* a = StartOf(t->rightEdge);
  VertexNode* b = StartOf(t->up0->rightEdge);
  if (visit.from == t->up1) {
    Divide(visit, b, a, {Link::kUp1}, {Link::kUp0});
  } else {
    Divide(visit, a, b, {Link::kUp0}, {Link::kUp1});
  }
}

void TRIAGLOBS::TraverseTwoByTwo(const Visit& visit) {
  Trapezoid* t = visit.trapezoid;
  VertexNode* a = StartOf(t->down1->leftEdge);
  VertexNode* b = StartOf(t->up0->rightEdge);
  const Trapezoid* rightward = visit.direction == Direction::kFromBelow ? t->down1 : t->up1;
  if (visit.from == rightward) {
    Divide(visit, b, a, {Link::kUp1, Link::kDown1}, {Link::kUp0, Link::kDown0});
  } else {
    Divide(visit, a, b, {Link::kUp0, Link::kDown0}, {Link::kUp1, Link::kDown1});
  }
}

// Two upper neighbours, one lower.
void TRIAGLOBS::TraverseTwoAbove(const Visit& visit) {
  Trapezoid* t = visit.trapezoid;
  const bool fromAbove = visit.direction == Direction::kFromAbove;
  VertexNode* middle = StartOf(t->up0->rightEdge);
  if (t->lo == EndOf(t->leftEdge)->grid) {
    VertexNode* b = EndOf(t->leftEdge);
    if (fromAbove && visit.from == t->up0) {
      Divide(visit, b, middle, {Link::kUp0}, {Link::kDown0, Link::kUp1});
    } else {
      Divide(visit, middle, b, {Link::kUp1, Link::kDown0}, {Link::kUp0});
    }
    return;
  }
  VertexNode* a = StartOf(t->rightEdge);
  if (fromAbove && visit.from == t->up1) {
    Divide(visit, middle, a, {Link::kUp1}, {Link::kDown0, Link::kUp0});
  } else {
    Divide(visit, a, middle, {Link::kUp0, Link::kDown0}, {Link::kUp1});
  }
}

// One upper neighbour, two lower.
void TRIAGLOBS::TraverseTwoBelow(const Visit& visit) {
  Trapezoid* t = visit.trapezoid;
  const bool fromBelow = visit.direction == Direction::kFromBelow;
  VertexNode* middle = StartOf(t->down1->leftEdge);
  if (t->hi == StartOf(t->leftEdge)->grid) {
    VertexNode* a = StartOf(t->leftEdge);
    if (fromBelow && visit.from == t->down0) {
      Divide(visit, middle, a, {Link::kDown0}, {Link::kUp0, Link::kDown1});
    } else {
      Divide(visit, a, middle, {Link::kDown1, Link::kUp0}, {Link::kDown0});
    }
    return;
  }
  VertexNode* b = EndOf(t->rightEdge);
  if (fromBelow && visit.from == t->down1) {
    Divide(visit, b, middle, {Link::kDown1}, {Link::kUp0, Link::kDown0});
  } else {
    Divide(visit, middle, b, {Link::kDown0, Link::kUp0}, {Link::kDown1});
  }
}

void TRIAGLOBS::TraverseOneByOne(const Visit& visit) {
  Trapezoid* t = visit.trapezoid;
  VertexNode* a = nullptr;
  VertexNode* b = nullptr;
  if (t->hi == StartOf(t->leftEdge)->grid && t->lo == StartOf(t->rightEdge)->grid) {
    a = StartOf(t->rightEdge);
    b = StartOf(t->leftEdge);
  } else if (t->hi == EndOf(t->rightEdge)->grid && t->lo == EndOf(t->leftEdge)->grid) {
    a = EndOf(t->rightEdge);
    b = EndOf(t->leftEdge);
  } else {
    Continue(visit.ring, t, {Link::kUp0, Link::kDown0});
    return;
  }
  if (visit.direction == Direction::kFromAbove) {
    Divide(visit, b, a, {Link::kUp0}, {Link::kDown0});
  } else {
    Divide(visit, a, b, {Link::kDown0}, {Link::kUp0});
  }
}

// Plans visits to the neighbours of t, before all that are pending. What has been
// visited by now would be passed over later as well.
void TRIAGLOBS::Continue(std::uint32_t ring, Trapezoid* t, Links links) {
  for (const Link* link = links.end(); link != links.begin();) {
    --link;
    const bool down = *link == Link::kDown0 || *link == Link::kDown1;
    Trapezoid* to = *link == Link::kUp0     ? t->up0
                    : *link == Link::kUp1   ? t->up1
                    : *link == Link::kDown0 ? t->down0
                                            : t->down1;
    if (to == nullptr || to->visited) continue;
    Visit* visit = visitPool.Take();
    *visit = {ring, down ? Direction::kFromAbove : Direction::kFromBelow, to, t, pending};
    pending = visit;
  }
}

// Adds the diagonal from a to b; then the neighbours on the side that keeps the ring
// are visited, then those on the side of the new one.
void TRIAGLOBS::Divide(const Visit& visit, VertexNode* a, VertexNode* b, Links same, Links other) {
  const std::uint32_t created = SplitMonotone(visit.ring, a, b);
  Continue(created, visit.trapezoid, other);
  Continue(visit.ring, visit.trapezoid, same);
}

//        before:  ... p -> ...        after:  ... p -> q ...       (a, then b)
//                 ... -> q ...                ... j -> i -> ...    (b, then a)
std::uint32_t TRIAGLOBS::SplitMonotone(std::uint32_t m, VertexNode* a, VertexNode* b) {
  if (monotoneCount >= monotoneLimit || a == b) ERR::Raise(ERR::FAIL);
  const std::uint32_t created = monotoneCount++;
  const std::uint32_t ia = ChooseSlot(a, b->grid);
  const std::uint32_t ib = ChooseSlot(b, a->grid);
  ChainNode* p = a->triVertex->chainPos[ia];
  ChainNode* q = b->triVertex->chainPos[ib];

  ChainNode* i = chainPool.Take();
  ChainNode* j = chainPool.Take();
  i->vertex = a;
  j->vertex = b;
  j->prev = q->prev;
  q->prev->next = j;
  i->next = p->next;
  p->next->prev = i;
  i->prev = j;
  j->next = i;
  p->next = q;
  q->prev = p;

  a->triVertex->chainNext[ia] = b;
  AddSlot(a, i, i->next->vertex);
  AddSlot(b, j, a);
  monotones[m] = p;
  monotones[created] = i;
  return created;
}

}  // namespace VORNEX
