// Which edges meet hot pixels off their centres, column by column.
//
// A hot pixel is the unit square around a vertex or a rounded crossing: rows from y - 1/2
// (included) to y + 1/2 (excluded), columns from x - 1/2 to x + 1/2. An edge meets it if the
// edge takes such a height over the column, cut to the edge's own range (Guibas and Marimont
// 1998; Hobby 1999 for the columns).
//
// Most columns need no search. Let an edge meet the pixel of a vertex p off its centre in a
// column without rounded crossings. The first thing between the two at the column's line,
// going from p to the edge, is the edge itself or another edge that comes near p, for nothing
// crosses in the column; or a place at which edges start or end, and then the edge, which takes
// every height on its way to p, or one of that place comes near that place or p. So a column in
// which no place is near its two neighbours among the edges, and no two neighbouring places
// have a steep edge that reaches from one to the other, has no such pixel. Other columns are
// tight and are looked at in full.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

#include "overlay/edges.h"
#include "overlay/exact.h"
#include "overlay/status.h"

namespace zelvan::overlay {

/// An edge goes through a hot pixel, not at one of its own ends.
struct Incidence {
  std::uint32_t line;
  GridPoint pixel;
  bool isOffCentre;
};

class HotColumns {
 public:
  void Clear() noexcept {
    x_ = INT32_MIN;
    isTight_ = false;
    rows_.clear();
    lines_.clear();
    turns_.clear();
    lastArms_ = {};
    nextArms_.clear();
    columnBegin_ = 0;
    incidences_.clear();
  }
  [[nodiscard]] std::size_t Bytes() const noexcept { return BytesOf(incidences_); }

  /// The column of what is noted from now on. All that belonged to another one is complete:
  /// its crossings are behind the sweep. Throws std::bad_alloc, as all do.
  void Enter(std::int32_t x, const Status& status, std::span<const Edge> lines) {
    if (x == x_) return;
    if (isTight_) SearchColumn(status, lines);
    x_ = x;
    isTight_ = false;
    columnBegin_ = incidences_.size();
    rows_.clear();
    lines_.clear();
    turns_.clear();
    lastArms_ = {};
  }

  void Finish(const Status& status, std::span<const Edge> lines) {
    if (isTight_) SearchColumn(status, lines);
    isTight_ = false;
  }

  /// A hot pixel of the column, from a crossing or a vertex.
  void AddPixel(std::int32_t y) { rows_.push_back(y); }
  /// An edge that starts, ends, crosses or goes through a vertex in the column.
  void AddLine(std::uint32_t line) { lines_.push_back(line); }
  /// An edge goes exactly through a hot pixel's centre.
  void AddPass(std::uint32_t line, GridPoint p) { incidences_.push_back({line, p, false}); }
  void MarkTight() noexcept { isTight_ = true; }

  /// A vertex with both its edges, and nothing else there. The vertex must stay in place.
  void AddTurn(const Vertex& v) {
    turns_.push_back(&v);
    AddPlace(v.at, v.far);
  }

  /// An edge goes from the vertex that is being noted to a place in another one.
  void AddArm(GridPoint far) { nextArms_.push_back(far); }
  /// All edges of the vertex p are noted.
  void CloseVertex(GridPoint p) {
    AddPlace(p, nextArms_);
    arms_.swap(nextArms_);
    nextArms_.clear();
  }

  /// Does an edge come so near to p that it may meet the pixel of p? `side` is p's of the edge.
  [[nodiscard]] static bool IsNear(const ActiveEdge& e, std::int64_t side) noexcept {
    const std::int64_t dx = std::int64_t{e.high.gx} - e.low.gx;
    const std::int64_t dy = std::abs(std::int64_t{e.high.gy} - e.low.gy);
    return std::abs(side) <= (dx + dy) / 2;
  }

  /// Each once, by pixel, then by line.
  [[nodiscard]] const std::vector<Incidence>& Incidences() const noexcept { return incidences_; }

 private:
  // Vertices of one column come from bottom to top.
  void AddPlace(GridPoint p, std::span<const GridPoint> arms) noexcept {
    if (!lastArms_.empty() && !isTight_) {
      isTight_ = ReachesRows(last_, lastArms_, p.gy) || ReachesRows(p, arms, last_.gy);
    }
    last_ = p;
    lastArms_ = arms;
  }
  [[nodiscard]] static bool ReachesRows(GridPoint p, std::span<const GridPoint> arms,
                                        std::int32_t y) noexcept;
  void SearchColumn(const Status& status, std::span<const Edge> lines);
  void CollectNear(std::int32_t y, const Status& status, std::span<const Edge> lines);
  void NoteMeetings(std::uint32_t line, const Edge& edge);

  [[nodiscard]] bool Meets(const Edge& edge, std::int32_t y) const noexcept;

  std::int32_t x_ = INT32_MIN;
  bool isTight_ = false;
  std::vector<std::int32_t> rows_;
  std::vector<std::uint32_t> lines_;
  std::vector<const Vertex*> turns_;
  GridPoint last_{};  // the last vertex in the column
  std::span<const GridPoint> lastArms_;
  std::vector<GridPoint> arms_;      // of the last one that is no turn
  std::vector<GridPoint> nextArms_;  // of the one that is being noted
  std::size_t columnBegin_ = 0;      // of its incidences
  std::vector<Incidence> incidences_;
};

}  // namespace zelvan::overlay
