// The exact decision of the Delaunay triangulation: on which side of the circle through
// the corners of a triangle its neighbour's far corner lies.
//
// Two triangles share the edge ab, with the corners c and d opposite to it. d lies outside
// the circle through a, b, c where the angles at c and d sum to less than 180 degrees, on
// it where they sum to just that: the sign of
//
//    sin(c + d) = sin c cos d + cos c sin d ~ cross_c dot_d + dot_c cross_d
//
// with the vectors from c and from d to the ends of ab (Lawson 1977, Cline and Renka 1984).
// As a polynomial that is the determinant of the four lifted points, with half of its
// products.
//
// Bit budget, for differences of coordinates below 2^20 in size:
//
//    cross: twice the area of a triangle inside a square of side 2^20 - 1        < 2^40
//    dot: two products of differences                                            < 2^41
//    cross = high * 2^20 + low, 0 <= low < 2^20, so |high|                      <= 2^20
//    high_c dot_d + high_d dot_c, and the same of low                            < 2^62
//    the first of these with the carry from the second, at most 2^42             < 2^63
#pragma once

#include <cstdint>

#include "polygon/grid.h"

namespace VORNEX {

/// (a - c) . (b - c): positive where the angle at c is acute. Exact for grid points.
[[nodiscard]] constexpr std::int64_t Dot(zelvan::GridPoint c, zelvan::GridPoint a,
                                         zelvan::GridPoint b) noexcept {
  return std::int64_t{a.gx - c.gx} * (b.gx - c.gx) + std::int64_t{a.gy - c.gy} * (b.gy - c.gy);
}

/// Where the point d lies, for a, b, c counter-clockwise: positive inside the circle through
/// them, zero on it, negative outside.
[[nodiscard]] constexpr int SideOfCircle(zelvan::GridPoint a, zelvan::GridPoint b,
                                         zelvan::GridPoint c, zelvan::GridPoint d) noexcept {
  constexpr int kLowBits = 20;
  constexpr std::int64_t kLow = (std::int64_t{1} << kLowBits) - 1;
  const std::int64_t crossC = zelvan::Cross(c, a, b);
  const std::int64_t crossD = zelvan::Cross(d, b, a);
  const std::int64_t dotC = Dot(c, a, b);
  const std::int64_t dotD = Dot(d, a, b);
  const std::int64_t low = (crossC & kLow) * dotD + (crossD & kLow) * dotC;
  const std::int64_t high =
      (crossC >> kLowBits) * dotD + (crossD >> kLowBits) * dotC + (low >> kLowBits);
  if (high != 0) return high < 0 ? 1 : -1;
  return (low & kLow) != 0 ? -1 : 0;
}

}  // namespace VORNEX
