// The look through a region (soundness.h).
//
// A sweep that stops at the first fault, so that the status list is sorted at all
// times. Every two neighbours are tested for a crossing and for running along each
// other. At a place where segments start, once all have, each must have an even
// number of segments below it if its contour has the region above it, else an odd
// number: so a chain of edges that crosses another one in a vertex shows too.
#include "boolean/soundness.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "boolean/event_queue.h"
#include "boolean/exact.h"
#include "boolean/segment.h"
#include "boolean/status_list.h"

namespace zelvan {

namespace {

class Look {
 public:
  bool Through(SegmentTable& table) {
    EventQueue queue;
    queue.Fill(EventsOf(table));
    while (!queue.Empty()) {
      const SweepEvent event = queue.PopMin();
      const bool isStart = event.Kind() == EVENT_START;
      if (!(isStart ? Start(event.first) : End(event.first))) return false;
      const bool moreHere = !queue.Empty() && queue.Min().Kind() == EVENT_START &&
                            queue.Min().x == event.x && queue.Min().y == event.y;
      if (isStart && !moreHere && !SidesAreRight()) return false;
    }
    return true;
  }

 private:
  static std::vector<SweepEvent> EventsOf(SegmentTable& table) {
    std::vector<SweepEvent> events;
    events.reserve(2 * table.size());
    std::uint32_t seq = 0;
    for (Segment& s : table) {
      const GridPoint a = s.lower->grid;
      const GridPoint b = s.upper->grid;
      events.push_back({EVENT_START, seq++, a.gx, a.gy, &s, nullptr});
      events.push_back({EVENT_END, seq++, b.gx, b.gy, &s, nullptr});
    }
    return events;
  }

  bool Start(Segment* s) {
    if (s->lower->grid == s->upper->grid) return false;
    status_.InsertBelow(s, status_.FirstNot([s](const Segment* t) { return IsAbove(s, t); }));
    started_.push_back(s);
    return PairIsSound(s->below, s) && PairIsSound(s, s->above);
  }

  bool End(Segment* s) {
    Segment* below = s->below;
    Segment* above = s->above;
    status_.Remove(s);
    return PairIsSound(below, above);
  }

  [[nodiscard]] bool PairIsSound(const Segment* a, const Segment* b) const {
    if (status_.IsEnd(a) || status_.IsEnd(b)) return true;
    const GridPoint a0 = a->lower->grid;
    const GridPoint a1 = a->upper->grid;
    const GridPoint b0 = b->lower->grid;
    const GridPoint b1 = b->upper->grid;
    // Both are active, so collinear means coincident in part.
    if (Cross(a0, a1, b0) == 0 && Cross(a0, a1, b1) == 0) return false;
    return !FindCrossing(a0, a1, b0, b1).counts;
  }

  [[nodiscard]] bool SidesAreRight() {
    for (const Segment* s : started_) {
      const bool regionBelow = status_.ParityBelow(s) != 0;
      if (regionBelow == (s->forward != 0)) return false;
    }
    started_.clear();
    return true;
  }

  StatusList status_;
  std::vector<Segment*> started_;  // at the current place
};

}  // namespace

bool IsSound(const Area* ring) {
  SegmentTable table;
  FillSegments(table, ring);
  return Look().Through(table);
}

}  // namespace zelvan
