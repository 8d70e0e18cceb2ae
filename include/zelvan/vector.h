/// @file
/// Vectors of the geometry toolkit: a point or free vector of three doubles, its
/// homogeneous form, and the class `vec` of constants, distances and queries.
///
/// Axes are right-handed: x right, y up the page, z towards the viewer. The planar
/// functions read x and y alone and say so. Coordinates are in the host's own
/// units; every tolerance is absolute in the quantity named with it.
///
/// Nothing here allocates, throws or fails loudly: failure is a result, and then
/// no output is written. Outputs may be the same objects as inputs. Numbers that
/// are not finite propagate into the result. The squares of the coordinates must
/// be in the range of a double (about 1e-150 to 1e150): lengths are not rescaled.
///
///     VECTF out;
///     const VECTF a(0, 0, 0), b(10, 0, 0), q(5, 3, 0);
///     const double t = vec::nearest(a, b, q, &out);     // 0.5, out = (5, 0, 0)
#ifndef ZELVAN_VECTOR_H
#define ZELVAN_VECTOR_H

#include <zelvan/error.h>
#include <zelvan/export.h>

struct MATRX;

/// Homogeneous point: (x, y, z) with a weight w, 1.0 when made from a VECTF.
/// Nothing in the toolkit divides by w.
struct VECTH {
  double x;  ///< first coordinate
  double y;  ///< second coordinate
  double z;  ///< third coordinate
  double w;  ///< weight
};

/// Point or free vector. Plain data, copied member by member.
struct ZELVAN_API VECTF {
  double x;  ///< first coordinate
  double y;  ///< second coordinate
  double z;  ///< third coordinate

  /// Leaves the components unset.
  ZELVAN_API_INLINE VECTF() noexcept {}
  /// Takes the three coordinates.
  ZELVAN_API_INLINE constexpr VECTF(double x_, double y_, double z_) noexcept
      : x(x_), y(y_), z(z_) {}
  /// Reads three numbers, which are not kept.
  ZELVAN_API_INLINE constexpr VECTF(const double* p) noexcept : x(p[0]), y(p[1]), z(p[2]) {}
  /// Reads three numbers and widens them.
  ZELVAN_API_INLINE constexpr VECTF(const float* p) noexcept
      : x(static_cast<double>(p[0])), y(static_cast<double>(p[1])), z(static_cast<double>(p[2])) {}
  VECTF(const VECTF& v) = default;                               ///< copies the coordinates
  ZELVAN_API_INLINE VECTF& operator=(const VECTF& v) = default;  ///< copies the coordinates

  /// True when every component is exactly 0; -0.0 is, 1e-300 is not.
  [[nodiscard]] ZELVAN_API_INLINE bool IsZero() const noexcept {
    return x == 0.0 && y == 0.0 && z == 0.0;
  }
  /// Euclidean length.
  [[nodiscard]] double Length() const noexcept;
  /// The unit vector of the same direction; a vector of length 0 unchanged.
  [[nodiscard]] VECTF Normal() const noexcept;
  /// Becomes its Normal().
  void Normalize() noexcept;

  /// The point with weight 1.
  ZELVAN_API_INLINE operator VECTH() const noexcept { return {x, y, z, 1.0}; }
};

/// Static vector operations; an object of this class holds nothing.
class ZELVAN_API vec {
 public:
  /// There is nothing to assign.
  ZELVAN_API_INLINE vec& operator=(const vec&) noexcept { return *this; }
  vec() = default;
  vec(const vec&) = default;  ///< there is nothing to copy

  /// @name Constants
  /// The same object on every call; static initialisers of the host may use them.
  /// @{
  [[nodiscard]] static const VECTF& vZero() noexcept;  ///< (0, 0, 0)
  [[nodiscard]] static const VECTF& vXdir() noexcept;  ///< (1, 0, 0)
  [[nodiscard]] static const VECTF& vXinv() noexcept;  ///< (-1, 0, 0)
  [[nodiscard]] static const VECTF& vYdir() noexcept;  ///< (0, 1, 0)
  [[nodiscard]] static const VECTF& vYinv() noexcept;  ///< (0, -1, 0)
  [[nodiscard]] static const VECTF& vZdir() noexcept;  ///< (0, 0, 1)
  [[nodiscard]] static const VECTF& vZinv() noexcept;  ///< (0, 0, -1)
  [[nodiscard]] static const MATRX& mE() noexcept;     ///< the identity (zelvan/matrix.h)
  /// @}

  /// True when a and b differ by less than 1e-6 on each axis (absolute, in units
  /// of length; a difference of exactly 1e-6 is too much).
  [[nodiscard]] static bool cmp(const VECTF& a, const VECTF& b) noexcept;
  /// Distance in the xy plane; z is ignored.
  [[nodiscard]] static double dist2(const VECTF& a, const VECTF& b) noexcept;
  /// Distance in space.
  [[nodiscard]] static double dist3(const VECTF& a, const VECTF& b) noexcept;
  /// (b - a) x (c - a): normal to the triangle by the right-hand rule, twice its
  /// area long; zero for collinear points.
  [[nodiscard]] static VECTF calc_normal(const VECTF& a, const VECTF& b, const VECTF& c) noexcept;

  /// Planar intersection of a1-a2 and b1-b2, as segments or, with `asLines`, as
  /// the infinite lines through them. Only x and y are read; z is written as 0.
  ///
  /// Whether the two are parallel, and then on one line, is decided exactly; a
  /// segment whose ends are equal is a point. Where they cross, positions
  /// along each (0 at its first end, 1 at its second) are compared with a
  /// tolerance of 1e-4, absolute in that position: so far beyond an end still
  /// hits, and so near an end the point is that end: a1, else b1, else a2, else b2.
  ///
  /// @return 0  no common point; nothing is written
  /// @return 1  one common point, in *out1. Collinear segments that share no more
  ///            than 1e-4 in x and in y (units of length) write *out2 as well.
  /// @return 2  a common stretch from *out1, its end of larger x (larger y when
  ///            upright), to *out2. With `asLines` the lines coincide and nothing
  ///            is written; out2 is not used then and may be null.
  static unsigned int isect2(const VECTF* a1, const VECTF* a2, const VECTF* b1, const VECTF* b2,
                             VECTF* out1, VECTF* out2, bool asLines) noexcept;

  /// The point of the segment a-b nearest to q, in space and without tolerance.
  /// @param out  receives the point; may be null
  /// @return its position, 0 at a (also when a = b, unless q is that point:
  ///         then 1) to 1 at b
  static double nearest(const VECTF& a, const VECTF& b, const VECTF& q, VECTF* out) noexcept;

  /// The point where the line through p along dir meets the plane through q with
  /// normal n; neither need be a unit vector. There is no tolerance: a line that
  /// is almost parallel gives a distant point.
  /// @return ERR::OK; ERR::FAIL when dir is exactly zero; ERR::PARALLEL when
  ///         dir . n is exactly zero. *out is written on ERR::OK alone.
  static ERR::CODE cross_plane(VECTF* out, const VECTF& p, const VECTF& dir, const VECTF& q,
                               const VECTF& n) noexcept;
};

#endif
