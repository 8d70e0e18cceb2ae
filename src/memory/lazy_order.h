// LazyOrder: an array that is sorted from the front as it is read, so that who ends early has
// sorted little. What is to be sorted next is parted from the rest first (Hoare 1961).
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace zelvan {

/// Reads `items` in ascending order; they must outlive it, and keep their number.
template <class Item, class IsBefore>
class LazyOrder {
 public:
  LazyOrder(std::vector<Item>& items, IsBefore isBefore) : items_(items), isBefore_(isBefore) {}

  /// Null behind the last.
  const Item* At(std::size_t i) {
    while (i >= sorted_ && sorted_ < items_.size()) SortMore();
    return i < items_.size() ? &items_[i] : nullptr;
  }

 private:
  void SortMore() {
    constexpr std::size_t first = 2048;
    constexpr std::size_t growth = 8;
    const std::size_t wanted = std::max(first, growth * sorted_);
    const std::size_t to = wanted < items_.size() / 2 ? wanted : items_.size();
    const auto begin = items_.begin() + static_cast<std::ptrdiff_t>(sorted_);
    const auto end = items_.begin() + static_cast<std::ptrdiff_t>(to);
    if (end != items_.end()) std::nth_element(begin, end, items_.end(), isBefore_);
    std::sort(begin, end, isBefore_);
    sorted_ = to;
  }

  std::vector<Item>& items_;
  IsBefore isBefore_;
  std::size_t sorted_ = 0;
};

}  // namespace zelvan
