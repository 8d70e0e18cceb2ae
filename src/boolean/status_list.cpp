// The status list (status_list.h).
#include "boolean/status_list.h"

#include <utility>

namespace zelvan {

namespace {

// The change from below a segment to above it.
Winding StepOverSegment(const Segment* s) noexcept {
  const Winding step = StepOverEdgeOf(OperandOf(s->lower));
  return s->forward != 0 ? step : Winding{} - step;
}

void Link(Segment* below, Segment* above) noexcept {
  below->above = above;
  above->below = below;
}

}  // namespace

void StatusList::InsertBelow(Segment* s, Segment* t) {
  Segment* const below = t->below;
  s->node = list_.Insert(s, NodeOf(below), NodeOf(t), StepOverSegment(s));
  Link(below, s);
  Link(s, t);
  ++size_;
}

void StatusList::Remove(Segment* s) noexcept {
  list_.Remove(s->node);
  Link(s->below, s->above);
  --size_;
}

void StatusList::Replace(Segment* s, Segment* t) noexcept {
  Link(s->below, t);
  Link(t, s->above);
  t->node = s->node;
  list_[t->node] = t;
}

void StatusList::Swap(Segment* first, Segment* second) noexcept {
  Link(first->below, second);
  Link(first, second->above);
  Link(second, first);
  list_.Swap(first->node, second->node, StepOverSegment(second) - StepOverSegment(first));
  std::swap(first->node, second->node);
}

}  // namespace zelvan
