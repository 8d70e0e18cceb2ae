// Cuts loops off a raw curve that lie inside of what it winds around.
//
// Let the curve's parts at two sites a and b of a ring meet in m, a before b; fa and fb are the
// places of the sites next to m, at the distance d, and the chain is the ring from fa to fb. If no
// place of the chain is nearer to m than d, and the chain runs with the polygon chain, m on its
// right, then what the curve does between m and m may be left out:
//  - The polygon is simple, for neither m fa nor m fb meets the chain, which keeps out of the
//    disc around m. So it winds once around its inside, and the parts before a and after b, up
//    to m fa and from m fb on, are what they were: nothing winds negatively.
//  - Nothing is lost that the chain covers best. Let q be a place of the chain and the nearest
//    one of the region's boundary to some x outside, at most d away. The way from q to x begins
//    in the polygon. To leave it, it had to cross m fa or m fb, for it meets no boundary; but
//    from there fa or fb is as near as q at most, so q would not be nearest to x.
//  - All other places outside have their nearest place elsewhere, on a part that stays.
// For joins other than round ones only two neighbours are looked at: the loop at a corner that
// the curve goes through winds around what both parallelograms cover.
//
// Meetings are searched from halves to the whole: the last sites of one half whose parts begin
// within reach of the other half go, so do the first ones of the other half, and if the next two
// meet in such an m, the curve is joined there. What is not found stays for the sweep: the result
// is the same. A meeting is rounded once, like any other point of the curve, and none is taken
// that would turn a part of it around.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "offset/chain_boxes.h"
#include "offset/ring_sides.h"

namespace zelvan::offset {

class Trimming {
 public:
  /// Which loops may go: all that are found, or those between neighbours.
  enum class Scope : std::uint8_t { kAll, kNeighbours };

  /// The sites must stay. Takes O(n log^2 n) where the ring comes near few of its discs. Throws
  /// std::bad_alloc.
  void Run(const RingSides& sides, double distance, Scope scope);

  /// A site that is left, and the one after it, around the ring.
  [[nodiscard]] Site First() const noexcept { return first_; }
  [[nodiscard]] Site Next(Site site) const noexcept { return next_[site]; }

  /// Where the curve goes over from a site to the next one, if a loop was cut there.
  [[nodiscard]] const WorldPoint* MeetingAfter(Site site) const noexcept {
    return meetingAfter_[site] != kNone ? &meetings_[meetingAfter_[site]] : nullptr;
  }
  [[nodiscard]] const WorldPoint* MeetingBefore(Site site) const noexcept {
    return MeetingAfter(before_[site]);
  }

 private:
  static constexpr std::uint32_t kNone = UINT32_MAX;

  // Edges in a row and those right after them; a pair of neighbours in the search.
  struct Halves {
    std::uint32_t firstBegin;
    std::uint32_t firstEnd;
    std::uint32_t secondBegin;
    std::uint32_t secondEnd;
  };
  struct Pair {
    Site before;
    Site after;
    std::uint32_t passed;  // corners in between that the curve goes through
  };

  void Link();
  std::uint32_t TrimRange(std::uint32_t begin, std::uint32_t end);
  std::uint32_t TrimBetween(const Halves& halves);
  [[nodiscard]] std::optional<Pair> FindPair(const Halves& halves) const noexcept;
  [[nodiscard]] bool Join(const Pair& pair);
  [[nodiscard]] bool IsThrough(Site before, Site after) const noexcept {
    return meetingAfter_[before] == kNone && RingSides::IsEdge(before) && RingSides::IsEdge(after);
  }

  // Where a site's part of the curve begins and ends, as it is whole and as it is now.
  [[nodiscard]] WorldPoint OwnBegin(Site site) const noexcept;
  [[nodiscard]] WorldPoint OwnEnd(Site site) const noexcept;
  [[nodiscard]] WorldPoint BeginOf(Site site) const noexcept;
  [[nodiscard]] WorldPoint EndOf(Site site) const noexcept;
  [[nodiscard]] bool IsAhead(Site site, WorldPoint from, WorldPoint to) const noexcept;
  [[nodiscard]] bool IsWithin(Site site, WorldPoint from, WorldPoint m,
                              WorldPoint to) const noexcept;
  [[nodiscard]] bool KeepsAway(Site before, Site after, WorldPoint m) const noexcept;
  [[nodiscard]] bool RunsRight(Site before, Site after, WorldPoint m) const noexcept;

  const RingSides* sides_ = nullptr;
  double distance_ = 0.0;
  Scope scope_ = Scope::kAll;
  ChainBoxes boxes_;
  std::vector<std::uint64_t> areas_;  // twice those that (0, 0) spans with the edges so far
  std::vector<Site> next_;
  std::vector<Site> before_;
  std::vector<std::uint32_t> meetingAfter_;
  std::vector<WorldPoint> meetings_;
  Site first_ = 0;
};

}  // namespace zelvan::offset
