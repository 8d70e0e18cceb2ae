// The sweep: finds every crossing of the edges of both operands, exactly, and
// splits the edges at hot pixels, column by column (Bentley and Ottmann 1979;
// Hobby 1999 for the columns).
//
// Between two columns the status list is sorted by height at the boundary, and
// every pair of neighbours that converge to the right and cross has its crossing
// queued. In a column the crossings left of its line come in the order of their
// rows, not of their true abscissas, so the list is there in some order between
// that of the column's start and that of its line; it is sorted again at the line
// itself, where segments start and end. It ends because each start and each swap
// queues at most two crossings and each end one, and a pair is swapped at most once:
// swapped, it diverges.
//
// The sweep inserts vertices into the operands' rings but never changes a
// segment: all geometry stays that of the straight edges.
//
// The work. Of n segments at most n (n - 1) / 2 pairs are swapped, so there are at most
// 5 n + 2 swaps events; a test counts them. Most vertices of most inputs meet nothing. Such a
// vertex costs its place in one sort, an exchange in the status list, and four tests for
// crossings and for its pixel; only local extremes search the list's index, and only
// crossings wait in a heap: O(n + (e + k) log n) for e extremes and k crossings. The walks of a
// column pass over segments in order and stop at the first that spans the column and misses
// the row; a walk passes over segments that start in the column, too, and where these times
// the rows exceed the active segments it looks at every segment instead, which bounds all
// columns together by O(n sqrt n).
#pragma once

#include <cstdint>
#include <vector>

#include "boolean/cross_entry.h"
#include "boolean/event_queue.h"
#include "boolean/segment.h"
#include "boolean/status_list.h"

namespace zelvan {

/// A hot pixel of the current column.
struct HotRow {
  std::int32_t y;
  CrossEntry* entries;  ///< head of the pixel's ring, null until the first vertex arrives
};

/// Where segments start and none end: one vertex there, and the winding numbers of the
/// point just left of it, summed over the segments below.
struct Seed {
  VertexNode* vertex;
  Winding winding;
};

class Sweep {
 public:
  explicit Sweep(SweepRecords& records) noexcept : records_(records) {}

  /// Splits the rings that the table was filled from and gives every vertex its
  /// entries, but for vertices that nothing else meets, which may have none. Raises ERR::NOMEM or
  /// throws std::bad_alloc; the rings stay whole.
  void Run(SegmentTable& table);

  /// One seed for each place where segments start and none end, in (x, then y) order.
  [[nodiscard]] const std::vector<Seed>& Seeds() const noexcept { return seeds_; }

  /// An entry of each hot pixel that was given vertices, in the order of the columns.
  [[nodiscard]] const std::vector<CrossEntry*>& Pixels() const noexcept { return pixels_; }

  /// Numbers of events handled and of segments looked at by searches, for the bounds in the
  /// tests.
  [[nodiscard]] std::uint64_t EventCount() const noexcept { return eventCount_; }
  [[nodiscard]] std::uint64_t SearchSteps() const noexcept { return status_.Steps(); }
  [[nodiscard]] std::uint64_t CrossingCount() const noexcept { return crossingCount_; }

 private:
  void HandleNext();
  void Handle(const SweepEvent& event);
  void Start(Segment* s);
  [[nodiscard]] Segment* FirstAbove(const Segment* s) noexcept;
  bool GoesOn(Segment* s, Segment* t);
  void Cross(Segment* first, Segment* second);
  void CheckPair(Segment* a, Segment* b);
  void RecordSeed(const Segment* s);

  // snap_rounding.cpp
  [[nodiscard]] bool NothingMeets() const;
  void SnapColumn(std::int32_t x);
  void CollectRows();
  void CollectCandidates(std::int32_t x);
  void CollectOwn();
  void CollectNearRow(std::int32_t x, std::int32_t y);
  void CollectAll();
  void SplitAtRows(Segment* s, std::int32_t x);
  void SplitAt(Segment* s, HotRow& row, std::int32_t x);

  SweepRecords& records_;
  EventQueue queue_;
  StatusList status_;
  std::uint32_t sequence_ = 0;
  std::vector<Seed> seeds_;
  std::vector<CrossEntry*> pixels_;
  GridPoint lastPlace_{GRID_MAX, GRID_MAX};  // at which a segment started or ended
  Segment* near_ = nullptr;  // an active segment next to that place, or the list's end
  std::uint64_t eventCount_ = 0;
  std::uint64_t crossingCount_ = 0;

  // The current column; storage is kept from column to column.
  std::vector<SweepEvent> column_;
  std::vector<HotRow> rows_;
  std::vector<Segment*> candidates_;
};

}  // namespace zelvan
