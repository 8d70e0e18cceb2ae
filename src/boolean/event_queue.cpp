// The event order and queue (event_queue.h).
#include "boolean/event_queue.h"

#include <algorithm>

#include "boolean/segment.h"
#include "polygon/key_sort.h"

namespace zelvan {

namespace {

// Sign of a two-bit field, 0 for events that are no crossings, shifted to 0..2.
std::uint64_t FractionBits(const SweepEvent& e, std::uint32_t shift) noexcept {
  if (e.Kind() != EVENT_CROSS) return 1;
  const std::uint32_t bits = (e.flags >> shift) & 3;
  return bits == 3 ? 0 : bits + 1;
}

// Everything but the age in one number: 20 bits x, 2 its side, 20 bits y, 2 its
// side, 2 the kind.
std::uint64_t Key(const SweepEvent& e) noexcept {
  const auto x = static_cast<std::uint64_t>(std::int64_t{e.x} + GRID_OFFSET);
  const auto y = static_cast<std::uint64_t>(std::int64_t{e.y} + GRID_OFFSET);
  return x << 26 | FractionBits(e, 2) << 24 | y << 4 | FractionBits(e, 4) << 2 | e.Kind();
}
static_assert(GRID_MAX < 1 << 20, "a row takes bits 4 to 23 of the key");

// Where the contour enters a segment.
GridPoint StartOf(const Segment& s) noexcept {
  return s.forward != 0 ? s.low : s.high;
}

}  // namespace

void EventQueue::Fill(std::vector<Segment>& table) {
  table_ = &table;
  nextVertex_ = 0;
  const auto placeKey = [&](std::uint32_t i) {
    const GridPoint p = StartOf(table[i]);
    return static_cast<std::uint64_t>(p.gx + GRID_OFFSET) << kKeyBits / 2 |
           static_cast<std::uint64_t>(p.gy + GRID_OFFSET);
  };
  vertices_ = SortByKey(static_cast<std::uint32_t>(table.size()), placeKey).positions;
  LoadPlace();
}

// All that ends or starts at the next place: the segments by which the contours leave
// its vertices, and those by which they come.
void EventQueue::LoadPlace() {
  endpoints_.clear();
  nextEndpoint_ = 0;
  const auto add = [this](std::uint32_t segment, bool starts) {
    endpoints_.push_back(std::uint64_t{starts} << 32 | (2 * segment + (starts ? 0 : 1)));
  };
  for (; nextVertex_ < vertices_.size(); ++nextVertex_) {
    const Segment& leaving = (*table_)[vertices_[nextVertex_]];
    if (endpoints_.empty()) place_ = StartOf(leaving);
    if (StartOf(leaving) != place_) break;
    add(vertices_[nextVertex_], leaving.forward != 0);
    add(leaving.before, (*table_)[leaving.before].forward == 0);
  }
  std::sort(endpoints_.begin(), endpoints_.end());
  LoadEndpoint();
}

void EventQueue::LoadEndpoint() {
  if (nextEndpoint_ == endpoints_.size()) {
    if (nextVertex_ < vertices_.size()) return LoadPlace();
    endpointKey_ = kNoKey;
    return;
  }
  const auto seq = static_cast<std::uint32_t>(endpoints_[nextEndpoint_]);
  endpoint_ = {seq % 2 == 0 ? EVENT_START : EVENT_END,
               seq,
               place_.gx,
               place_.gy,
               table_->data() + seq / 2,
               nullptr};
  endpointKey_ = Key(endpoint_);
}

bool EventQueue::IsLater(const Pending& a, const Pending& b) noexcept {
  return a.key != b.key ? a.key > b.key : a.event.seq > b.event.seq;
}

void EventQueue::Insert(const SweepEvent& event) {
  heap_.push_back({Key(event), event});
  std::push_heap(heap_.begin(), heap_.end(), IsLater);
}

SweepEvent EventQueue::PopMin() {
  if (EndpointIsFirst()) {
    const SweepEvent event = endpoint_;
    ++nextEndpoint_;
    LoadEndpoint();
    return event;
  }
  std::pop_heap(heap_.begin(), heap_.end(), IsLater);
  const SweepEvent event = heap_.back().event;
  heap_.pop_back();
  return event;
}

}  // namespace zelvan
