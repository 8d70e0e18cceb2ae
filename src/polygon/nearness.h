// May two segments of a contour that do not meet come in touch once its points are rounded
// to the grid?
//
// Rounding moves a point by half a step along each axis at most, and each point of a
// segment no more. So two segments that are more than a step apart along an axis at each
// of their points stay apart; and where they are not, an end of one comes that near to the
// other. A vertex v and a segment e without v are looked at in three ways:
//  - e is steep: all vertices near e are tried, found in the order from left to right;
//  - e or another segment is the next one above or below v while the sweep handles v: the
//    sweep asks at each vertex (MayBeNear);
//  - a vertex stands close to v: beside it within a step, above or below within a few.
// No more is needed. Let e be flat and near v, with its nearest point at q. If e does not
// pass above or below v, its end does not pass v by more than a step, and it is flat, so
// that end is close to v. If it does, but another segment is next to v, then this one runs
// into the triangle of v, q and the point of e above or below v: it ends there, close to
// v, or it passes between v and q and is near itself.
//
// Steps are counted in doubles, with a reserve that is far above their rounding.
#pragma once

#include <cstdint>
#include <vector>

#include "polygon/input_point.h"

namespace zelvan {

class Nearness {
 public:
  /// @param order  the positions in the list in (x, then y) order
  Nearness(const PointList& list, const std::vector<std::uint32_t>& order);

  /// May segment s come near point i?
  [[nodiscard]] bool MayBeNear(std::uint32_t s, std::uint32_t i) const noexcept;

  /// The first and the third look, at all vertices. True also where it would take too long.
  [[nodiscard]] bool AnyClose() const noexcept;

 private:
  [[nodiscard]] bool AnyNearSteep(std::size_t rank, std::uint32_t s,
                                  std::size_t& work) const noexcept;

  const std::vector<std::uint32_t>& order_;
  std::vector<WorldPoint> points_;  // of the list, in steps from the lower left
};

}  // namespace zelvan
