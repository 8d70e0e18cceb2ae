// Crossing analysis (crossing_analysis.h).
#include "boolean/crossing_analysis.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "boolean/snap_rounding.h"
#include "polygon/area.h"
#include "polygon/grid_predicates.h"

namespace zelvan {

namespace {

using Entries = std::vector<CrossEntry*>;

// Counter-clockwise from +x; of equal directions operand B's first.
bool AngleBefore(const CrossEntry* a, const CrossEntry* b) noexcept {
  const std::uint32_t qa = a->flags >> QUADRANT_SHIFT;
  const std::uint32_t qb = b->flags >> QUADRANT_SHIFT;
  if (qa != qb) return qa < qb;
  const std::int64_t turn = Cross({a->dx, a->dy}, {b->dx, b->dy});
  if (turn != 0) return turn > 0;
  return (a->flags & ENTRY_FIRST) == 0 && (b->flags & ENTRY_FIRST) != 0;
}

// Nothing else meets v: its pixel holds its own two edge ends, which differ.
bool MeetsNothing(const VertexNode* v) noexcept {
  return v->crossNext->next == v->crossPrev && v->crossNext->prev == v->crossPrev &&
         v->prev->grid != v->next->grid;
}

void Gather(CrossEntry* start, Entries& entries) {
  entries.clear();
  CrossEntry* e = start;
  do {
    const GridPoint edge = Difference(FarEndOf(e)->grid, e->vertex->grid);
    e->dx = edge.gx;
    e->dy = edge.gy;
    e->flags |= Quadrant({e->dx, e->dy}) << QUADRANT_SHIFT;
    if ((e->vertex->flags & FROM_FIRST) != 0) e->flags |= ENTRY_FIRST;
    entries.push_back(e);
    e = e->next;
  } while (e != start);
}

// Equal ones keep their order. Few, as at most pixels, are put in their places one by
// one, which takes no buffer.
void SortByAngle(Entries& entries) {
  constexpr std::size_t kFew = 16;
  if (entries.size() > kFew) {
    std::stable_sort(entries.begin(), entries.end(), AngleBefore);
    return;
  }
  for (std::size_t i = 1; i < entries.size(); ++i) {
    CrossEntry* const e = entries[i];
    std::size_t place = i;
    for (; place > 0 && AngleBefore(e, entries[place - 1]); --place) {
      entries[place] = entries[place - 1];
    }
    entries[place] = e;
  }
}

void CloseRing(const Entries& entries, std::uint32_t flags) noexcept {
  CrossEntry* last = entries.back();
  for (CrossEntry* e : entries) {
    e->flags |= SORTED | flags;
    e->prev = last;
    last->next = e;
    last = e;
  }
}

// [first, last) are the copies of one edge in one operand. The last one in the
// direction of the majority stays, and the labelling says what it bounds.
void DropCopies(CrossEntry* const* first, CrossEntry* const* last) noexcept {
  const auto isDropped = [](const CrossEntry* e) { return LabelOf(HolderOf(e)) == LABEL_DROPPED; };
  if (std::any_of(first, last, isDropped)) return;  // decided at the other end
  const std::ptrdiff_t toward = std::count_if(first, last, IsTowardPrev);
  const std::ptrdiff_t away = last - first - toward;
  const CrossEntry* kept = nullptr;
  for (CrossEntry* const* e = first; e != last; ++e) {
    if (IsTowardPrev(*e) == (toward > away)) kept = *e;
  }
  for (CrossEntry* const* e = first; e != last; ++e) {
    if (*e != kept) SetLabel(HolderOf(*e), LABEL_DROPPED);
  }
}

void DropAllCopies(const Entries& entries) noexcept {
  CrossEntry* const* const end = entries.data() + entries.size();
  for (CrossEntry* const* first = entries.data(); first != end;) {
    CrossEntry* const* last = first + 1;
    while (last != end && SameEdge(*first, *last) && OperandOf(*first) == OperandOf(*last)) ++last;
    if (last - first > 1) DropCopies(first, last);
    first = last;
  }
}

bool HasEqualEdges(const Entries& entries) noexcept {
  return std::adjacent_find(entries.begin(), entries.end(), SameEdge) != entries.end();
}

// @return whether the pixel has no equal edges; if it has, it waits for the contours' order
bool AnalyseWithoutCopies(CrossEntry* start, Entries& entries) {
  VertexNode* const v = start->vertex;
  if (MeetsNothing(v)) {
    v->crossPrev = v->crossNext = nullptr;
    return true;
  }
  Gather(start, entries);
  SortByAngle(entries);
  if (HasEqualEdges(entries)) return false;
  CloseRing(entries, 0);
  return true;
}

void AnalyseWithCopies(VertexNode* v, Entries& entries, EntryPool& pool) {
  if (v->crossPrev == nullptr) {
    if (v->prev->grid != v->next->grid) return;
    CrossEntry* ringHead = nullptr;  // the tip of a spike
    OnSnappedVertex(ringHead, v, pool);
  }
  if ((v->crossPrev->flags & SORTED) != 0) return;
  Gather(v->crossPrev, entries);
  SortByAngle(entries);
  DropAllCopies(entries);
  CloseRing(entries, HAS_COPIES);
}

}  // namespace

void AnalysePixels(const std::vector<CrossEntry*>& pixels, Area* a, Area* b, EntryPool& pool) {
  Entries entries;
  std::size_t waiting = 0;
  for (CrossEntry* pixel : pixels) {
    if (!AnalyseWithoutCopies(pixel, entries)) ++waiting;
  }
  if (waiting == 0) return;
  for (Area* ring : {a, b}) {
    ForEachContour(ring, [&](Contour* contour) {
      ForEachVertex(contour, [&](VertexNode* v) { AnalyseWithCopies(v, entries, pool); });
    });
  }
}

}  // namespace zelvan
