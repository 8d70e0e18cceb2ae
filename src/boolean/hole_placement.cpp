// Placing holes (hole_placement.h).
//
// By sweep: take a hole at the first place, in (x, then y) order, where it starts.
// Nothing else of its face touches that place from the left, and the segment right
// below all that start there bounds the same face from below. Its contour is the
// outer boundary of the area sought, or a hole of it that started earlier. An area
// inside the hole can start at the same place, and is no such boundary.
#include "boolean/hole_placement.h"

#include <zelvan/error.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "boolean/event_queue.h"
#include "boolean/segment.h"
#include "boolean/status_list.h"

namespace zelvan {

namespace {

class AreaSearch {
 public:
  AreaSearch(const OwnedRing& result, const PendingHoles& pendingHoles) {
    ForEachArea(result.first, [&](Area* area) { Add(area->contours, area); });
    firstHole_ = areas_.size();
    for (std::size_t i = pendingHoles.size(); i-- > 0;) Add(pendingHoles[i].get(), nullptr);
  }

  /// The area of each hole, newest hole first, null where there is none.
  std::vector<Area*> Run() {
    EventQueue queue;
    queue.Fill(table_);
    StatusList status;
    GridPoint place{GRID_MAX, GRID_MAX};  // of the last start, and the area left of it
    Area* around = nullptr;
    while (!queue.Empty()) {
      const SweepEvent event = queue.PopMin();
      Segment* s = event.first;
      if (event.Kind() == EVENT_END) {
        status.Remove(s);
        continue;
      }
      status.InsertBelow(s, status.FirstNot([s](const Segment* t) { return IsAbove(s, t); }));
      if (s->lower->grid != place) {  // the first to start here
        place = s->lower->grid;
        around = status.IsEnd(s->below) ? nullptr : areas_[ContourOf(s->below)];
      }
      Area*& area = areas_[ContourOf(s)];
      if (area == nullptr) area = around;
    }
    return {areas_.begin() + static_cast<std::ptrdiff_t>(firstHole_), areas_.end()};
  }

 private:
  void Add(const Contour* contour, Area* area) {
    FillSegments(table_, contour);
    contours_.resize(table_.size(), static_cast<std::uint32_t>(areas_.size()));
    areas_.push_back(area);
  }

  [[nodiscard]] std::size_t ContourOf(const Segment* s) const noexcept {
    return contours_[static_cast<std::size_t>(s - table_.data())];
  }

  SegmentTable table_;
  std::vector<std::uint32_t> contours_;  // of each segment
  std::vector<Area*> areas_;             // of each contour, null while not known
  std::size_t firstHole_ = 0;
};

// Behind the outer boundary, before the holes that are there.
void AddLastHole(Area* area, PendingHoles& pendingHoles) noexcept {
  OwnedContour& hole = pendingHoles.back();
  hole->next = area->contours->next;
  area->contours->next = hole.release();
  pendingHoles.pop_back();
}

bool IsOnly(const Area* area) noexcept {
  return area != nullptr && area->next == area;
}

// Is it less work to test each hole than to sweep over all contours?
bool TestsAreCheaper(const OwnedRing& result, const PendingHoles& pendingHoles) noexcept {
  std::size_t perHole = 0;
  ForEachArea(result.first, [&](const Area* area) { perHole += 1 + area->contours->count; });
  std::size_t vertices = perHole;
  for (const OwnedContour& hole : pendingHoles) vertices += hole->count;
  return pendingHoles.size() * perHole <= 64 * vertices;
}

}  // namespace

std::size_t PlaceHoles(OwnedRing& result, PendingHoles& pendingHoles) {
  if (IsOnly(result.first)) {
    while (!pendingHoles.empty()) AddLastHole(result.first, pendingHoles);
    return 0;
  }
  return TestsAreCheaper(result, pendingHoles) ? PlaceHolesByTests(result, pendingHoles)
                                               : PlaceHolesBySweep(result, pendingHoles);
}

std::size_t PlaceHolesByTests(OwnedRing& result, PendingHoles& pendingHoles) {
  std::size_t areas = 0;
  ForEachArea(result.first, [&](const Area*) { ++areas; });
  std::size_t pairs = 0;
  for (; !pendingHoles.empty(); pairs += areas) {
    PlaceContour(result.first, pendingHoles.back().get());
    static_cast<void>(pendingHoles.back().release());
    pendingHoles.pop_back();
  }
  return pairs;
}

std::size_t PlaceHolesBySweep(OwnedRing& result, PendingHoles& pendingHoles) {
  for (Area* area : AreaSearch(result, pendingHoles).Run()) {
    if (area == nullptr) ERR::Raise(ERR::FAIL);
    AddLastHole(area, pendingHoles);
  }
  return 0;
}

}  // namespace zelvan
