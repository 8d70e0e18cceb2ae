// StatusList: the active segments of a sweep from bottom to top.
//
// A doubly linked list, with a search tree over it whose in-order walk is the
// list (a treap: Seidel and Aragon 1996). The tree finds the place of a new
// segment, and the winding numbers below a given one, in expected logarithmic
// time. A search asks a predicate that holds for all
// segments up to some place and for none above it; what the tree then finds is
// what a walk from the bottom would find.
#pragma once

#include <cstddef>
#include <cstdint>

#include "boolean/labels.h"
#include "boolean/segment.h"
#include "boolean/winding.h"
#include "memory/block_pool.h"

namespace zelvan {

struct StatusNode {
  StatusNode* left;
  StatusNode* right;
  StatusNode* parent;
  Segment* segment;
  std::uint32_t priority;  ///< no child has a larger one
  Winding sum;             ///< change of the winding numbers across the subtree's segments
};

class StatusList {
 public:
  StatusList() noexcept { sentinel_.above = sentinel_.below = &sentinel_; }
  StatusList(const StatusList&) = delete;
  StatusList& operator=(const StatusList&) = delete;

  [[nodiscard]] bool IsEnd(const Segment* s) const noexcept { return s == &sentinel_; }
  [[nodiscard]] Segment* Bottom() noexcept { return sentinel_.above; }
  [[nodiscard]] std::size_t Size() const noexcept { return pool_.Count(); }

  /// Segments looked at by all searches so far.
  [[nodiscard]] std::uint64_t Steps() const noexcept { return steps_; }

  /// The first segment from the bottom for which `holds` is false; the end of the
  /// list when there is none.
  template <class Predicate>
  [[nodiscard]] Segment* FirstNot(Predicate holds) noexcept {
    Segment* found = &sentinel_;
    std::uint64_t steps = 0;
    for (StatusNode* n = root_; n != nullptr; ++steps) {
      if (holds(n->segment)) {
        n = n->right;
      } else {
        found = n->segment;
        n = n->left;
      }
    }
    steps_ += steps;
    return found;
  }

  /// Inserts s directly below t, which may be the end. Raises ERR::NOMEM.
  void InsertBelow(Segment* s, Segment* t);

  void Remove(Segment* s) noexcept;

  /// Puts t, which goes on from the upper end of s in the same contour, in the place
  /// of s.
  void Replace(Segment* s, Segment* t) noexcept;

  /// Swaps two neighbours, `first` directly below `second`.
  void Swap(Segment* first, Segment* second) noexcept;

  /// The winding numbers right below s.
  [[nodiscard]] Winding WindingBelow(const Segment* s) const noexcept;

  /// The operands that have an odd number of segments below s.
  [[nodiscard]] OperandSet ParityBelow(const Segment* s) const noexcept {
    return OperandsAround(WindingBelow(s), WindingRule::kOdd);
  }

 private:
  void Attach(StatusNode* node, Segment* s, Segment* t) noexcept;
  void RotateUp(StatusNode* node) noexcept;
  void AddToAncestors(StatusNode* node, Winding change) noexcept;

  Segment sentinel_{};
  StatusNode* root_ = nullptr;
  BlockPool<StatusNode> pool_;
  std::uint32_t taken_ = 0;  // numbers the nodes for their priorities
  std::uint64_t steps_ = 0;
};

}  // namespace zelvan
