// The look through a region (soundness.h).
//
// A sweep that stops at the first fault, so that the status list is sorted at all
// times. Every two neighbours are tested for a crossing and for running along each
// other. At a place where segments start, once all have, each must have an even
// number of segments below it if its contour has the region above it, else an odd
// number: so a chain of edges that crosses another one in a vertex shows too.
//
// Where more than one chain passes a place, each must have its region to itself there:
// turning counter-clockwise from the edge by which a chain leaves, the first edge met
// must be the one by which it came. Else two pieces of the boundary touch from inside,
// with no area between them, and the region has no triangulation.
#include "boolean/soundness.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "boolean/event_queue.h"
#include "boolean/exact.h"
#include "boolean/segment.h"
#include "boolean/status_list.h"
#include "polygon/grid_predicates.h"

namespace zelvan {

namespace {

class SoundnessSweep {
 public:
  bool FindsNoFault(SegmentTable& table) {
    EventQueue queue;
    queue.Fill(table);
    while (!queue.Empty()) {
      const SweepEvent event = queue.PopMin();
      place_ = {event.x, event.y};
      const bool isStart = event.Kind() == EVENT_START;
      if (!(isStart ? Start(event.first) : End(event.first))) return false;
      const bool moreHere = !queue.Empty() && queue.Min().x == event.x && queue.Min().y == event.y;
      if (moreHere) continue;
      if (!SidesAreRight() || !TouchesAreOutside()) return false;
    }
    return true;
  }

 private:
  // One end of an edge at the current place, seen from there.
  struct EdgeEnd {
    GridPoint direction;
    bool leaves;        // the contour leaves the place by this edge
    const void* chain;  // the vertex there, or the segment that passes
  };

  bool Start(Segment* s) {
    if (s->lower->grid == s->upper->grid) return false;
    AddEnd(s->upper->grid, s->forward != 0, s->lower);
    status_.InsertBelow(s, status_.FirstNot([s](const Segment* t) { return IsAbove(s, t); }));
    started_.push_back(s);
    AddPassing(s->below);
    AddPassing(s->above);
    return PairIsSound(s->below, s) && PairIsSound(s, s->above);
  }

  bool End(Segment* s) {
    Segment* below = s->below;
    Segment* above = s->above;
    status_.Remove(s);
    AddEnd(s->lower->grid, s->forward == 0, s->upper);
    AddPassing(below);
    AddPassing(above);
    return PairIsSound(below, above);
  }

  void AddEnd(GridPoint far, bool leaves, const void* chain) {
    ends_.push_back({Difference(far, place_), leaves, chain});
  }

  // A segment through the place is next to one that starts or ends there. There is one
  // at the most, or they would cross.
  void AddPassing(const Segment* s) {
    if (status_.IsEnd(s) || s == passing_) return;
    const GridPoint lower = s->lower->grid;
    const GridPoint upper = s->upper->grid;
    if (lower == place_ || upper == place_ || Cross(lower, upper, place_) != 0) return;
    passing_ = s;
    AddEnd(lower, s->forward == 0, s);
    AddEnd(upper, s->forward != 0, s);
  }

  [[nodiscard]] bool TouchesAreOutside() {
    const bool outside = ends_.size() == 2 || EachChainHasItsRegion();
    ends_.clear();
    passing_ = nullptr;
    return outside;
  }

  [[nodiscard]] bool EachChainHasItsRegion() {
    std::sort(ends_.begin(), ends_.end(), [](const EdgeEnd& a, const EdgeEnd& b) {
      return ComesBefore(a.direction, b.direction);
    });
    for (std::size_t i = 0; i < ends_.size(); ++i) {
      const EdgeEnd& next = ends_[(i + 1) % ends_.size()];
      if (ends_[i].leaves && (next.leaves || next.chain != ends_[i].chain)) return false;
    }
    return true;
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
  GridPoint place_{};
  std::vector<Segment*> started_;  // at the current place
  std::vector<EdgeEnd> ends_;      // at the current place
  const Segment* passing_ = nullptr;
};

}  // namespace

bool IsSound(const Area* ring) {
  SegmentTable table;
  FillSegments(table, ring);
  return SoundnessSweep().FindsNoFault(table);
}

}  // namespace zelvan
