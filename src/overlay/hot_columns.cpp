// The search of a tight column (hot_columns.h).
//
// The list of active edges is sorted at the column's right border when its events are handled.
// Edges of these events are tried one by one. Let any other edge s take a row in common with a
// hot pixel; s crosses nothing in the column. Edges that leave the column in the pixel's row
// are neighbours in the list. Below them, let t come between s and the pixel, span the column
// and miss the pixel: t passes under the whole pixel, and s under t, so s misses it too. Hence
// walks up and down from the pixel's row end at the first edge that spans the column and misses
// the pixel. They pass over edges that start in the column; where these times the rows exceed
// the active edges, looking at every edge costs no more, which bounds all columns together.
#include "overlay/hot_columns.h"

#include <algorithm>
#include <utility>

namespace zelvan::overlay {

// May an edge of p come as near as the rows of a pixel of the same column?
bool HotColumns::ReachesRows(GridPoint p, std::span<const GridPoint> arms,
                             std::int32_t y) noexcept {
  const std::int64_t rows = std::abs(std::int64_t{p.gy} - y);
  return std::any_of(arms.begin(), arms.end(), [=](GridPoint far) {
    const std::int64_t dx = std::abs(std::int64_t{far.gx} - p.gx);
    return dx != 0 && std::abs(std::int64_t{far.gy} - p.gy) >= dx * (2 * rows - 1);
  });
}

// Does an edge take a height of a row over the column, cut to the edge's own range?
bool HotColumns::Meets(const Edge& e, std::int32_t y) const noexcept {
  const std::int64_t dx = std::int64_t{e.high.gx} - e.low.gx;
  const std::int64_t dy = std::int64_t{e.high.gy} - e.low.gy;
  if (dx == 0) return e.low.gy <= y && y <= e.high.gy;
  const std::int64_t middle = 2 * (std::int64_t{x_} - e.low.gx);
  const std::int64_t enter = std::max(middle - 1, std::int64_t{0}) * dy;
  const std::int64_t leave = std::min(middle + 1, 2 * dx) * dy;
  const std::int64_t row = 2 * (std::int64_t{y} - e.low.gy);
  return std::max(enter, leave) >= (row - 1) * dx && std::min(enter, leave) < (row + 1) * dx;
}

void HotColumns::SearchColumn(const Status& status, std::span<const Edge> lines) {
  for (const Vertex* v : turns_) {
    rows_.push_back(v->at.gy);
    lines_.insert(lines_.end(), v->edge, v->edge + 2);
  }
  std::sort(rows_.begin(), rows_.end());
  rows_.erase(std::unique(rows_.begin(), rows_.end()), rows_.end());
  const std::size_t own = lines_.size();
  if (8 * rows_.size() >= status.Size() || rows_.size() * own >= status.Size()) {
    for (auto s = status.Above(Status::kEnd); s != Status::kEnd; s = status.Above(s)) {
      lines_.push_back(status[s].line);
    }
  } else {
    for (const std::int32_t y : rows_) CollectNear(y, status, lines);
  }
  std::sort(lines_.begin(), lines_.end());
  lines_.erase(std::unique(lines_.begin(), lines_.end()), lines_.end());
  incidences_.resize(columnBegin_);
  for (const std::uint32_t line : lines_) NoteMeetings(line, lines[line]);
  std::sort(incidences_.begin() + static_cast<std::ptrdiff_t>(columnBegin_), incidences_.end(),
            [](const Incidence& a, const Incidence& b) {
              return std::pair(a.pixel.gy, a.line) < std::pair(b.pixel.gy, b.line);
            });
}

void HotColumns::CollectNear(std::int32_t y, const Status& status, std::span<const Edge> lines) {
  // The lowest edge that leaves the column in the row or above.
  const Status::Slot place = status.FirstNot([&](const ActiveEdge& e) {
    const std::int64_t dx = std::int64_t{e.high.gx} - e.low.gx;
    const std::int64_t dy = std::int64_t{e.high.gy} - e.low.gy;
    return (2 * (std::int64_t{x_} - e.low.gx) + 1) * dy <
           (2 * (std::int64_t{y} - e.low.gy) - 1) * dx;
  });
  // Adds an edge if it meets the row; @return whether one beyond it still may.
  const auto visit = [&](Status::Slot slot) {
    const std::uint32_t line = status[slot].line;
    const bool meets = Meets(lines[line], y);
    if (meets) lines_.push_back(line);
    return meets || lines[line].low.gx == x_;
  };
  for (auto s = place; s != Status::kEnd && visit(s); s = status.Above(s)) continue;
  for (auto s = status.Below(place); s != Status::kEnd && visit(s); s = status.Below(s)) continue;
}

// The rows that an edge takes in the column are neighbours; the first of them is sought where
// there are many.
void HotColumns::NoteMeetings(std::uint32_t line, const Edge& e) {
  constexpr std::size_t few = 8;
  auto row = rows_.begin();
  if (rows_.size() > few) {
    const std::int64_t twiceX = 2 * std::int64_t{x_};
    const std::int32_t enter = e.low.gx == x_ ? e.low.gy : HeightAt(e, twiceX - 1);
    const std::int32_t leave = e.high.gx == x_ ? e.high.gy : HeightAt(e, twiceX + 1);
    row = std::lower_bound(row, rows_.end(), std::min(enter, leave));
  }
  bool hasMet = false;
  for (; row != rows_.end(); ++row) {
    if (!Meets(e, *row)) {
      if (hasMet || rows_.size() > few) break;
      continue;
    }
    hasMet = true;
    const GridPoint centre{x_, *row};
    if (centre == e.low || centre == e.high) continue;
    incidences_.push_back({line, centre, SideOf(e.low, e.high, centre) != 0});
  }
}

}  // namespace zelvan::overlay
