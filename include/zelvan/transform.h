/// @file
/// Transforms: a matrix kept together with its inverse, so that going back never
/// costs an inversion; view frames; directions; projection along a line.
///
/// A point p goes to p * t.mDir, and back by p * t.mInv. As with matrices, a * b
/// applies a first, then b. Angles in radians, counter-clockwise about an axis
/// seen from its tip. Every operation writes both matrices, and they stay inverse
/// to each other within rounding, but for two cases that are the caller's to
/// avoid: S with a factor of 0, and view_tform with axes not at right angles.
///
///     const TFORM t = TFORM::R(0, 0, angle) * TFORM::T(10, 0, 0);   // turn, then move
///     const VECTF there = p * t.mDir;
///     const VECTF back = there * t.mInv;
#ifndef ZELVAN_TRANSFORM_H
#define ZELVAN_TRANSFORM_H

#include <zelvan/export.h>
#include <zelvan/matrix.h>
#include <zelvan/vector.h>

/// A transform and its inverse. Plain data, copied whole; unset until filled.
struct ZELVAN_API TFORM {
  MATRX mDir;  ///< there
  MATRX mInv;  ///< and back

  /// Copies every number.
  ZELVAN_API_INLINE TFORM& operator=(const TFORM& other) = default;

  /// The identity: the same object on every call; static initialisers may use it.
  [[nodiscard]] static const TFORM& E() noexcept;
  /// Translation.
  [[nodiscard]] static TFORM T(double x, double y, double z) noexcept;
  /// Translation by v.
  [[nodiscard]] static TFORM T(const VECTF& v) noexcept;
  /// Scaling along the axes. A factor of 0 puts an infinity into mInv.
  [[nodiscard]] static TFORM S(double sx, double sy, double sz) noexcept;
  /// Scaling by the components of v.
  [[nodiscard]] static TFORM S(const VECTF& v) noexcept;
  /// Rotation about the fixed axes X, then Y, then Z (radians).
  [[nodiscard]] static TFORM R(double ax, double ay, double az) noexcept;
  /// Rotation by the components of v (radians).
  [[nodiscard]] static TFORM R(const VECTF& v) noexcept;

  /// The two matrices exchanged; no arithmetic.
  [[nodiscard]] TFORM Inverse() const noexcept;

  /// Becomes the rotation about `center` (null for the origin) that turns +Z onto
  /// `normal`, or with `toZ` the other way: see MATRX::CalcNMatrx.
  void CalcNTform(const VECTF* center, const VECTF& normal, bool toZ) noexcept;
};

/// a, then b. The result may overwrite either operand.
[[nodiscard]] ZELVAN_API TFORM operator*(const TFORM& a, const TFORM& b) noexcept;

/// Carries v as a direction (untouched by the translation) through t.mDir, or
/// through t.mInv with `useInverse`. `out` may be `v`.
ZELVAN_API void tform_direct(VECTF* out, const VECTF& v, const TFORM& t, bool useInverse) noexcept;

/// t expressed in a basis: into the basis, t there, and back, which is
/// basis.mDir * t * basis.mInv. `out` may be `basis` or `t`.
ZELVAN_API void tform_InBasis(TFORM* out, const TFORM& basis, const TFORM& t) noexcept;

/// The transform between the world and a frame.
///
///         yAxis  zAxis              world (x, y, z)
///            ^  ^                      |      ^
///            | /                 mDir  |      |  mInv       toWorld false;
///            |/                        v      |             true: the other
///     origin o----> xAxis       frame (u, v, w)             way round
///
///     u, v, w  =  e1, e2, e3 . (p - origin)
///     p        =  origin + u e1 + v e2 + w e3
///
/// The axes are brought to unit length e1, e2, e3 (a zero axis stays zero). That
/// they stand at right angles is the caller's duty.
ZELVAN_API void view_tform(TFORM* out, bool toWorld, const VECTF& origin, const VECTF& xAxis,
                           const VECTF& yAxis, const VECTF& zAxis) noexcept;

/// Carries p along the z axis of one frame onto the xy plane of another.
///
///             p *            d: z axis of `line`, either way along it
///                \ d
///      n ^        \          n: z axis of `plane`
///        |         v
///     -------------*----     the plane n . x = n . T
///                 out
///
/// n and d are row 2 of the two transforms' mInv, T is the translation row of
/// plane.mDir: for a view_tform with toWorld false, n and d are the frames' unit z
/// axes. T counts in world coordinates, so the plane passes through the frame's
/// origin when that is the world's, or when the transform is a translation. For any
/// other frame shift the points first: project p - origin onto the frame's axes at
/// (0, 0, 0), and add the origin to the result.
/// @return false, with *out untouched, when |d . n| <= 1e-6 (absolute: the cosine
///         between the two axes when both are of unit length). `out` may be `p`.
ZELVAN_API bool Point2Plain(const TFORM& plane, const TFORM& line, const VECTF& p,
                            VECTF* out) noexcept;

#endif
