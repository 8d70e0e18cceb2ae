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

}  // namespace

void EventQueue::Fill(std::vector<Segment>& table) {
  table_ = &table;
  nextPlace_ = 0;
  places_.clear();
  places_.reserve(table.size());
  for (const Segment& s : table) {
    const GridPoint p = s.forward != 0 ? s.low : s.high;
    places_.push_back({static_cast<std::uint32_t>(p.gx + GRID_OFFSET),
                       static_cast<std::uint32_t>(p.gy + GRID_OFFSET),
                       static_cast<std::uint32_t>(places_.size())});
  }
  Sort(places_);
  LoadPlace();
}

// By counting, from the last digits to the first (Seward 1954): two digits y, two x.
void EventQueue::Sort(std::vector<Place>& places) {
  constexpr std::uint32_t kBits = 10;
  constexpr std::uint32_t kDigit = (1 << kBits) - 1;
  static_assert(GRID_MAX < 1 << 2 * kBits);
  if (places.size() < 512) {
    std::sort(places.begin(), places.end(),
              [](const Place& a, const Place& b) { return a.x != b.x ? a.x < b.x : a.y < b.y; });
    return;
  }
  std::vector<Place> sorted(places.size());
  const auto pass = [&](std::uint32_t Place::*axis, std::uint32_t shift) {
    std::array<std::uint32_t, kDigit + 1> starts{};
    for (const Place& p : places) ++starts[p.*axis >> shift & kDigit];
    std::uint32_t start = 0;
    for (std::uint32_t& count : starts) start += std::exchange(count, start);
    for (const Place& p : places) sorted[starts[p.*axis >> shift & kDigit]++] = p;
    places.swap(sorted);
  };
  for (const auto axis : {&Place::y, &Place::x}) {
    for (const std::uint32_t shift : {0u, kBits}) pass(axis, shift);
  }
}

// All that ends or starts at the next place: the segments by which the contours leave
// its vertices, and those by which they come.
void EventQueue::LoadPlace() {
  ends_.clear();
  nextEnd_ = 0;
  const auto add = [this](std::uint32_t segment, bool starts) {
    ends_.push_back(std::uint64_t{starts} << 32 | (2 * segment + (starts ? 0 : 1)));
  };
  const std::size_t first = nextPlace_;
  for (; nextPlace_ < places_.size(); ++nextPlace_) {
    const Place& p = places_[nextPlace_];
    if (p.x != places_[first].x || p.y != places_[first].y) break;
    const Segment& leaving = (*table_)[p.segment];
    add(p.segment, leaving.forward != 0);
    add(leaving.before, (*table_)[leaving.before].forward == 0);
  }
  std::sort(ends_.begin(), ends_.end());
  LoadEnd();
}

void EventQueue::LoadEnd() {
  if (nextEnd_ == ends_.size()) {
    if (nextPlace_ < places_.size()) return LoadPlace();
    endKey_ = kNoKey;
    return;
  }
  const Place& p = places_[nextPlace_ - 1];
  const auto seq = static_cast<std::uint32_t>(ends_[nextEnd_]);
  end_ = {seq % 2 == 0 ? EVENT_START : EVENT_END,
          seq,
          static_cast<std::int32_t>(p.x) - GRID_OFFSET,
          static_cast<std::int32_t>(p.y) - GRID_OFFSET,
          table_->data() + seq / 2,
          nullptr};
  endKey_ = Key(end_);
}

bool EventQueue::IsLater(const Pending& a, const Pending& b) noexcept {
  return a.key != b.key ? a.key > b.key : a.event.seq > b.event.seq;
}

void EventQueue::Insert(const SweepEvent& event) {
  heap_.push_back({Key(event), event});
  std::push_heap(heap_.begin(), heap_.end(), IsLater);
}

SweepEvent EventQueue::PopMin() {
  if (EndIsFirst()) {
    const SweepEvent event = end_;
    ++nextEnd_;
    LoadEnd();
    return event;
  }
  std::pop_heap(heap_.begin(), heap_.end(), IsLater);
  const SweepEvent event = heap_.back().event;
  heap_.pop_back();
  return event;
}

}  // namespace zelvan
