// Arena: records that are made one by one and given back all at once.
//
// Blocks double in size up to a limit, so that few records take little memory and
// many take few heap requests. A record never moves, and records made one behind the
// other stand side by side.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <vector>

namespace zelvan {

template <class T>
class Arena {
  static_assert(std::is_trivially_destructible_v<T>, "records are dropped without clean-up");

 public:
  /// Hands out a new record, zero-filled. Throws std::bad_alloc.
  [[nodiscard]] T* Take() {
    if (next_ == end_) AddBlock();
    *next_ = T{};
    return next_++;
  }

 private:
  static constexpr std::size_t kFirst = 16;
  static constexpr std::size_t kMost = 1024;

  void AddBlock() {
    blocks_.push_back(nullptr);
    const std::size_t size =
        std::min(kMost, kFirst << std::min<std::size_t>(blocks_.size() - 1, 16));
    blocks_.back().reset(new T[size]);
    next_ = blocks_.back().get();
    end_ = next_ + size;
  }

  std::vector<std::unique_ptr<T[]>> blocks_;
  T* next_ = nullptr;
  T* end_ = nullptr;
};

}  // namespace zelvan
