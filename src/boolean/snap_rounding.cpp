// Snap rounding of one column (snap_rounding.h).
//
// Which segments can pass through a hot pixel of column x, once its events are
// handled and the list is sorted at x + 1/2? Those of the column's own events are
// tried one by one. Let any other segment s have a row in common with the pixel;
// it crosses nothing in the strip. Segments that leave the strip in the pixel's
// row are neighbours in the list. Below them, let t come between s and the pixel,
// span the strip and miss the pixel: it passes under the whole pixel, and s under
// t, so s misses it too. Hence the walks up and down from the pixel's row end at
// the first segment that spans the strip and misses the pixel.
#include "boolean/snap_rounding.h"

#include <algorithm>
#include <cstddef>

#include "boolean/exact.h"
#include "boolean/sweep.h"
#include "polygon/contour.h"

namespace zelvan {

namespace {

void LinkBefore(CrossEntry* place, CrossEntry* e) noexcept {
  e->next = place;
  e->prev = place->prev;
  place->prev->next = e;
  place->prev = e;
}

}  // namespace

std::int32_t YAt(const Segment* s, std::int32_t twiceX) noexcept {
  const GridPoint a = s->low;
  const std::int64_t twiceDx = 2 * std::int64_t{s->high.gx - a.gx};
  const std::int64_t dy = s->high.gy - a.gy;
  return RoundRatio(a.gy * twiceDx + (twiceX - 2 * std::int64_t{a.gx}) * dy, twiceDx).value;
}

RowSpan SpanInColumn(const Segment* s, std::int32_t x) noexcept {
  const GridPoint a = s->low;
  const GridPoint b = s->high;
  if (a.gy == b.gy) return {a.gy, a.gy};
  return {a.gx == x ? a.gy : YAt(s, 2 * x - 1), b.gx == x ? b.gy : YAt(s, 2 * x + 1)};
}

void OnSnappedVertex(CrossEntry*& ringHead, VertexNode* vertex, EntryPool& pool) {
  if (vertex->crossPrev != nullptr) return;
  CrossEntry* toPrev = pool.Take();
  CrossEntry* toNext = pool.Take();
  toPrev->flags = TOWARD_PREV;
  toPrev->vertex = toNext->vertex = vertex;
  if (ringHead == nullptr) {
    ringHead = toNext->next = toNext->prev = toNext;
  } else {
    LinkBefore(ringHead, toNext);
  }
  LinkBefore(toNext, toPrev);
  vertex->crossPrev = toPrev;
  vertex->crossNext = toNext;
}

namespace {

// Does a segment pass below the whole pixel of p, or above it, at the abscissa twiceX / 2, a
// border of the pixel's column? If the segment also passes on that side at its end in the column,
// or at the abscissa of p, it takes no height of the pixel between there and the border.
bool IsBelowPixel(const Segment* s, std::int64_t twiceX, GridPoint p) noexcept {
  const GridPoint a = s->low;
  const std::int64_t dx = s->high.gx - a.gx;
  const std::int64_t dy = s->high.gy - a.gy;
  return (twiceX - 2 * std::int64_t{a.gx}) * dy < (2 * std::int64_t{p.gy - a.gy} - 1) * dx;
}

bool IsAbovePixel(const Segment* s, std::int64_t twiceX, GridPoint p) noexcept {
  const GridPoint a = s->low;
  const std::int64_t dx = s->high.gx - a.gx;
  const std::int64_t dy = s->high.gy - a.gy;
  return (twiceX - 2 * std::int64_t{a.gx}) * dy >= (2 * std::int64_t{p.gy - a.gy} + 1) * dx;
}

// A segment of a column's start or end event reaches into half of the strip.
bool MissesPixel(const SweepEvent& own, GridPoint p) noexcept {
  if (own.first->low.gx == own.first->high.gx) return false;
  const std::int64_t twiceX = 2 * std::int64_t{p.gx} + (own.Kind() == EVENT_START ? 1 : -1);
  return own.y < p.gy ? IsBelowPixel(own.first, twiceX, p) : IsAbovePixel(own.first, twiceX, p);
}

// A segment that neither starts nor ends in the column spans the strip.
bool SpanningMissesPixel(const Segment* s, GridPoint p) noexcept {
  const std::int64_t left = 2 * std::int64_t{p.gx} - 1;
  const std::int64_t right = left + 2;
  return (IsBelowPixel(s, left, p) && IsBelowPixel(s, right, p)) ||
         (IsAbovePixel(s, left, p) && IsAbovePixel(s, right, p));
}

}  // namespace

// Is each place of the column one vertex, whose pixel no other segment meets? Looks at
// neighbours only: where the segments of each place miss the pixels of the places next
// to it, they miss all others, because on the way there they would take every height
// between. And where the nearest spanning segment misses a pixel, so do those beyond.
bool Sweep::NothingMeets() const {
  if (column_.size() % 2 != 0) return false;
  const auto vertexOf = [](const SweepEvent& e) {
    return e.Kind() == EVENT_START ? e.first->lower : e.first->upper;
  };
  const auto missesItsPixel = [&](const Segment* s, GridPoint p) {
    if (status_.IsEnd(s) || s->low.gx == p.gx || s->high.gx == p.gx) return true;
    return SpanningMissesPixel(s, p);
  };
  for (std::size_t i = 0; i < column_.size(); i += 2) {
    const SweepEvent& e = column_[i];
    const SweepEvent& f = column_[i + 1];
    if (e.Kind() == EVENT_CROSS || f.Kind() == EVENT_CROSS || vertexOf(e) != vertexOf(f)) {
      return false;
    }
    const GridPoint p{e.x, e.y};
    for (const Segment* s : {e.first, f.first}) {
      if (!missesItsPixel(s->below, p) || !missesItsPixel(s->above, p)) return false;
    }
    if (i == 0) continue;
    const SweepEvent& c = column_[i - 2];
    const SweepEvent& d = column_[i - 1];
    const GridPoint before{c.x, c.y};
    if (before == p || !MissesPixel(e, before) || !MissesPixel(f, before) || !MissesPixel(c, p) ||
        !MissesPixel(d, p)) {
      return false;
    }
  }
  return true;
}

void Sweep::SnapColumn(std::int32_t x) {
  CollectRows();
  CollectCandidates(x);
  for (Segment* s : candidates_) SplitAtRows(s, x);
  for (const HotRow& row : rows_) pixels_.push_back(row.entries);
}

// One row for each height at which the column has an event, from the lowest up.
void Sweep::CollectRows() {
  rows_.clear();
  for (const SweepEvent& e : column_) rows_.push_back({e.y, nullptr});
  std::sort(rows_.begin(), rows_.end(), [](const HotRow& a, const HotRow& b) { return a.y < b.y; });
  const auto last = std::unique(rows_.begin(), rows_.end(),
                                [](const HotRow& a, const HotRow& b) { return a.y == b.y; });
  rows_.erase(last, rows_.end());
}

// The segments that may meet a row, in table order.
void Sweep::CollectCandidates(std::int32_t x) {
  candidates_.clear();
  std::size_t starts = 0;
  for (const SweepEvent& e : column_) {
    if (e.Kind() == EVENT_START) ++starts;
  }
  // The walks pass over started segments. Where they might pass over more than there
  // are segments, or rows are many, looking at every segment costs no more.
  const std::size_t active = status_.Size();
  if (8 * rows_.size() >= active || rows_.size() * starts >= active) {
    CollectAll();
  } else {
    CollectOwn();
    for (const HotRow& row : rows_) CollectNearRow(x, row.y);
  }
  std::sort(candidates_.begin(), candidates_.end());
  candidates_.erase(std::unique(candidates_.begin(), candidates_.end()), candidates_.end());
}

// The segments that are active now, and those that ended in the column.
void Sweep::CollectAll() {
  for (const SweepEvent& e : column_) {
    if (e.Kind() == EVENT_END) candidates_.push_back(e.first);
  }
  for (Segment* s = status_.Bottom(); !status_.IsEnd(s); s = s->above) candidates_.push_back(s);
}

// The segments of the column's own events.
void Sweep::CollectOwn() {
  for (const SweepEvent& e : column_) {
    candidates_.push_back(e.first);
    if (e.Kind() == EVENT_CROSS) candidates_.push_back(e.second);
  }
}

void Sweep::CollectNearRow(std::int32_t x, std::int32_t y) {
  // Adds s if it meets the row; @return whether a segment beyond it still may.
  const auto visit = [&](Segment* s) {
    const RowSpan span = SpanInColumn(s, x);
    const bool meets =
        std::min(span.enter, span.leave) <= y && y <= std::max(span.enter, span.leave);
    if (meets) candidates_.push_back(s);
    return meets || s->low.gx == x;
  };
  Segment* const place = status_.FirstNot([&](const Segment* t) { return YAt(t, 2 * x + 1) < y; });
  for (Segment* s = place; !status_.IsEnd(s) && visit(s); s = s->above) continue;
  for (Segment* s = place->below; !status_.IsEnd(s) && visit(s); s = s->below) continue;
}

// The rows come from the segment's lower end toward its upper one, so the new
// vertices stand in their order along the edge.
void Sweep::SplitAtRows(Segment* s, std::int32_t x) {
  const RowSpan span = SpanInColumn(s, x);
  const auto below = [](const HotRow& row, std::int32_t y) { return row.y < y; };
  const std::int32_t low = std::min(span.enter, span.leave);
  const std::int32_t high = std::max(span.enter, span.leave);
  auto first = std::lower_bound(rows_.begin(), rows_.end(), low, below);
  auto last = first;
  while (last != rows_.end() && last->y <= high) ++last;
  if (span.enter <= span.leave) {
    for (; first != last; ++first) SplitAt(s, *first, x);
  } else {
    while (last != first) SplitAt(s, *--last, x);
  }
}

void Sweep::SplitAt(Segment* s, HotRow& row, std::int32_t x) {
  const GridPoint centre{x, row.y};
  VertexNode* vertex;
  if (s->low == centre) {
    vertex = s->lower;
  } else if (s->high == centre) {
    vertex = s->upper;
  } else {
    vertex = records_.vertices.Take();
    vertex->grid = centre;
    vertex->flags = s->lower->flags;
    LinkBefore(s->forward != 0 ? s->upper : s->upper->next, vertex);
  }
  OnSnappedVertex(row.entries, vertex, records_.entries);
}

}  // namespace zelvan
