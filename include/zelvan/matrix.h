/// @file
/// The toolkit's 4x4 matrix: products, determinant, inverse, and the builders that
/// fill it with a rotation about any axis.
///
/// Points are row vectors, multiplied from the left: p goes to (x, y, z, 1) * M.
/// Rows 0 to 2 are the images of the axes, row 3 that of the origin. So A * B
/// applies A first, then B. Every matrix built here has (0, 0, 0, 1) in column 3.
///
///              | Xx Xy Xz 0 |     where the x axis goes
///     M   =    | Yx Yy Yz 0 |     where the y axis goes
///              | Zx Zy Zz 0 |     where the z axis goes
///              | Tx Ty Tz 1 |     where the origin goes
///
/// Angles are in radians; a positive one turns counter-clockwise as seen from the
/// tip of the axis: about +Z it moves (1, 0, 0) towards +Y.
///
/// Products and inverse are bit for bit the same on every target. The builders are
/// as exact as the C library's sin, cos, atan and acos.
#ifndef ZELVAN_MATRIX_H
#define ZELVAN_MATRIX_H

#include <zelvan/export.h>
#include <zelvan/vector.h>

// The image of a point is compiled into the host where the host's settings cannot
// change a bit of it: no fused operations, no x87 unit, no fast-math. Elsewhere the
// library computes it. (A host function that turns fused operations on for itself
// alone, by a target attribute, cannot be seen here: call operator*= there.)
#if !defined(__FAST_MATH__) && !defined(__ASSOCIATIVE_MATH__) && !defined(_M_FP_FAST)
#if defined(__SSE2_MATH__) && __FLT_EVAL_METHOD__ == 0 && !defined(__FMA__) && !defined(__FMA4__)
#define ZELVAN_ROUNDS_EACH_OPERATION
#elif defined(_MSC_VER) && defined(_M_X64) && !defined(__AVX2__)
#define ZELVAN_ROUNDS_EACH_OPERATION
#endif
#endif

/// 4x4 matrix, row by row: m[row][column]. Plain data, copied whole; unset until filled.
struct ZELVAN_API MATRX {
  double m[4][4];  ///< by row, then column

  /// Copies every number.
  ZELVAN_API_INLINE MATRX& operator=(const MATRX& other) = default;

  /// Determinant by expansion along row 0, without pivoting or tolerance.
  [[nodiscard]] double det() const noexcept;

  /// Writes the inverse (adjugate over determinant) into `out`, which may be this
  /// matrix.
  /// @return 1 / det(); 0.0, with `out` untouched, when |det()| < 1e-6. The bound
  ///         is absolute, on the determinant: a uniform scaling below 0.01 counts
  ///         as singular.
  double Inverse(MATRX& out) const noexcept;

  /// Becomes the rotation by `angle` about the line through `center` along `axis`,
  /// then a scaling of x, y and z by the components of `scale`; `center` stays
  /// fixed throughout: p -> (p - center) * B + center.
  /// @param center  null for the origin
  /// @param angle   in radians
  /// @param axis    of any length; zero is read as +Z
  /// @param scale   null for none
  void RotateScale(const VECTF* center, const VECTF& axis, double angle,
                   const VECTF* scale) noexcept;

  /// Becomes the same rotation, then a shift: p -> (p - center) * B + center + shift.
  void RotateShift(const VECTF& center, const VECTF& axis, double angle,
                   const VECTF& shift) noexcept;

  /// Becomes the rotation about `center` (null for the origin) that turns +Z onto
  /// the direction of `normal`, or with `toZ` the direction of `normal` onto +Z,
  /// by the shortest way. With |normal.x| + |normal.y| < 1e-6 (absolute, in units
  /// of the normal) the normal counts as lying on the Z line: identity when it
  /// points up or is zero, a half turn when it points down.
  void CalcNMatrx(const VECTF* center, const VECTF& normal, bool toZ) noexcept;
};

/// a, then b. The result may overwrite either operand: a = a * b.
[[nodiscard]] ZELVAN_API MATRX operator*(const MATRX& a, const MATRX& b) noexcept;

/// Image of a point. Column 3 is not read and nothing is divided.
ZELVAN_API VECTF& operator*=(VECTF& v, const MATRX& m) noexcept;
/// As operator*=, into a new point.
[[nodiscard]] ZELVAN_FREE_INLINE inline VECTF operator*(const VECTF& v, const MATRX& m) noexcept {
#ifdef ZELVAN_ROUNDS_EACH_OPERATION
  return {v.x * m.m[0][0] + v.y * m.m[1][0] + v.z * m.m[2][0] + m.m[3][0],
          v.x * m.m[0][1] + v.y * m.m[1][1] + v.z * m.m[2][1] + m.m[3][1],
          v.x * m.m[0][2] + v.y * m.m[1][2] + v.z * m.m[2][2] + m.m[3][2]};
#else
  VECTF image = v;
  image *= m;
  return image;
#endif
}

/// Full homogeneous product, column 3 included; not divided by its w.
[[nodiscard]] ZELVAN_API VECTH operator*(const VECTH& v, const MATRX& m) noexcept;

#endif
