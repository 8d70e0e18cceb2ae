// What lies ahead of a sweep besides vertices: crossings, and bundles that come back.
//
// Events wait in a heap by their column (the abscissa, rounded), its side, row and side of the
// row; so the crossings left of a column's line come before the vertices on it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "overlay/edges.h"
#include "overlay/exact.h"

namespace zelvan::overlay {

struct Event {
  std::uint64_t column;  // and its side
  std::uint64_t row;     // and its side
  std::uint32_t first;   // the lower line of a crossing, or the bundle that comes back
  std::uint32_t second;  // the upper line, or one of the kinds below

  static constexpr std::uint32_t kReturns = kNone;   // a bundle that was gone
  static constexpr std::uint32_t kStop = kNone - 1;  // a crossing on the grid

  /// The pixel in which it lies.
  [[nodiscard]] GridPoint Pixel() const noexcept { return {ValueOf(column), ValueOf(row)}; }
  [[nodiscard]] bool IsAt(GridPoint p) const noexcept {
    return column == KeyOf(p.gx, 0) && row == KeyOf(p.gy, 0);
  }
  [[nodiscard]] bool IsBefore(GridPoint p) const noexcept {
    const std::uint64_t key = KeyOf(p.gx, 0);
    return column != key ? column < key : row < KeyOf(p.gy, 0);
  }

  // A coordinate with its side in 34 bits.
  static std::uint64_t KeyOf(std::int32_t value, std::int32_t side) noexcept {
    const auto v = static_cast<std::uint64_t>(value + budget::kCoordinate);
    return v << 2 | static_cast<std::uint64_t>(side + 1);
  }
  static std::int32_t ValueOf(std::uint64_t key) noexcept {
    return static_cast<std::int32_t>(static_cast<std::int64_t>(key >> 2) - budget::kCoordinate);
  }
};

class EventQueue {
 public:
  [[nodiscard]] bool IsEmpty() const noexcept { return heap_.empty(); }
  [[nodiscard]] const Event& Next() const noexcept { return heap_.front(); }
  [[nodiscard]] bool IsAt(GridPoint p) const noexcept {
    return !heap_.empty() && heap_.front().IsAt(p);
  }

  /// Throws std::bad_alloc.
  void Push(const Crossing& at, std::uint32_t first, std::uint32_t second) {
    heap_.push_back(
        {Event::KeyOf(at.pixel.gx, at.sideX), Event::KeyOf(at.pixel.gy, at.sideY), first, second});
    std::push_heap(heap_.begin(), heap_.end(), IsLater);
  }

  Event Pop() noexcept {
    std::pop_heap(heap_.begin(), heap_.end(), IsLater);
    const Event event = heap_.back();
    heap_.pop_back();
    return event;
  }

  void Clear() noexcept { heap_.clear(); }
  [[nodiscard]] std::size_t Bytes() const noexcept { return BytesOf(heap_); }

 private:
  static bool IsLater(const Event& a, const Event& b) noexcept {
    return a.column != b.column ? a.column > b.column : a.row > b.row;
  }

  std::vector<Event> heap_;
};

}  // namespace zelvan::overlay
