// StatusList: the active segments of a sweep from bottom to top.
//
// Segments are linked to their neighbours; a list with a search tree (memory/ordered_list.h)
// finds the place of a new segment, and the winding numbers below a given one, in expected
// logarithmic time. A search asks a predicate that holds for all segments up to some place
// and for none above it; it finds what a walk from the bottom would find.
#pragma once

#include <cstddef>
#include <cstdint>

#include "boolean/labels.h"
#include "boolean/segment.h"
#include "boolean/winding.h"
#include "memory/ordered_list.h"

namespace zelvan {

class StatusList {
 public:
  StatusList() noexcept { sentinel_.above = sentinel_.below = &sentinel_; }
  StatusList(const StatusList&) = delete;
  StatusList& operator=(const StatusList&) = delete;

  [[nodiscard]] bool IsEnd(const Segment* s) const noexcept { return s == &sentinel_; }
  [[nodiscard]] Segment* Bottom() noexcept { return sentinel_.above; }
  [[nodiscard]] std::size_t Size() const noexcept { return size_; }

  /// Segments looked at by all searches so far.
  [[nodiscard]] std::uint64_t Steps() const noexcept { return list_.steps(); }

  /// The first segment from the bottom for which `holds` is false; the end of the
  /// list when there is none.
  template <class Predicate>
  [[nodiscard]] Segment* FirstNot(Predicate holds) noexcept {
    const List::Place place = list_.Find([&](const Segment* s) { return holds(s) ? 1 : -1; });
    return place.after == List::kNone ? &sentinel_ : list_[place.after];
  }

  /// Inserts s directly below t, which may be the end. Throws std::bad_alloc.
  void InsertBelow(Segment* s, Segment* t);

  void Remove(Segment* s) noexcept;

  /// Puts t, which goes on from the upper end of s in the same contour, in the place
  /// of s.
  void Replace(Segment* s, Segment* t) noexcept;

  /// Swaps two neighbours, `first` directly below `second`.
  void Swap(Segment* first, Segment* second) noexcept;

  /// The winding numbers right below s.
  [[nodiscard]] Winding WindingBelow(const Segment* s) const noexcept {
    return list_.SumBefore(s->node);
  }

  /// The operands that have an odd number of segments below s.
  [[nodiscard]] OperandSet ParityBelow(const Segment* s) const noexcept {
    return OperandsAround(WindingBelow(s), WindingRule::kOdd);
  }

 private:
  using List = OrderedList<Segment*, Winding>;

  [[nodiscard]] std::uint32_t NodeOf(const Segment* s) const noexcept {
    return IsEnd(s) ? List::kNone : s->node;
  }

  Segment sentinel_{};
  List list_;
  std::size_t size_ = 0;
};

}  // namespace zelvan
