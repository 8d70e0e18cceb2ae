// The sweep over the columns (sweep.h).
#include "boolean/sweep.h"

#include "boolean/exact.h"

namespace zelvan {

void Sweep::Run(SegmentTable& table) {
  queue_.Fill(EndEvents(table));
  sequence_ = static_cast<std::uint32_t>(2 * table.size());
  while (!queue_.Empty()) {
    const std::int32_t x = queue_.Min().x;
    column_.clear();
    while (!queue_.Empty() && queue_.Min().x == x) {
      column_.push_back(queue_.PopMin());
      Handle(column_.back());
    }
    eventCount_ += column_.size();
    SnapColumn(x);
  }
}

void Sweep::Handle(const SweepEvent& event) {
  switch (event.Kind()) {
    case EVENT_END: {
      Segment* below = event.first->below;
      Segment* above = event.first->above;
      status_.Remove(event.first);
      CheckPair(below, above);
      break;
    }
    case EVENT_CROSS:
      // A pair that is not in this order any more has been dealt with.
      if (event.first->above == event.second) Cross(event.first, event.second);
      break;
    default:
      Start(event.first);
  }
}

void Sweep::Start(Segment* s) {
  status_.InsertBelow(s, status_.FirstNot([s](const Segment* t) { return IsAbove(s, t); }));
  RecordSeed(s);
  CheckPair(s, s->above);
  CheckPair(s->below, s);
}

void Sweep::Cross(Segment* first, Segment* second) {
  status_.Swap(first, second);
  ++crossingCount_;
  CheckPair(second->below, second);
  CheckPair(first, first->above);
}

// Queues the crossing of a with b directly above it, where there is one to come.
void Sweep::CheckPair(Segment* a, Segment* b) {
  if (status_.IsEnd(a) || status_.IsEnd(b)) return;
  const GridPoint a0 = a->lower->grid;
  const GridPoint a1 = a->upper->grid;
  const GridPoint b0 = b->lower->grid;
  const GridPoint b1 = b->upper->grid;
  const std::int64_t converge =
      std::int64_t{b1.gx - b0.gx} * (a1.gy - a0.gy) - std::int64_t{b1.gy - b0.gy} * (a1.gx - a0.gx);
  if (converge <= 0) return;
  const Crossing c = FindCrossing(a0, a1, b0, b1);
  if (!c.counts) return;
  const Rounded x = RoundRatio(c.xNum, c.den);
  const Rounded y = RoundRatio(c.yNum, c.den);
  queue_.Insert({CrossFlags(x.sign, y.sign), sequence_++, x.value, y.value, a, b});
}

// Only the first segment that starts at a place sees nothing of that place below it.
void Sweep::RecordSeed(const Segment* s) {
  if (!seeds_.empty() && seeds_.back().vertex->grid == s->lower->grid) return;
  seeds_.push_back({s->lower, status_.WindingBelow(s)});
}

}  // namespace zelvan
