// The event order and queue (event_queue.h).
#include "boolean/event_queue.h"

#include <algorithm>
#include <array>
#include <utility>

#include "boolean/segment.h"
#include "polygon/grid.h"

namespace zelvan {

namespace {

// Sign of a two-bit field, 0 for events that are no crossings, shifted to 0..2.
std::uint64_t Side(const SweepEvent& e, std::uint32_t shift) noexcept {
  if (e.Kind() != EVENT_CROSS) return 1;
  const std::uint32_t bits = (e.flags >> shift) & 3;
  return bits == 3 ? 0 : bits + 1;
}

// Everything but the age in one number: 20 bits x, 2 its side, 20 bits y, 2 its
// side, 2 the kind.
std::uint64_t Key(const SweepEvent& e) noexcept {
  const auto x = static_cast<std::uint64_t>(e.x + GRID_OFFSET);
  const auto y = static_cast<std::uint64_t>(e.y + GRID_OFFSET);
  return x << 26 | Side(e, 2) << 24 | y << 4 | Side(e, 4) << 2 | e.Kind();
}
static_assert(GRID_MAX < 1 << 20, "a row takes bits 4 to 23 of the key");

// Of starts and ends alone: 20 bits x, 20 bits y, 1 the kind.
std::uint64_t EndKey(GridPoint p, std::uint32_t kind) noexcept {
  const auto x = static_cast<std::uint64_t>(p.gx + GRID_OFFSET);
  const auto y = static_cast<std::uint64_t>(p.gy + GRID_OFFSET);
  return x << 21 | y << 1 | kind / EVENT_START;
}

}  // namespace

void EventQueue::Fill(std::vector<Segment>& table) {
  table_ = &table;
  next_ = 0;
  order_.clear();
  order_.reserve(2 * table.size());
  std::uint32_t seq = 0;
  for (const Segment& s : table) {
    order_.push_back({EndKey(s.lower->grid, EVENT_START), seq++});
    order_.push_back({EndKey(s.upper->grid, EVENT_END), seq++});
  }
  SortByKey(order_);
  LoadEnd();
}

// By counting, from the last digits to the first (Seward 1954); equal keys keep their
// order, that of their numbers.
void EventQueue::SortByKey(std::vector<End>& ends) {
  constexpr std::size_t kDigits = 4;
  constexpr unsigned kBits = 11;  // of a digit; 44 in all
  constexpr std::uint64_t kMask = (1u << kBits) - 1;
  if (ends.size() < 1024) {
    std::sort(ends.begin(), ends.end(), [](const End& a, const End& b) {
      return a.key != b.key ? a.key < b.key : a.seq < b.seq;
    });
    return;
  }
  std::vector<std::array<std::uint32_t, kMask + 1>> starts(kDigits);
  for (const End& e : ends) {
    for (std::size_t d = 0; d < kDigits; ++d) ++starts[d][e.key >> d * kBits & kMask];
  }
  std::vector<End> sorted(ends.size());
  for (std::size_t d = 0; d < kDigits; ++d) {
    std::uint32_t start = 0;
    for (std::uint32_t& count : starts[d]) start += std::exchange(count, start);
    for (const End& e : ends) sorted[starts[d][e.key >> d * kBits & kMask]++] = e;
    ends.swap(sorted);
  }
}

void EventQueue::LoadEnd() noexcept {
  if (next_ == order_.size()) {
    endKey_ = std::numeric_limits<std::uint64_t>::max();
    return;
  }
  const auto [key, seq] = order_[next_];
  const auto x = static_cast<std::int32_t>(key >> 21) - GRID_OFFSET;
  const auto y = static_cast<std::int32_t>(key >> 1 & GRID_MAX) - GRID_OFFSET;
  end_ = {seq % 2 == 0 ? EVENT_START : EVENT_END, seq, x, y, table_->data() + seq / 2, nullptr};
  endKey_ = Key(end_);
}

bool EventQueue::IsLater(const Pending& a, const Pending& b) noexcept {
  return a.key != b.key ? a.key > b.key : a.event.seq > b.event.seq;
}

void EventQueue::Insert(const SweepEvent& event) {
  heap_.push_back({Key(event), event});
  std::push_heap(heap_.begin(), heap_.end(), IsLater);
}

SweepEvent EventQueue::PopMin() noexcept {
  if (EndIsFirst()) {
    const SweepEvent event = end_;
    ++next_;
    LoadEnd();
    return event;
  }
  std::pop_heap(heap_.begin(), heap_.end(), IsLater);
  const SweepEvent event = heap_.back().event;
  heap_.pop_back();
  return event;
}

}  // namespace zelvan
