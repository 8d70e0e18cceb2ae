// The sweep over the columns (sweep.h).
#include "boolean/sweep.h"

#include "boolean/exact.h"
#include "polygon/grid_predicates.h"

namespace zelvan {

void Sweep::Run(SegmentTable& table) {
  queue_.Fill(table);
  sequence_ = static_cast<std::uint32_t>(2 * table.size());
  while (!queue_.Empty()) {
    const std::int32_t x = queue_.Min().x;
    column_.clear();
    while (!queue_.Empty() && queue_.Min().x == x) HandleNext();
    eventCount_ += column_.size();
    if (!NothingMeets()) SnapColumn(x);
  }
}

void Sweep::HandleNext() {
  column_.push_back(queue_.PopMin());
  const SweepEvent& event = column_.back();
  if (event.Kind() == EVENT_END && !queue_.Empty()) {
    const SweepEvent& next = queue_.Min();
    if (next.Kind() == EVENT_START && next.first->lower == event.first->upper &&
        GoesOn(event.first, next.first)) {
      column_.push_back(queue_.PopMin());
      return;
    }
  }
  Handle(event);
}

// Where t goes on from s and nothing else is at that place, t takes the place of s.
bool Sweep::GoesOn(Segment* s, Segment* t) {
  const GridPoint p = t->low;
  const auto side = [p](const Segment* u) { return zelvan::Cross(u->low, u->high, p); };
  if (!status_.IsEnd(s->below) && side(s->below) <= 0) return false;
  if (!status_.IsEnd(s->above) && side(s->above) >= 0) return false;
  status_.Replace(s, t);
  lastPlace_ = p;
  near_ = t;
  CheckPair(t, t->above);
  CheckPair(t->below, t);
  return true;
}

void Sweep::Handle(const SweepEvent& event) {
  switch (event.Kind()) {
    case EVENT_END: {
      Segment* below = event.first->below;
      Segment* above = event.first->above;
      status_.Remove(event.first);
      lastPlace_ = event.first->high;
      near_ = above;
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

// The first segment above the start of s. Where the last one has just started or ended
// there, it is a few steps away.
Segment* Sweep::FirstAbove(const Segment* s) noexcept {
  const auto isAbove = [s](const Segment* t) { return IsAbove(s, t); };
  if (lastPlace_ == s->low) {
    Segment* t = near_;
    for (int step = 0; step < 4; ++step) {
      if (!status_.IsEnd(t) && isAbove(t)) {
        t = t->above;
      } else if (!status_.IsEnd(t->below) && !isAbove(t->below)) {
        t = t->below;
      } else {
        return t;
      }
    }
  }
  return status_.FirstNot(isAbove);
}

void Sweep::Start(Segment* s) {
  status_.InsertBelow(s, FirstAbove(s));
  RecordSeed(s);
  near_ = s;
  CheckPair(s, s->above);
  CheckPair(s->below, s);
}

void Sweep::Cross(Segment* first, Segment* second) {
  status_.Swap(first, second);
  ++crossingCount_;
  CheckPair(second->below, second);
  CheckPair(first, first->above);
}

// Queues the crossing of a with b directly above it, if they will cross.
void Sweep::CheckPair(Segment* a, Segment* b) {
  if (status_.IsEnd(a) || status_.IsEnd(b)) return;
  const GridPoint a0 = a->low;
  const GridPoint a1 = a->high;
  const GridPoint b0 = b->low;
  const GridPoint b1 = b->high;
  if (zelvan::Cross(Difference(b1, b0), Difference(a1, a0)) <= 0) return;  // they do not converge
  const Crossing c = FindCrossing(a0, a1, b0, b1);
  if (!c.counts) return;
  const Rounded x = RoundRatio(c.xNum, c.den);
  const Rounded y = RoundRatio(c.yNum, c.den);
  queue_.Insert({CrossFlags(x.sign, y.sign), sequence_++, x.value, y.value, a, b});
}

// Only the first segment that starts at a place sees nothing of that place below it;
// and where one ends, all that meets there hangs together with an earlier start.
void Sweep::RecordSeed(const Segment* s) {
  if (lastPlace_ == s->low) return;
  lastPlace_ = s->low;
  seeds_.push_back({s->lower, status_.WindingBelow(s)});
}

}  // namespace zelvan
