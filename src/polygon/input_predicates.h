// The predicates that judge input contours, on the doubles as given.
//
// IsCollinear is the plain double expression against an absolute tolerance. Side
// is exact, so aligned edges far apart are never called a crossing by rounding.
#pragma once

#include "polygon/build_shape.h"

namespace zelvan {

/// Absolute, on a cross product of coordinate differences, so in squared units.
inline constexpr double kCollinearTolerance = 1e-5;

/// True when the cross product of (a - b) and (a - c) lies strictly within the
/// tolerance; so also when a equals b or c.
[[nodiscard]] bool IsCollinear(const InputPoint& a, const InputPoint& b,
                               const InputPoint& c) noexcept;

/// The sign, -1, 0 or 1, of (a.x - b.x)(c.y - b.y) - (a.y - b.y)(c.x - b.x).
/// Swapping a and c changes it, turning the three round does not. A floating
/// filter, then exact expansions (Shewchuk, "Adaptive Precision Floating-Point
/// Arithmetic and Fast Robust Geometric Predicates", 1997). Exact for finite
/// differences, as long as no coordinate but 0 is 2^485 times smaller than the
/// largest of its axis.
[[nodiscard]] int SideSign(const InputPoint& a, const InputPoint& b, const InputPoint& c) noexcept;

/// True when SideSign is positive; zero counts as false.
[[nodiscard]] inline bool Side(const InputPoint& a, const InputPoint& b,
                               const InputPoint& c) noexcept {
  return SideSign(a, b, c) > 0;
}

/// Whether segments (p0, p1) and (q0, q1) cross by the strict side tests: a point
/// exactly on the other segment's line counts as lying on its false side.
[[nodiscard]] bool SegmentsCross(const InputPoint& p0, const InputPoint& p1, const InputPoint& q0,
                                 const InputPoint& q1) noexcept;

}  // namespace zelvan
