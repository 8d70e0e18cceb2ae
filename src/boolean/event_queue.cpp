// The event order and queue (event_queue.h).
#include "boolean/event_queue.h"

#include <algorithm>
#include <utility>

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

bool EventBefore(const SweepEvent& e1, const SweepEvent& e2) noexcept {
  const std::uint64_t k1 = Key(e1);
  const std::uint64_t k2 = Key(e2);
  return k1 != k2 ? k1 < k2 : e1.seq < e2.seq;
}

namespace {

bool After(const SweepEvent& e1, const SweepEvent& e2) noexcept {
  return EventBefore(e2, e1);
}

}  // namespace

void EventQueue::Fill(std::vector<SweepEvent> events) {
  batch_ = std::move(events);
  next_ = 0;
  order_.clear();
  order_.reserve(batch_.size());
  for (const SweepEvent& e : batch_) {
    order_.push_back({Key(e), e.seq, static_cast<std::uint32_t>(order_.size())});
  }
  std::sort(order_.begin(), order_.end(), [](const Place& a, const Place& b) {
    return a.key != b.key ? a.key < b.key : a.seq < b.seq;
  });
}

void EventQueue::Insert(const SweepEvent& event) {
  heap_.push_back(event);
  std::push_heap(heap_.begin(), heap_.end(), After);
}

bool EventQueue::MinIsInBatch() const noexcept {
  if (heap_.empty()) return true;
  return next_ < order_.size() && EventBefore(batch_[order_[next_].index], heap_.front());
}

const SweepEvent& EventQueue::Min() const noexcept {
  return MinIsInBatch() ? batch_[order_[next_].index] : heap_.front();
}

SweepEvent EventQueue::PopMin() noexcept {
  if (MinIsInBatch()) return batch_[order_[next_++].index];
  std::pop_heap(heap_.begin(), heap_.end(), After);
  const SweepEvent event = heap_.back();
  heap_.pop_back();
  return event;
}

}  // namespace zelvan
