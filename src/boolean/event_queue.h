// The events of the sweep and the queue that hands them out in their order.
//
// The order is strict and total: column by column; in a column the crossings left
// of the column's line, then everything on it, then the crossings right of it; in
// each by row, then by the side of the row; at one place ends before crossings
// before starts; and at last by age. So crossings that round to one grid point
// come in the order of their true places relative to that point.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "polygon/grid.h"

namespace zelvan {

struct Segment;

inline constexpr std::uint32_t EVENT_END = 0;
inline constexpr std::uint32_t EVENT_CROSS = 1;
inline constexpr std::uint32_t EVENT_START = 2;

struct SweepEvent {
  std::uint32_t flags;  ///< bits 0-1 kind, bits 2-3 xFrac, bits 4-5 yFrac
  std::uint32_t seq;    ///< creation number
  std::int32_t x;       ///< grid place, rounded for a crossing
  std::int32_t y;
  Segment* first;   ///< the segment that starts or ends; of a crossing the lower one
  Segment* second;  ///< of a crossing the upper one, else null

  [[nodiscard]] std::uint32_t Kind() const noexcept { return flags & 3; }
};

/// The flags of a crossing whose true place lies on these sides (-1, 0, +1) of
/// the rounded one.
[[nodiscard]] constexpr std::uint32_t CrossFlags(std::int32_t xSign, std::int32_t ySign) noexcept {
  const auto bits = [](std::int32_t sign) { return static_cast<std::uint32_t>(sign) & 3; };
  return EVENT_CROSS | bits(xSign) << 2 | bits(ySign) << 4;
}

/// The starts and ends of segments, sorted once, and a binary heap of the events that
/// come later. Throws std::bad_alloc.
class EventQueue {
 public:
  /// The start and the end of every segment of a table, which must stay in place; they
  /// are numbered in table order from 0. Contours are closed in the table. The queue
  /// must be empty.
  void Fill(std::vector<Segment>& table);

  void Insert(const SweepEvent& event);

  /// The smallest event; the queue must not be empty.
  [[nodiscard]] const SweepEvent& Min() const noexcept {
    return EndpointIsFirst() ? endpoint_ : heap_.front().event;
  }

  /// Removes the smallest event and returns it.
  SweepEvent PopMin();

  [[nodiscard]] bool Empty() const noexcept { return endpointKey_ == kNoKey && heap_.empty(); }

 private:
  struct Pending {
    std::uint64_t key;
    SweepEvent event;
  };

  [[nodiscard]] bool EndpointIsFirst() const noexcept {
    return heap_.empty() || endpointKey_ < heap_.front().key;
  }
  static bool IsLater(const Pending& a, const Pending& b) noexcept;
  void LoadPlace();
  void LoadEndpoint();

  static constexpr std::uint64_t kNoKey = std::numeric_limits<std::uint64_t>::max();

  std::vector<Segment>* table_ = nullptr;
  // Vertices by their places, each named by the segment by which its contour leaves it.
  std::vector<std::uint32_t> vertices_;
  std::size_t nextVertex_ = 0;  // vertices_[nextVertex_...] is still pending
  // The ends and starts at the place before it: numbers, and above them the kind.
  GridPoint place_{};
  std::vector<std::uint64_t> endpoints_;
  std::size_t nextEndpoint_ = 0;
  SweepEvent endpoint_{};               // the event of endpoints_[nextEndpoint_]
  std::uint64_t endpointKey_ = kNoKey;  // and its key among all events
  std::vector<Pending> heap_;
};

}  // namespace zelvan
