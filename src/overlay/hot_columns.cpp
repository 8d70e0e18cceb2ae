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

namespace zelvan::overlay {

// Vertices of one column, some rows apart: may an edge of one reach the pixel of the other?
void HotColumns::CompareArms(std::int64_t rows) noexcept {
  const auto reaches = [rows](GridPoint d) {
    const std::int64_t dx = std::abs(std::int64_t{d.gx});
    return dx != 0 && std::abs(std::int64_t{d.gy}) >= dx * (2 * rows - 1);
  };
  isTight_ = std::any_of(arms_.begin(), arms_.end(), reaches) ||
             std::any_of(nextArms_.begin(), nextArms_.end(), reaches);
}

HotColumns::Span HotColumns::RowsOf(const Edge& e) const noexcept {
  const std::int64_t twiceX = 2 * std::int64_t{x_};
  const std::int32_t enter = e.low.gx == x_ ? e.low.gy : HeightAt(e, twiceX - 1);
  const std::int32_t leave = e.high.gx == x_ ? e.high.gy : HeightAt(e, twiceX + 1);
  return {std::min(enter, leave), std::max(enter, leave)};
}

void HotColumns::SearchColumn(const Status& status, std::span<const Edge> lines) {
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
  for (const std::uint32_t line : lines_) NoteMeetings(line, lines[line]);
}

void HotColumns::CollectNear(std::int32_t y, const Status& status, std::span<const Edge> lines) {
  const std::int64_t right = 2 * std::int64_t{x_} + 1;
  const Status::Slot place = status.FirstNot([&](const ActiveEdge& e) {
    return HeightAt({e.low, e.high, {}}, right) < y;
  });
  // Adds an edge if it meets the row; @return whether one beyond it still may.
  const auto visit = [&](Status::Slot slot) {
    const std::uint32_t line = status[slot].line;
    const Span span = RowsOf(lines[line]);
    const bool meets = span.least <= y && y <= span.greatest;
    if (meets) lines_.push_back(line);
    return meets || lines[line].low.gx == x_;
  };
  for (auto s = place; s != Status::kEnd && visit(s); s = status.Above(s)) continue;
  for (auto s = status.Below(place); s != Status::kEnd && visit(s); s = status.Below(s)) continue;
}

void HotColumns::NoteMeetings(std::uint32_t line, const Edge& e) {
  const Span span = RowsOf(e);
  for (auto y = std::lower_bound(rows_.begin(), rows_.end(), span.least);
       y != rows_.end() && *y <= span.greatest; ++y) {
    const GridPoint centre{x_, *y};
    if (centre == e.low || centre == e.high) continue;
    incidences_.push_back({line, centre, SideOf(e.low, e.high, centre) != 0});
  }
}

}  // namespace zelvan::overlay
