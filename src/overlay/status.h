// The active edges of a sweep from bottom to top.
//
// A doubly linked list of slots. A slot keeps its place while its content changes: where an
// edge ends and another one goes on, and where two neighbours cross, contents move and slots do
// not. Slots stand in blocks of a few dozen, each an array from bottom to top, and the blocks
// in an array of their own: a search halves first the blocks, then a block.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "overlay/edges.h"

namespace zelvan::overlay {

/// An edge as far as it is still to be swept.
struct ActiveEdge {
  GridPoint low;          ///< the last place that the edge came through
  GridPoint high;         ///< where it ends
  Windings below;         ///< the winding numbers right below
  Windings step;          ///< what is added above
  std::uint32_t line;     ///< the edge's number
  std::uint32_t members;  ///< of a bundle, else kNone
  std::uint32_t piece;    ///< of the boundary, or kNone
  std::uint32_t face;     ///< of the region right above, where that belongs to the region
};

class Status {
 public:
  using Slot = std::uint32_t;

  /// The end of the list: above its top and below its bottom.
  static constexpr Slot kEnd = 0;

  Status() { Clear(); }

  void Clear();

  [[nodiscard]] ActiveEdge& operator[](Slot slot) noexcept { return nodes_[slot].edge; }
  [[nodiscard]] const ActiveEdge& operator[](Slot slot) const noexcept { return nodes_[slot].edge; }
  [[nodiscard]] Slot Above(Slot slot) const noexcept { return nodes_[slot].above; }
  [[nodiscard]] Slot Below(Slot slot) const noexcept { return nodes_[slot].below; }
  [[nodiscard]] std::size_t Size() const noexcept { return size_; }
  [[nodiscard]] std::size_t Bytes() const noexcept {
    return BytesOf(nodes_) + BytesOf(blocks_) + BytesOf(order_);
  }

  /// The lowest slot for whose edge `isBelow` is false, or kEnd; the predicate must hold up to
  /// some slot and for none above it.
  template <class Predicate>
  [[nodiscard]] Slot FirstNot(Predicate isBelow) const {
    std::size_t begin = 0;  // blocks before it begin with edges below
    std::size_t end = order_.size();
    while (begin < end) {
      const std::size_t middle = (begin + end) / 2;
      if (isBelow(nodes_[blocks_[order_[middle]].slots[0]].edge)) {
        begin = middle + 1;
      } else {
        end = middle;
      }
    }
    if (begin == 0) return nodes_[kEnd].above;
    const Block& block = blocks_[order_[begin - 1]];
    std::size_t first = 1;
    std::size_t last = block.count;
    while (first < last) {
      const std::size_t middle = (first + last) / 2;
      if (isBelow(nodes_[block.slots[middle]].edge)) {
        first = middle + 1;
      } else {
        last = middle;
      }
    }
    return nodes_[block.slots[first - 1]].above;
  }

  /// A new slot, its content undefined, directly above another one or at the bottom (kEnd).
  /// Throws std::bad_alloc.
  Slot InsertAbove(Slot slot);

  void Erase(Slot slot) noexcept;

 private:
  static constexpr std::size_t kBlockSize = 31;

  struct Node {
    ActiveEdge edge;
    Slot above;
    Slot below;
    std::uint32_t block;
  };
  struct Block {
    std::uint32_t count = 0;
    std::array<Slot, kBlockSize> slots;
  };

  [[nodiscard]] std::size_t PositionOf(Slot slot) const noexcept;
  [[nodiscard]] Slot NewSlot();
  [[nodiscard]] std::uint32_t NewBlock();
  [[nodiscard]] std::uint32_t Split(std::uint32_t block);

  std::vector<Node> nodes_;
  Slot freeSlot_ = kNone;  // the next one by `above`
  std::vector<Block> blocks_;
  std::uint32_t freeBlock_ = kNone;   // the next one by `slots[0]`
  std::vector<std::uint32_t> order_;  // of the blocks, from bottom to top
  std::size_t size_ = 0;
};

}  // namespace zelvan::overlay
