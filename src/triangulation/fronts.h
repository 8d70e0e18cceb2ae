// The fronts of the sweep: another way to cut what the sweep meets, into triangles that stay
// close together, as a start for flips (flips.h).
//
// Chains join a vertex to the last one that its interval met, which may be far to the left or
// right. A front remembers everything above the interval that is not cut off, and joins a
// vertex to what lies right above it (after the advancing front of Domiter and Zalik 2008).
//
// A front is the line from the upper end of an interval's left edge to that of its right
// edge under which nothing is cut yet: contour edges and diagonals, left to right. The order
// of points along x, with the higher first of two above each other, divides it in three,
// each of which may be one vertex or run into the next:
//
//     \   left part: steps down and back to the left, under a left edge that leans over it
//      \                                            .
//       \            middle: steps to the right    /
//        `--.  .----.    .-----.                  /   right part: the mirror of the left one;
//            `'      `--'       `---------------.'    steps up and back to the left
//
// What holds here, below any front: every vertex of a middle lies as high as the sweep line or
// above it, so a vertex on the line sees the edge of the middle right above it; where it lies
// beyond the end of the middle, it sees that end. The last vertex that an interval met is in
// the middle. A front's edges keep their names.
//
// When a left edge ends, in v, the front starts at v from then on. What lies left of v (or the
// left part, if there is one; then v lies left of it all) is a ring with that edge as one side and
// with a chain on the other that is monotone along x (or y): its convex corners can be
// cut in one pass (Garey, Johnson, Preparata and Tarjan 1978). Each link of a front is
// put in and taken out once. Where an interval is split, the front is walked from the
// last vertex met and from the end beyond, in turns: no more than twice the shorter of the two
// parts. So walks take O(n log n) steps in all where parts do not come together again around
// holes, and never more than n a split.
//
// The number of flips is the cost of a Delaunay triangulation, and the start decides it. The
// diagonals of chains run from one side of an area to the other: with k x k holes a row of 2k
// vertices becomes two fans, which take of the order of k^2 flips to untangle in any order, k/2
// a vertex. Flips a vertex with 50 x 50 and with 500 x 500 holes: 24.5 and 249.5 from chains,
// 1.23 and 1.25 from fronts.
#pragma once

#include <cstdint>
#include <vector>

#include "triangulation/region_writer.h"

namespace VORNEX {

class Fronts {
 public:
  explicit Fronts(RegionWriter& writer) noexcept : writer_(writer) {}

  /// The front of an interval by its links.
  struct Ends {
    std::uint32_t end[2];  ///< left and right
    std::uint32_t recent;  ///< the last vertex met
  };

  // As in Chains.

  void Open(Ends& ends, const Corner& at);
  [[nodiscard]] bool GoOn(Side side, Ends& ends, const Corner& at, std::uint32_t edge);
  [[nodiscard]] bool Split(Ends& left, Ends& right, const Corner& at);
  [[nodiscard]] bool End(const Ends& ends, const Corner& at, std::uint32_t leftEdge,
                         std::uint32_t rightEdge);
  [[nodiscard]] bool Merge(Ends& left, const Ends& right, const Corner& at, std::uint32_t rightEdge,
                           std::uint32_t leftEdge);

  /// Links walked to where fronts are split.
  [[nodiscard]] std::uint64_t steps() const noexcept { return steps_; }

  /// Starts with nothing.
  void Begin() noexcept {
    links_.clear();
    free_ = kNone;
  }

 private:
  // A way along a front: 0 to the left, 1 to the right. Functions with a way are written
  // for 1, and do the mirror of it for 0.
  using Way = std::uint32_t;

  struct Link {
    Corner corner;
    std::uint32_t beside[2];
    std::uint32_t edge[2];  // to these
  };

  // A corner of a ring that waits to be cut, and the edge that leads to it.
  struct Waiting {
    Corner corner;
    std::uint32_t edge;
  };

  [[nodiscard]] std::uint32_t Allocate(const Corner& corner);
  void Release(std::uint32_t link) noexcept;
  void ReleaseAll(std::uint32_t link, std::uint32_t end, Way way) noexcept;
  void Join(std::uint32_t from, std::uint32_t to, std::uint32_t edge, Way way) noexcept;
  [[nodiscard]] std::uint32_t Double(std::uint32_t link, Way way);
  [[nodiscard]] bool GoesOn(std::uint32_t from, std::uint32_t to, Way way) const noexcept;
  [[nodiscard]] bool LiesBeyond(std::uint32_t link, const Corner& at, Way way) const noexcept;
  [[nodiscard]] std::uint32_t LastBefore(std::uint32_t recent, std::uint32_t end, const Corner& at,
                                         Way way);
  [[nodiscard]] std::uint32_t FirstToKeep(std::uint32_t end, const Corner& at, Way way);
  [[nodiscard]] bool CutRing(const Corner& at, std::uint32_t step, std::uint32_t from,
                             std::uint32_t to, std::uint32_t single, Way way);
  [[nodiscard]] bool CutOver(const Corner& at, std::uint32_t near, std::uint32_t nearEdge,
                             std::uint32_t far, std::uint32_t farEdge, Way way);
  [[nodiscard]] std::uint32_t Close(std::uint32_t end, const Corner& at, std::uint32_t single,
                                    Way way);
  [[nodiscard]] bool Smooth(std::uint32_t made, Way way);

  RegionWriter& writer_;
  std::vector<Link> links_;
  std::vector<Waiting> waiting_;
  std::uint32_t free_ = kNone;
  std::uint64_t steps_ = 0;
};

}  // namespace VORNEX
