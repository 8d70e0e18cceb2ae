// What the toolkit's sources share: differences and products of vectors, each sum
// in the order x, y, z, and the constants of angles.
#ifndef ZELVAN_MATH_ALGEBRA_H
#define ZELVAN_MATH_ALGEBRA_H

#include <zelvan/vector.h>

namespace algebra {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kHalfPi = 1.5707963267948966;

inline VECTF Minus(const VECTF& a, const VECTF& b) noexcept {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}

inline double Dot(const VECTF& a, const VECTF& b) noexcept {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline double Cross2(const VECTF& a, const VECTF& b) noexcept {
  return a.x * b.y - a.y * b.x;
}

/// The point at t along d from p.
inline VECTF Along(const VECTF& p, double t, const VECTF& d) noexcept {
  return {p.x + t * d.x, p.y + t * d.y, p.z + t * d.z};
}

}  // namespace algebra

#endif
