// The sweep over places (Bentley and Ottmann 1979).
//
// A line moves over the plane from left to right, on one abscissa from bottom to top, and stops
// at the vertices and at each crossing of two edges. The active edges are those that it cuts,
// in a list from bottom to top. At a grid point everything is done at once: all edges that end
// there or go through are taken out, those that start there and the rests of those that go on
// are sorted by slope and put in. Where two edges cross off the grid they change places.
//
// What holds between two stops:
//  - Neighbours in the list that cross further on have their crossing queued.
//  - Each active edge knows the winding numbers right below it, so it is known of both its
//    sides whether they belong to the region; where only one does, it draws a piece of the
//    boundary.
//  - Edges that run on each other are one active edge, a bundle, which ends where the first of
//    them does; one whose windings sum to 0 is not in the list, and what is left of it comes
//    back at its end.
//  - Each active edge has a line: a number in the table of edges, whose ends are where edges
//    that run on each other come or go. A line stays one while it goes through places.
//
// Crossings off the grid wait by their column (the abscissa, rounded), its side, row and side
// of the row. So the crossings left of a column's line come before the vertices on it. In half
// a column they come in some order that exchanges neighbours alone; after the last of them
// the list is sorted, since each exchange queues what then crosses.
//
// The sweep ends: a place takes each of its edges out once and puts each in once, and two
// edges change places at most once, for then they diverge.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "overlay/boundary.h"
#include "overlay/bundles.h"
#include "overlay/edges.h"
#include "overlay/exact.h"
#include "overlay/hot_columns.h"
#include "overlay/selection.h"
#include "overlay/status.h"

namespace zelvan::overlay {

class Sweep {
 public:
  /// What is looked for besides the boundary: in the edges as they are given, crossings off the
  /// grid and hot pixels that edges meet; in the pieces that these are split into, nothing.
  enum class Search { kPixels, kNothing };

  /// @param edges  their vertices sorted; changed, and extended by the lines of bundles
  /// Throws std::bad_alloc. What an earlier run found is gone.
  void Run(EdgeSet& edges, const Selection& selection, Search search);

  /// Was no crossing off the grid? Then the boundary is that of the region.
  [[nodiscard]] bool IsExact() const noexcept { return roundedCrossings_ == 0; }

  [[nodiscard]] Boundary& TheBoundary() noexcept { return boundary_; }
  [[nodiscard]] std::uint64_t RoundedCrossings() const noexcept { return roundedCrossings_; }

  /// Has a line a crossing off the grid?
  [[nodiscard]] bool IsCrossed(std::uint32_t line) const noexcept { return isCrossed_[line]; }
  [[nodiscard]] const std::vector<Incidence>& Incidences() const noexcept {
    return columns_.Incidences();
  }

  /// The lines from this one on are those of bundles.
  [[nodiscard]] std::size_t GivenLines() const noexcept { return givenLines_; }

  /// Lines whose upper end is not where it was given.
  [[nodiscard]] const std::vector<std::uint32_t>& CutLines() const noexcept { return cutLines_; }

  /// Was a line ever active? Lines that others cancel are not, nor edges in a bundle.
  [[nodiscard]] bool WasActive(std::uint32_t line) const noexcept {
    return slotOf_[line] != kNever;
  }

  /// Memory that is kept for the next run.
  [[nodiscard]] std::size_t Bytes() const noexcept;

  /// Places that the sweep stopped at, for the bounds in the tests.
  [[nodiscard]] std::uint64_t Stops() const noexcept { return stops_; }

 private:
  using Slot = Status::Slot;
  static constexpr Slot kNever = kNone;     // has not been active yet
  static constexpr Slot kGone = kNone - 1;  // was active, and is not any more

  // Something ahead that is no vertex.
  struct Event {
    std::uint64_t column;  // and its side
    std::uint64_t row;     // and its side
    std::uint32_t first;   // the lower line of a crossing, or the bundle that comes back
    std::uint32_t second;  // the upper line, or one of the kinds below
  };
  static constexpr std::uint32_t kReturns = kNone;   // a bundle that was gone
  static constexpr std::uint32_t kStop = kNone - 1;  // a crossing on the grid

  // An edge that leaves a place to the right.
  struct Leaving {
    GridPoint high;
    Windings step;
    std::uint32_t line;     // kNone for a new one
    std::uint32_t members;  // of a bundle, or kNone
  };

  [[nodiscard]] static bool IsLater(const Event& a, const Event& b) noexcept;
  void Push(const Crossing& at, std::uint32_t first, std::uint32_t second);
  Event PopEvent();
  [[nodiscard]] bool EventComesFirst() const noexcept;
  [[nodiscard]] bool EventIsAt(GridPoint p) const noexcept;

  void Clear();
  void StopAt(GridPoint p);
  bool GoOn(GridPoint p);
  void CollectStarts(GridPoint p);
  void CollectThrough(GridPoint p);
  void TakeOut(GridPoint p);
  void CutLineAlong(GridPoint low, GridPoint p);
  void SortLeaving(GridPoint p);
  void Bundle(std::vector<Leaving>::iterator begin, std::vector<Leaving>::iterator end,
              GridPoint p);
  void DrawBoundary(GridPoint p);
  void NotePixel(GridPoint p);
  void PutIn();
  void Cross(const Event& event);
  void CheckPair(Slot below, Slot above);
  [[nodiscard]] std::uint32_t AddLine(GridPoint low, GridPoint high, Windings step);
  void CutLine(std::uint32_t line, GridPoint p);

  EdgeSet* input_ = nullptr;
  Selection selection_;
  Search search_ = Search::kNothing;
  std::size_t nextVertex_ = 0;
  std::vector<Event> events_;  // a heap
  Status status_;
  Bundles bundles_;
  std::vector<Slot> slotOf_;  // of each line
  Boundary boundary_;
  bool draws_ = true;
  HotColumns columns_;
  std::vector<bool> isCrossed_;  // of each line
  std::uint64_t roundedCrossings_ = 0;
  std::vector<std::uint32_t> cutLines_;
  std::size_t givenLines_ = 0;
  std::uint64_t stops_ = 0;

  // The place at which the sweep stops; storage is kept from place to place.
  Slot below_ = Status::kEnd;  // the active edges next to the place
  Slot above_ = Status::kEnd;
  std::vector<Slot> through_;         // what ends there or goes through, from bottom to top
  std::vector<ActiveEdge> arriving_;  // the same as it was before
  std::vector<GridPoint> unseen_;     // lower ends of edges that end there and were never active
  std::vector<Leaving> leaving_;
  std::vector<ActiveEdge> departing_;  // from bottom to top
  std::vector<std::uint32_t> leftPieces_;
  std::vector<std::uint32_t> rightPieces_;
};

}  // namespace zelvan::overlay
