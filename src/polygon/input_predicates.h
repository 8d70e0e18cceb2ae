// The predicates that judge input contours, on the doubles as given.
//
// IsCollinear is the plain double expression against an absolute tolerance. Side
// is exact, so aligned edges far apart are never called a crossing by rounding.
#pragma once

#include <cmath>
#include <limits>

#include "polygon/input_point.h"

namespace zelvan {

/// Absolute, on a cross product of coordinate differences, so in squared units.
inline constexpr double kCollinearTolerance = 1e-5;

/// True when the cross product of (a - b) and (a - c) lies strictly within the
/// tolerance; so also when a equals b or c.
[[nodiscard]] bool IsCollinear(const InputPoint& a, const InputPoint& b,
                               const InputPoint& c) noexcept;

namespace detail {
// Half a unit in the last place of 1, and the bound of the orientation test's
// rounding relative to the sum of its two products (Shewchuk 1997, section 4.3).
inline constexpr double kEpsilon = 1.1102230246251565e-16;
inline constexpr double kFilterBound = (3.0 + 16.0 * kEpsilon) * kEpsilon;
// Below this a product may have lost bits to underflow, and the bound says nothing.
inline constexpr double kSmallestTrusted = 1e-270;

[[nodiscard]] int ExactSideSign(WorldPoint a, WorldPoint b, WorldPoint c) noexcept;
}  // namespace detail

/// The sign, -1, 0 or 1, of (a.x - b.x)(c.y - b.y) - (a.y - b.y)(c.x - b.x).
/// Swapping a and c changes it, turning the three round does not. A floating
/// filter, then exact expansions (Shewchuk, "Adaptive Precision Floating-Point
/// Arithmetic and Fast Robust Geometric Predicates", 1997). Exact for finite
/// differences, as long as no coordinate but 0 is 2^485 times smaller than the
/// largest of its axis.
[[nodiscard]] inline int SideSign(WorldPoint a, WorldPoint b, WorldPoint c) noexcept {
  const double left = (a.x - b.x) * (c.y - b.y);
  const double right = (a.y - b.y) * (c.x - b.x);
  const double determinant = left - right;
  const double size = std::fabs(left) + std::fabs(right);
  if (size > detail::kSmallestTrusted && size <= std::numeric_limits<double>::max() &&
      std::fabs(determinant) > detail::kFilterBound * size) {
    return determinant > 0.0 ? 1 : -1;
  }
  return detail::ExactSideSign(a, b, c);
}

/// True when SideSign is positive; zero counts as false.
[[nodiscard]] inline bool Side(const InputPoint& a, const InputPoint& b,
                               const InputPoint& c) noexcept {
  return SideSign(Planar(a), Planar(b), Planar(c)) > 0;
}

/// Whether segments (p0, p1) and (q0, q1) cross by the strict side tests: a point
/// exactly on the other segment's line counts as lying on its false side.
[[nodiscard]] bool SegmentsCross(const InputPoint& p0, const InputPoint& p1, const InputPoint& q0,
                                 const InputPoint& q1) noexcept;

}  // namespace zelvan
