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
// Bit budget, for coordinates of 31 bits, differences of which are below 2^31 in size:
//
//    cross: twice the area of a triangle inside a square of side 2^31 - 1        < 2^62
//    dot: two products of differences                                            < 2^63
//    each of the two products: two words; only their order is asked for
//
// In doubles a product is off by less than 2^-51 of itself: two roundings of factors, and its
// own. Rounding the sum adds as little. So a sum that is larger than 2^-49 of both products has
// the right sign, and products of one sign always make such a sum.
#pragma once

#include <cmath>
#include <compare>
#include <cstdint>

#include "polygon/grid.h"
#include "polygon/nearest_double.h"

namespace VORNEX {

/// (a - c) . (b - c): positive where the angle at c is acute. Exact for coordinates of 31 bits.
[[nodiscard]] constexpr std::int64_t Dot(zelvan::GridPoint c, zelvan::GridPoint a,
                                         zelvan::GridPoint b) noexcept {
  return std::int64_t{a.gx - c.gx} * (b.gx - c.gx) + std::int64_t{a.gy - c.gy} * (b.gy - c.gy);
}

/// The product of the sizes of two numbers, in two words.
struct ProductSize {
  constexpr ProductSize(std::int64_t p, std::int64_t q) noexcept {
    constexpr std::uint64_t half = 0xFFFFFFFFu;
    const std::uint64_t a = SizeOf(p);
    const std::uint64_t b = SizeOf(q);
    const std::uint64_t lows = (a & half) * (b & half);
    const std::uint64_t mixed = (a >> 32) * (b & half) + (lows >> 32);
    const std::uint64_t rest = (a & half) * (b >> 32) + (mixed & half);
    high = (a >> 32) * (b >> 32) + (mixed >> 32) + (rest >> 32);
    low = rest << 32 | (lows & half);
  }

  [[nodiscard]] friend constexpr auto operator<=>(const ProductSize&,
                                                  const ProductSize&) noexcept = default;

  std::uint64_t high;
  std::uint64_t low;

 private:
  static constexpr std::uint64_t SizeOf(std::int64_t p) noexcept {
    const auto bits = static_cast<std::uint64_t>(p);
    return p < 0 ? 0 - bits : bits;
  }
};

/// The sign of p q + r s.
[[nodiscard]] inline int SignOfSum(std::int64_t p, std::int64_t q, std::int64_t r,
                                   std::int64_t s) noexcept {
  const double pq = zelvan::NearestDouble(p) * zelvan::NearestDouble(q);
  const double rs = zelvan::NearestDouble(r) * zelvan::NearestDouble(s);
  if (std::fabs(pq + rs) > 0x1p-49 * (std::fabs(pq) + std::fabs(rs))) return pq + rs > 0 ? 1 : -1;
  const ProductSize first(p, q);
  const ProductSize second(r, s);
  if (first == second) return 0;
  return (first > second ? pq : rs) > 0 ? 1 : -1;
}

/// Where the point d lies, for a, b, c counter-clockwise: positive inside the circle through
/// them, zero on it, negative outside.
[[nodiscard]] inline int SideOfCircle(zelvan::GridPoint a, zelvan::GridPoint b, zelvan::GridPoint c,
                                      zelvan::GridPoint d) noexcept {
  return -SignOfSum(zelvan::Cross(c, a, b), Dot(d, a, b), Dot(c, a, b), zelvan::Cross(d, b, a));
}

}  // namespace VORNEX
