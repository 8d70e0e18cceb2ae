// OrderedList: items in an order that the caller knows, a doubly linked list with a treap
// over it (Seidel and Aragon 1996) to find places in. Inserting and removing take expected
// logarithmic time. Priorities come from the items' numbers, so that every run makes the
// same tree. Items may carry a weight, of which the list knows the sum before each item.
//
// What holds here: items are named by numbers, which stay valid until the item is removed;
// references to items end with the next insertion.
#pragma once

#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

namespace zelvan {

/// The weight of items without one.
struct NoWeight {
  friend constexpr NoWeight operator+(NoWeight, NoWeight) noexcept { return {}; }
  friend constexpr NoWeight operator-(NoWeight, NoWeight) noexcept { return {}; }
};

template <class Item, class Weight = NoWeight>
class OrderedList {
 public:
  static constexpr std::uint32_t kNone = ~std::uint32_t{0};

  /// What a search found: an item, or a place between two.
  struct Place {
    std::uint32_t at = kNone;      ///< the item at which the search stopped, or kNone
    std::uint32_t before = kNone;  ///< else the neighbours of the place; kNone for none
    std::uint32_t after = kNone;
  };

  [[nodiscard]] Item& operator[](std::uint32_t i) noexcept { return nodes_[i].item; }
  [[nodiscard]] const Item& operator[](std::uint32_t i) const noexcept { return nodes_[i].item; }

  /// The neighbours of an item, or kNone.
  [[nodiscard]] std::uint32_t Before(std::uint32_t i) const noexcept { return nodes_[i].before; }
  [[nodiscard]] std::uint32_t After(std::uint32_t i) const noexcept { return nodes_[i].after; }

  /// Searches with sideOf(item): negative for a place before the item, positive behind it,
  /// 0 for the item itself.
  /// @param from  an item that may be near the place, or kNone
  template <class SideOf>
  [[nodiscard]] Place Find(SideOf sideOf, std::uint32_t from = kNone) {
    Place place;
    return from != kNone && Walk(sideOf, from, place) ? place : Descend(sideOf);
  }

  /// Puts an item between two neighbours, either of which may be kNone. @return its number.
  /// Throws std::bad_alloc, nothing changed.
  std::uint32_t Insert(const Item& item, std::uint32_t before, std::uint32_t after,
                       Weight weight = {});
  void Remove(std::uint32_t i) noexcept;

  /// The weights of all items before an item, summed.
  [[nodiscard]] Weight SumBefore(std::uint32_t i) const noexcept;

  /// Exchanges two items with their weights; that of k is `more` than that of i.
  void Swap(std::uint32_t i, std::uint32_t k, Weight more) noexcept;

  /// Takes out everything.
  void Clear() noexcept {
    nodes_.clear();
    root_ = free_ = kNone;
  }

  /// Items looked at by all searches so far.
  [[nodiscard]] std::uint64_t steps() const noexcept { return steps_; }

 private:
  struct Node {
    Item item;
    std::uint32_t before;
    std::uint32_t after;
    std::uint32_t parent;
    std::uint32_t child[2];
    [[no_unique_address]] Weight sum;  // of the subtree
  };

  // Fibonacci hashing (Knuth 1973), the high half folded in.
  static std::uint32_t PriorityOf(std::uint32_t i) noexcept {
    const std::uint32_t h = (i + 1) * 0x9E3779B9u;
    return (h ^ (h >> 15)) * 0x85EBCA6Bu;
  }

  template <class SideOf>
  bool Walk(SideOf sideOf, std::uint32_t i, Place& place);
  template <class SideOf>
  Place Descend(SideOf sideOf);
  std::uint32_t Take(const Item& item);
  [[nodiscard]] Weight SumOf(std::uint32_t i) const noexcept {
    return i == kNone ? Weight{} : nodes_[i].sum;
  }
  [[nodiscard]] Weight WeightOf(std::uint32_t i) const noexcept {
    return nodes_[i].sum - SumOf(nodes_[i].child[0]) - SumOf(nodes_[i].child[1]);
  }
  void AddFrom(std::uint32_t i, Weight change) noexcept;
  void Attach(std::uint32_t i, std::uint32_t parent, int side) noexcept;
  void RotateUp(std::uint32_t i) noexcept;
  void ReplaceChild(std::uint32_t parent, std::uint32_t old, std::uint32_t now) noexcept;

  std::vector<Node> nodes_;
  std::uint32_t root_ = kNone;
  std::uint32_t free_ = kNone;  // removed nodes, linked by `after`
  std::uint64_t steps_ = 0;
};

// Along the list, a few steps. @return false when the place is farther away
template <class Item, class Weight>
template <class SideOf>
bool OrderedList<Item, Weight>::Walk(SideOf sideOf, std::uint32_t i, Place& place) {
  constexpr int kFewSteps = 6;
  int way = 0;
  for (int k = 0; k < kFewSteps; ++k) {
    ++steps_;
    const Node& node = nodes_[i];
    const int side = sideOf(node.item);
    if (side == 0) {
      place.at = i;
      return true;
    }
    const std::uint32_t to = side < 0 ? node.before : node.after;
    if (to == kNone || side == -way) {
      place.before = side < 0 ? node.before : i;
      place.after = side < 0 ? i : node.after;
      return true;
    }
    way = side;
    i = to;
  }
  return false;
}

template <class Item, class Weight>
template <class SideOf>
typename OrderedList<Item, Weight>::Place OrderedList<Item, Weight>::Descend(SideOf sideOf) {
  Place place;
  for (std::uint32_t i = root_; i != kNone;) {
    ++steps_;
    const int side = sideOf(nodes_[i].item);
    if (side == 0) {
      place.at = i;
      break;
    }
    (side < 0 ? place.after : place.before) = i;
    i = nodes_[i].child[side < 0 ? 0 : 1];
  }
  return place;
}

template <class Item, class Weight>
std::uint32_t OrderedList<Item, Weight>::Take(const Item& item) {
  if (free_ == kNone) {
    if (nodes_.empty()) nodes_.reserve(16);
    nodes_.push_back({item, kNone, kNone, kNone, {kNone, kNone}, {}});
    return static_cast<std::uint32_t>(nodes_.size() - 1);
  }
  const std::uint32_t i = free_;
  free_ = nodes_[i].after;
  nodes_[i].item = item;
  return i;
}

// Of two neighbours either the first has no right child or the second no left child.
template <class Item, class Weight>
std::uint32_t OrderedList<Item, Weight>::Insert(const Item& item, std::uint32_t before,
                                                std::uint32_t after, Weight weight) {
  const std::uint32_t i = Take(item);
  nodes_[i].sum = weight;
  nodes_[i].before = before;
  nodes_[i].after = after;
  if (before != kNone) nodes_[before].after = i;
  if (after != kNone) nodes_[after].before = i;
  if (before != kNone && nodes_[before].child[1] == kNone) {
    Attach(i, before, 1);
  } else {
    Attach(i, after, 0);
  }
  return i;
}

template <class Item, class Weight>
void OrderedList<Item, Weight>::Attach(std::uint32_t i, std::uint32_t parent, int side) noexcept {
  Node& node = nodes_[i];
  node.parent = parent;
  node.child[0] = node.child[1] = kNone;
  if (parent == kNone) {
    root_ = i;
    return;
  }
  nodes_[parent].child[side] = i;
  AddFrom(parent, node.sum);
  const std::uint32_t priority = PriorityOf(i);
  while (nodes_[i].parent != kNone && PriorityOf(nodes_[i].parent) < priority) RotateUp(i);
}

//        p            i
//       / \          / \        and the mirror
//      i   c   ->   a   p
//     / \              / \ .
//    a   b            b   c
template <class Item, class Weight>
void OrderedList<Item, Weight>::RotateUp(std::uint32_t i) noexcept {
  Node& node = nodes_[i];
  const std::uint32_t p = node.parent;
  Node& parent = nodes_[p];
  const int side = parent.child[0] == i ? 0 : 1;
  const std::uint32_t inner = node.child[1 - side];
  parent.child[side] = inner;
  if (inner != kNone) nodes_[inner].parent = p;
  ReplaceChild(parent.parent, p, i);
  node.parent = parent.parent;
  node.child[1 - side] = p;
  parent.parent = i;
  const Weight all = parent.sum;
  parent.sum = all - node.sum + SumOf(inner);
  node.sum = all;
}

template <class Item, class Weight>
void OrderedList<Item, Weight>::ReplaceChild(std::uint32_t parent, std::uint32_t old,
                                             std::uint32_t now) noexcept {
  if (parent == kNone) {
    root_ = now;
  } else {
    std::uint32_t* child = nodes_[parent].child;
    child[child[0] == old ? 0 : 1] = now;
  }
}

template <class Item, class Weight>
void OrderedList<Item, Weight>::Remove(std::uint32_t i) noexcept {
  Node& node = nodes_[i];
  while (node.child[0] != kNone && node.child[1] != kNone) {
    const bool left = PriorityOf(node.child[0]) > PriorityOf(node.child[1]);
    RotateUp(node.child[left ? 0 : 1]);
  }
  AddFrom(node.parent, Weight{} - WeightOf(i));
  const std::uint32_t only = node.child[node.child[0] != kNone ? 0 : 1];
  ReplaceChild(node.parent, i, only);
  if (only != kNone) nodes_[only].parent = node.parent;
  if (node.before != kNone) nodes_[node.before].after = node.after;
  if (node.after != kNone) nodes_[node.after].before = node.before;
  node.after = free_;
  free_ = i;
}

template <class Item, class Weight>
void OrderedList<Item, Weight>::AddFrom(std::uint32_t i, Weight change) noexcept {
  if constexpr (std::is_empty_v<Weight>) return;
  for (; i != kNone; i = nodes_[i].parent) nodes_[i].sum = nodes_[i].sum + change;
}

template <class Item, class Weight>
Weight OrderedList<Item, Weight>::SumBefore(std::uint32_t i) const noexcept {
  Weight sum = SumOf(nodes_[i].child[0]);
  for (std::uint32_t p = nodes_[i].parent; p != kNone; i = p, p = nodes_[p].parent) {
    if (nodes_[p].child[1] == i) sum = sum + (nodes_[p].sum - nodes_[i].sum);
  }
  return sum;
}

template <class Item, class Weight>
void OrderedList<Item, Weight>::Swap(std::uint32_t i, std::uint32_t k, Weight more) noexcept {
  std::swap(nodes_[i].item, nodes_[k].item);
  if (more == Weight{}) return;
  AddFrom(i, more);
  AddFrom(k, Weight{} - more);
}

}  // namespace zelvan
