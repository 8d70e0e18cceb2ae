// Result assembly (assembly.h).
#include "boolean/assembly.h"

#include <utility>
#include <vector>

#include "boolean/cross_entry.h"
#include "boolean/op_rules.h"
#include "boolean/operand.h"

namespace zelvan {

namespace {

// A place on a walk: the vertex reached and the direction in which it goes on.
struct Step {
  VertexNode* vertex;
  Direction direction;

  [[nodiscard]] VertexNode* Holder() const noexcept {
    return direction == Direction::FORWARD ? vertex : vertex->prev;
  }
};

void MarkVisited(VertexNode* holder) noexcept {
  holder->flags |= VISITED;
  const EdgeLabel label = LabelOf(holder);
  if (label == LABEL_SHARED || label == LABEL_SHARED_REVERSED) {
    holder->crossNext->partner->flags |= VISITED;
  }
}

// Where the walk that arrives with `arrival` goes on; straight on when the
// operation takes no other edge there.
Step TurnAt(const CrossEntry* arrival, Step straight, BoolOp op) noexcept {
  for (const CrossEntry* e = arrival->prev; e != arrival; e = e->prev) {
    if (SameEdge(e, arrival)) continue;
    if (const auto direction = StartRule(op, HolderOf(e))) return {e->vertex, *direction};
  }
  return straight;
}

Step WalkEdge(Step at, BoolOp op) noexcept {
  const bool forward = at.direction == Direction::FORWARD;
  VertexNode* reached = forward ? at.vertex->next : at.vertex->prev;
  const CrossEntry* arrival = forward ? reached->crossPrev : reached->crossNext;
  const Step straight{reached, at.direction};
  return arrival == nullptr ? straight : TurnAt(arrival, straight, op);
}

// Every step uses up one edge, so a trace is no longer than there are edges.
OwnedContour TraceContour(Step at, BoolOp op, std::vector<GridPoint>& trace) {
  trace.clear();
  do {
    trace.push_back(at.vertex->grid);
    MarkVisited(at.Holder());
    at = WalkEdge(at, op);
  } while ((at.Holder()->flags & VISITED) == 0);
  return NewContour(trace);
}

void DeliverContour(OwnedContour contour, OwnedRing& result, PendingHoles& pendingHoles) {
  if ((contour->flags & CONTOUR_CCW) == 0) {
    pendingHoles.push_back(std::move(contour));
    return;
  }
  PlaceContour(result.first, contour.get());
  static_cast<void>(contour.release());
}

void CollectEdges(const Contour* contour, OwnedRing& result, PendingHoles& pendingHoles,
                  BoolOp op) {
  std::vector<GridPoint> trace;  // one after the other
  ForEachVertex(contour, [&](VertexNode* v) {
    if ((v->flags & VISITED) != 0) return;
    const auto direction = StartRule(op, v);
    if (!direction) return;
    OwnedContour traced =
        TraceContour({*direction == Direction::FORWARD ? v : v->next, *direction}, op, trace);
    if (FinishContour(traced.get())) DeliverContour(std::move(traced), result, pendingHoles);
  });
}

bool IsRedundant(const VertexNode* v) noexcept {
  if (v->prev == v) return false;
  const bool isCollinear = Cross(v->prev->grid, v->grid, v->next->grid) == 0;
  return v->grid == v->prev->grid || (v->prev != v->next && isCollinear);
}

// Removes v if it is redundant; its predecessor follows a removed head.
bool RemoveIfRedundant(Contour* contour, VertexNode* v) noexcept {
  if (!IsRedundant(v)) return false;
  if (contour->head == v) contour->head = v->prev;
  RemoveVertex(contour, v);
  return true;
}

}  // namespace

void CollectContour(Contour* contour, OwnedRing& result, PendingHoles& pendingHoles, BoolOp op) {
  if (LabelOf(contour) == CONTOUR_CROSSED) {
    CollectEdges(contour, result, pendingHoles, op);
    return;
  }
  const auto direction = ContourRule(op, contour);
  if (!direction) return;
  OwnedContour copy = CopyContour(contour);
  copy->flags &= ~ENGINE_BITS;
  if (!FinishContour(copy.get())) return;
  if (*direction == Direction::BACKWARD) ReverseContour(copy.get());
  DeliverContour(std::move(copy), result, pendingHoles);
}

void SimplifyContour(Contour* contour) noexcept {
  VertexNode* v = contour->head;
  do {
    VertexNode* const next = v->next;
    RemoveIfRedundant(contour, v);
    v = next;
  } while (v != contour->head);
  RemoveIfRedundant(contour, contour->head);
  // A spike whose tip was the old head leaves its two sides' ends in one place.
  VertexNode* const head = contour->head;
  while (head->next != head && head->next->grid == head->grid) RemoveVertex(contour, head->next);
}

bool FinishContour(Contour* contour) noexcept {
  SimplifyContour(contour);
  FitBox(contour);
  const std::int64_t twiceArea = TwiceArea(contour->head);
  if (contour->count < 3 || twiceArea == 0) return false;
  contour->flags = twiceArea > 0 ? contour->flags | CONTOUR_CCW : contour->flags & ~CONTOUR_CCW;
  return true;
}

}  // namespace zelvan
