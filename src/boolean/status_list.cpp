// The status list (status_list.h).
#include "boolean/status_list.h"

#include <utility>

#include "polygon/hash.h"

namespace zelvan {

namespace {

// The change from below a segment to above it.
Winding StepOverSegment(const Segment* s) noexcept {
  const Winding step = StepOverEdgeOf(OperandOf(s->lower));
  return s->forward != 0 ? step : Winding{} - step;
}

Winding SumOf(const StatusNode* n) noexcept {
  return n == nullptr ? Winding{} : n->sum;
}

void Resum(StatusNode* n) noexcept {
  n->sum = StepOverSegment(n->segment) + SumOf(n->left) + SumOf(n->right);
}

}  // namespace

void StatusList::InsertBelow(Segment* s, Segment* t) {
  StatusNode* node = pool_.Take();
  node->segment = s;
  node->priority = static_cast<std::uint32_t>(MixPair(0x5EED, taken_++));
  node->sum = StepOverSegment(s);
  s->node = node;
  Attach(node, s, t);
  while (node->parent != nullptr && node->parent->priority < node->priority) RotateUp(node);
}

// Of two neighbours in order, one has a free child on the side of the other.
void StatusList::Attach(StatusNode* node, Segment* s, Segment* t) noexcept {
  Segment* lower = t->below;
  s->above = t;
  s->below = lower;
  t->below = lower->above = s;
  if (root_ == nullptr) {
    root_ = node;
    return;
  }
  if (!IsEnd(t) && t->node->left == nullptr) {
    node->parent = t->node;
    t->node->left = node;
  } else {
    node->parent = lower->node;
    lower->node->right = node;
  }
  AddToAncestors(node, node->sum);
}

void StatusList::Remove(Segment* s) noexcept {
  s->below->above = s->above;
  s->above->below = s->below;
  StatusNode* node = s->node;
  while (node->left != nullptr || node->right != nullptr) {
    StatusNode* child = node->left;
    if (child == nullptr || (node->right != nullptr && node->right->priority > child->priority)) {
      child = node->right;
    }
    RotateUp(child);
  }
  AddToAncestors(node, Winding{} - node->sum);
  StatusNode* parent = node->parent;
  (parent == nullptr ? root_ : parent->left == node ? parent->left : parent->right) = nullptr;
  pool_.Give(node);
  s->node = nullptr;
}

void StatusList::Replace(Segment* s, Segment* t) noexcept {
  t->below = s->below;
  t->above = s->above;
  t->below->above = t;
  t->above->below = t;
  t->node = s->node;
  t->node->segment = t;
  s->node = nullptr;
}

void StatusList::Swap(Segment* first, Segment* second) noexcept {
  Segment* lower = first->below;
  Segment* upper = second->above;
  lower->above = second;
  second->below = lower;
  second->above = first;
  first->below = second;
  first->above = upper;
  upper->below = first;

  const Winding change = StepOverSegment(second) - StepOverSegment(first);
  std::swap(first->node, second->node);
  first->node->segment = first;
  second->node->segment = second;
  if (change == Winding{}) return;
  second->node->sum += change;
  AddToAncestors(second->node, change);
  first->node->sum -= change;
  AddToAncestors(first->node, Winding{} - change);
}

Winding StatusList::WindingBelow(const Segment* s) const noexcept {
  const StatusNode* n = s->node;
  Winding below = SumOf(n->left);
  for (; n->parent != nullptr; n = n->parent) {
    if (n->parent->right == n)
      below += StepOverSegment(n->parent->segment) + SumOf(n->parent->left);
  }
  return below;
}

void StatusList::RotateUp(StatusNode* node) noexcept {
  StatusNode* parent = node->parent;
  StatusNode* top = parent->parent;
  (top == nullptr ? root_ : top->left == parent ? top->left : top->right) = node;
  node->parent = top;
  StatusNode* moved;
  if (parent->left == node) {
    moved = node->right;
    parent->left = moved;
    node->right = parent;
  } else {
    moved = node->left;
    parent->right = moved;
    node->left = parent;
  }
  if (moved != nullptr) moved->parent = parent;
  parent->parent = node;
  Resum(parent);
  Resum(node);
}

void StatusList::AddToAncestors(StatusNode* node, Winding change) noexcept {
  for (StatusNode* n = node->parent; n != nullptr; n = n->parent) n->sum += change;
}

}  // namespace zelvan
