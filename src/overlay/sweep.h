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
//  - Each active edge knows what lies right below it, the winding numbers of both operands or a
//    set of layers; so both its sides are known, and it draws a piece of a boundary where these
//    differ. What the numbers mean, how they add up and what is drawn is the drawer's business
//    (region_drawer.h, layer_drawer.h).
//  - Edges that run on each other are one active edge, a bundle, which ends where the first of
//    them does; one whose steps sum to none is not in the list, and what is left of it comes
//    back at its end.
//  - Each active edge has a line: a number in the table of edges, whose ends are where edges
//    that run on each other come or go. A line stays one while it goes through places.
//
// Crossings off the grid come, in half a column, in some order that exchanges neighbours alone;
// after the last of them the list is sorted, since each exchange queues what then crosses.
//
// The sweep ends: a place takes each of its edges out once and puts each in once, and two
// edges change places at most once, for then they diverge.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "overlay/bundles.h"
#include "overlay/edges.h"
#include "overlay/events.h"
#include "overlay/exact.h"
#include "overlay/hot_columns.h"
#include "overlay/status.h"

namespace zelvan::overlay {

/// Where p lies of an active edge: above 0 left of it, which is above.
[[nodiscard]] inline std::int64_t SideOf(const ActiveEdge& e, GridPoint p) noexcept {
  return SideOf(e.low, e.high, p);
}

/// What is looked for besides the boundary: in the edges as they are given, crossings off the
/// grid and hot pixels that edges meet; in the pieces that these are split into, nothing.
enum class Search { kPixels, kNothing };

/// What a sweep has found of lines, whatever it drew.
class LineFindings {
 public:
  /// Was no crossing off the grid? Then what was drawn stands.
  [[nodiscard]] bool IsExact() const noexcept { return roundedCrossings_ == 0; }
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

 protected:
  static constexpr Status::Slot kNever = kNone;     // has not been active yet
  static constexpr Status::Slot kGone = kNone - 1;  // was active, and is not any more

  std::vector<Status::Slot> slotOf_;  // of each line
  HotColumns columns_;
  std::vector<bool> isCrossed_;  // of each line
  std::uint64_t roundedCrossings_ = 0;
  std::vector<std::uint32_t> cutLines_;
  std::size_t givenLines_ = 0;
};

/// A drawer has
///  - Windings Sum(Windings, Windings), which may throw std::bad_alloc, and Clear(edges);
///  - Draw(p, below, arriving, departing): boundaries go through p. It gives what departs its
///    `below`, `piece` and `face`; those of the active edges below p (null where there is none)
///    and of what arrives, bottom to top as well, are as it gave them;
///  - Turn(e, p): the active edge e goes on at p in another direction, where nothing else is.
/// It is called until a crossing is found off the grid.
template <class Drawer>
class Sweep : public LineFindings {
 public:
  /// @param edges  their vertices sorted; changed, and extended by the lines of bundles
  /// Throws std::bad_alloc. What an earlier run found is gone.
  void Run(EdgeSet& edges, Drawer& drawer, Search search);

  /// Memory that is kept for the next run.
  [[nodiscard]] std::size_t Bytes() const noexcept {
    return events_.Bytes() + status_.Bytes() + bundles_.Bytes() + BytesOf(slotOf_) +
           columns_.Bytes();
  }

  /// Places that the sweep stopped at, for the bounds in the tests.
  [[nodiscard]] std::uint64_t Stops() const noexcept { return stops_; }

 private:
  using Slot = Status::Slot;

  // An edge that leaves a place to the right.
  struct Leaving {
    GridPoint high;
    Windings step;
    std::uint32_t line;     // kNone for a new one
    std::uint32_t members;  // of a bundle, or kNone
  };

  void Clear();
  void StopAt(GridPoint p);
  bool GoOn(GridPoint p);
  void CollectStarts(GridPoint p);
  void CollectThrough(GridPoint p);
  void TakeOut(GridPoint p);
  void CutLineAlong(GridPoint low, GridPoint p);
  void SortLeaving(GridPoint p);
  void Bundle(typename std::vector<Leaving>::iterator begin,
              typename std::vector<Leaving>::iterator end, GridPoint p);
  void NotePixel(GridPoint p);
  void PutIn();
  void Cross(const Event& event);
  void CheckPair(Slot below, Slot above);
  [[nodiscard]] std::uint32_t AddLine(GridPoint low, GridPoint high, Windings step);
  void CutLine(std::uint32_t line, GridPoint p);

  EdgeSet* input_ = nullptr;
  Drawer* drawer_ = nullptr;
  Search search_ = Search::kNothing;
  std::size_t nextVertex_ = 0;
  EventQueue events_;
  Status status_;
  Bundles bundles_;
  bool draws_ = true;
  std::uint64_t stops_ = 0;

  // The place at which the sweep stops; storage is kept from place to place.
  Slot below_ = Status::kEnd;  // the active edges next to the place
  Slot above_ = Status::kEnd;
  std::vector<Slot> through_;         // what ends there or goes through, from bottom to top
  std::vector<ActiveEdge> arriving_;  // the same as it was before
  std::vector<GridPoint> unseen_;     // lower ends of edges that end there and were never active
  std::vector<Leaving> leaving_;
  std::vector<ActiveEdge> departing_;  // from bottom to top
};

}  // namespace zelvan::overlay
