// BlockPool: small fixed-size records from blocks of 16 slots, so that an engine
// run costs one heap request per 16 records and gives everything back at once.
//
// What holds here: slots never move, so a reference stays valid until its slot is
// given back or the pool is released. A slot is a record followed by one link
// word: all ones while the record is live, else the next free slot. A fresh block
// hands out its slots from the last one down; a slot given back is the next taken.
// Iteration visits live slots only, newest block first, slots in ascending order.
#pragma once

#include <zelvan/error.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <type_traits>

namespace zelvan {

template <class T>
class BlockPool {
  static_assert(std::is_trivially_destructible_v<T>, "records are dropped without clean-up");
  static_assert(std::is_standard_layout_v<T>, "a record must share the address of its slot");

 public:
  static constexpr std::size_t kSlotsPerBlock = 16;

  BlockPool() = default;
  BlockPool(const BlockPool&) = delete;
  BlockPool& operator=(const BlockPool&) = delete;
  ~BlockPool() { Release(); }

  /// Hands out a live record, zero-filled. Raises ERR::NOMEM if a new block cannot be had.
  T* Take() {
    if (freeList_ == nullptr) AddBlock();
    Slot* slot = freeList_;
    freeList_ = slot->Next();
    slot->link = kLive;
    slot->record = T{};
    ++count_;
    return &slot->record;
  }

  /// Gives one live record back.
  void Give(T* record) noexcept {
    PushFree(reinterpret_cast<Slot*>(record));
    --count_;
  }

  /// Frees every block; the pool is empty and usable again.
  void Release() noexcept {
    while (blocks_ != nullptr) {
      Block* older = blocks_->older;
      delete blocks_;
      blocks_ = older;
    }
    freeList_ = nullptr;
    count_ = 0;
  }

  /// Number of live records.
  [[nodiscard]] std::uint32_t Count() const noexcept { return count_; }

  /// Calls visit(record) for each live record until it returns true.
  /// @return the record at which it did, or null
  template <class Visit>
  T* Find(Visit visit) {
    for (Block* block = blocks_; block != nullptr; block = block->older) {
      for (Slot& slot : block->slots) {
        if (slot.link == kLive && visit(slot.record)) return &slot.record;
      }
    }
    return nullptr;
  }

 private:
  static constexpr std::uintptr_t kLive = ~std::uintptr_t{0};

  struct Slot {
    T record;
    std::uintptr_t link;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the link of a live record is no address
    [[nodiscard]] Slot* Next() const noexcept { return reinterpret_cast<Slot*>(link); }
  };

  struct Block {
    Block* older;
    Slot slots[kSlotsPerBlock];
  };

  void PushFree(Slot* slot) noexcept {
    slot->link = reinterpret_cast<std::uintptr_t>(freeList_);
    freeList_ = slot;
  }

  void AddBlock() {
    Block* block = new (std::nothrow) Block;
    if (block == nullptr) ERR::Raise(ERR::NOMEM);
    block->older = blocks_;
    blocks_ = block;
    for (Slot& slot : block->slots) PushFree(&slot);
  }

  Block* blocks_ = nullptr;
  Slot* freeList_ = nullptr;
  std::uint32_t count_ = 0;
};

}  // namespace zelvan
