// Exact predicates on grid points, and vectors between them. Every product of two coordinate
// differences fits in 42 bits (grid.h), and so does every sum of a few.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "polygon/grid.h"
#include "polygon/grid_box.h"

namespace zelvan {

/// The vector from b to a.
[[nodiscard]] constexpr GridPoint Difference(GridPoint a, GridPoint b) noexcept {
  return {a.gx - b.gx, a.gy - b.gy};
}

/// The cross product of two vectors, positive if v lies counter-clockwise of u.
[[nodiscard]] constexpr std::int64_t Cross(GridPoint u, GridPoint v) noexcept {
  return Cross({0, 0}, u, v);
}

/// The scalar product of two vectors.
[[nodiscard]] constexpr std::int64_t Dot(GridPoint u, GridPoint v) noexcept {
  return std::int64_t{u.gx} * v.gx + std::int64_t{u.gy} * v.gy;
}

/// Quadrant of a non-zero vector, 0 to 3 counter-clockwise, each with the axis that it
/// starts from: 0 with +x, 1 with +y, 2 with -x, 3 with -y.
[[nodiscard]] constexpr std::uint32_t Quadrant(GridPoint v) noexcept {
  if (v.gx > 0 && v.gy >= 0) return 0;
  if (v.gx <= 0 && v.gy > 0) return 1;
  if (v.gx < 0 && v.gy <= 0) return 2;
  return 3;
}

/// Counter-clockwise from +x: does the direction of u come before that of v? Neither is zero.
[[nodiscard]] constexpr bool ComesBefore(GridPoint u, GridPoint v) noexcept {
  const std::uint32_t quadrantU = Quadrant(u);
  const std::uint32_t quadrantV = Quadrant(v);
  return quadrantU != quadrantV ? quadrantU < quadrantV : Cross(u, v) > 0;
}

/// Do edges p-q and q-r run back over each other?
[[nodiscard]] constexpr bool FoldsBack(GridPoint p, GridPoint q, GridPoint r) noexcept {
  return Cross(p, q, r) == 0 && Dot(Difference(p, q), Difference(r, q)) > 0;
}

/// Where p lies beyond all pixels that the line from a to b meets: 1 to the left, -1 to the
/// right, 0 if the line comes at least as near as a corner of the pixel of p.
[[nodiscard]] inline int BeyondPixels(GridPoint a, GridPoint b, GridPoint p) noexcept {
  const std::int64_t twice = 2 * Cross(a, b, p);
  const std::int64_t margin = std::int64_t{std::abs(b.gx - a.gx)} + std::abs(b.gy - a.gy);
  return twice > margin ? 1 : twice < -margin ? -1 : 0;
}

/// The box of an edge.
[[nodiscard]] constexpr GridBox BoxOfEdge(GridPoint a, GridPoint b) noexcept {
  return {{std::min(a.gx, b.gx), std::min(a.gy, b.gy)},
          {std::max(a.gx, b.gx), std::max(a.gy, b.gy)}};
}

/// True at least where the edge from a to b meets the pixel of p: near its line and its box.
[[nodiscard]] inline bool MayMeetPixel(GridPoint a, GridPoint b, GridPoint p) noexcept {
  return Contains(Widened(BoxOfEdge(a, b)), {p, p}) && BeyondPixels(a, b, p) == 0;
}

/// Does the edge from a to b have a point in the closed box?
[[nodiscard]] inline bool EdgeMeetsBox(GridPoint a, GridPoint b, const GridBox& box) noexcept {
  if (!Overlap(BoxOfEdge(a, b), box)) return false;
  const auto [low, high] =
      std::minmax({Cross(a, b, box.min), Cross(a, b, {box.max.gx, box.min.gy}),
                   Cross(a, b, box.max), Cross(a, b, {box.min.gx, box.max.gy})});
  return low <= 0 && high >= 0;
}

/// Does the edge from a to b pass the line half a step above a row? No vertex lies there.
[[nodiscard]] constexpr bool PassesAbove(std::int32_t row, GridPoint a, GridPoint b) noexcept {
  return (a.gy <= row) != (b.gy <= row);
}

/// Takes neighbours that are equal to one, in a list whose equals follow each other.
template <class T>
void DropRepeats(std::vector<T>& sorted) noexcept {
  sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
}

}  // namespace zelvan
