// The list of active edges and its blocks (status.h).
#include "overlay/status.h"

#include <algorithm>
#include <utility>

namespace zelvan::overlay {

void Status::Clear() {
  nodes_.clear();
  nodes_.push_back({{}, kEnd, kEnd, kNone});
  freeSlot_ = kNone;
  blocks_.clear();
  freeBlock_ = kNone;
  order_.clear();
  size_ = 0;
}

std::size_t Status::PositionOf(Slot slot) const noexcept {
  const Block& block = blocks_[nodes_[slot].block];
  std::size_t position = 0;
  while (block.slots[position] != slot) ++position;
  return position;
}

Status::Slot Status::NewSlot() {
  if (freeSlot_ != kNone) return std::exchange(freeSlot_, nodes_[freeSlot_].above);
  nodes_.emplace_back();
  return static_cast<Slot>(nodes_.size() - 1);
}

std::uint32_t Status::NewBlock() {
  if (freeBlock_ != kNone) return std::exchange(freeBlock_, blocks_[freeBlock_].slots[0]);
  blocks_.emplace_back();
  return static_cast<std::uint32_t>(blocks_.size() - 1);
}

// Moves the upper half of a full block into a new one.
std::uint32_t Status::Split(std::uint32_t block) {
  const std::uint32_t upper = NewBlock();
  Block& from = blocks_[block];
  Block& to = blocks_[upper];
  const std::uint32_t kept = from.count / 2;
  to.count = from.count - kept;
  from.count = kept;
  std::copy_n(from.slots.begin() + kept, to.count, to.slots.begin());
  for (std::uint32_t i = 0; i < to.count; ++i) nodes_[to.slots[i]].block = upper;
  order_.insert(std::find(order_.begin(), order_.end(), block) + 1, upper);
  return upper;
}

Status::Slot Status::InsertAbove(Slot slot) {
  const Slot added = NewSlot();
  std::uint32_t block;
  std::size_t position = 0;
  if (slot != kEnd) {
    block = nodes_[slot].block;
    position = PositionOf(slot) + 1;
  } else if (!order_.empty()) {
    block = order_.front();
  } else {
    block = NewBlock();
    order_.push_back(block);
  }
  if (blocks_[block].count == kBlockSize) {
    const std::uint32_t upper = Split(block);
    if (position > blocks_[block].count) {
      position -= blocks_[block].count;
      block = upper;
    }
  }
  Block& into = blocks_[block];
  std::copy_backward(into.slots.begin() + static_cast<std::ptrdiff_t>(position),
                     into.slots.begin() + into.count, into.slots.begin() + into.count + 1);
  into.slots[position] = added;
  ++into.count;
  ++size_;
  Node& node = nodes_[added];
  node.block = block;
  node.below = slot;
  node.above = nodes_[slot].above;
  nodes_[node.above].below = added;
  nodes_[slot].above = added;
  return added;
}

void Status::Erase(Slot slot) noexcept {
  Node& node = nodes_[slot];
  nodes_[node.below].above = node.above;
  nodes_[node.above].below = node.below;
  Block& block = blocks_[node.block];
  const std::size_t position = PositionOf(slot);
  std::copy(block.slots.begin() + static_cast<std::ptrdiff_t>(position) + 1,
            block.slots.begin() + block.count,
            block.slots.begin() + static_cast<std::ptrdiff_t>(position));
  if (--block.count == 0) {
    order_.erase(std::find(order_.begin(), order_.end(), node.block));
    block.slots[0] = freeBlock_;
    freeBlock_ = node.block;
  }
  node.above = freeSlot_;
  freeSlot_ = slot;
  --size_;
}

}  // namespace zelvan::overlay
