/// @file
/// Circular arcs, the angle at a vertex, and bearings in gon. The intersections
/// and the nearest point are members of `vec` (zelvan/vector.h).
#ifndef ZELVAN_QUERY_H
#define ZELVAN_QUERY_H

#include <zelvan/export.h>
#include <zelvan/vector.h>

/// The circle through three points and the arc that they span, read and written in
/// the xy plane. The arc runs counter-clockwise from (sx, sy) to (ex, ey), by way
/// of p2: from p1 to p3 for a counter-clockwise triple, from p3 to p1 for a
/// clockwise one.
///
///             p2                            p2
///          .-'  '-.                      .-'  '-.
///        p3        p1   start = p1     p1        p3   start = p3
///       end    + c                           + c
///
/// @return false, with all seven outputs untouched, for (nearly) collinear points:
///         when four times the triangle's area is below 1e-10 (absolute, in squared
///         units)
ZELVAN_API bool mth_calc_arc(double* cx, double* cy, double* r, double* sx, double* sy, double* ex,
                             double* ey, const VECTF& p1, const VECTF& p2,
                             const VECTF& p3) noexcept;

/// The angle at a between the rays to b and to c, in space.
/// @return radians, 0 to pi; 0 when the product of the two lengths is 1e-6 or less
///         (absolute, in squared units)
[[nodiscard]] ZELVAN_API double mth_angle_1(const VECTF& a, const VECTF& b,
                                            const VECTF& c) noexcept;

/// Bearing in gon to mathematical angle in radians.
///
///            0 gon                           pi/2
///              |                              |
///      300 ----+---- 100   ->         pi -----+----- 0
///              |                              |
///             200                           3 pi/2
///
///      gon: clockwise from +y         radians: counter-clockwise from +x
///
/// Whole turns are added to a negative result, one after the other; nothing is
/// taken from a large one: -100 gon is pi, and -400 gon is 5 pi/2. (100 gon is
/// rounded to just below 0 and gives 2 pi.)
/// @return radians, not negative. Returns at once for every argument: an angle so
///         large that a turn would no longer change it is reduced exactly; one that
///         is infinite and negative gives NaN.
[[nodiscard]] ZELVAN_API double M_G2R(double g) noexcept;

/// Mathematical angle in radians to bearing in gon: the way back, with the same
/// treatment of whole turns.
/// @return gon, not negative
[[nodiscard]] ZELVAN_API double M_R2G(double r) noexcept;

#endif
