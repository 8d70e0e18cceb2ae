// Vectors (zelvan/vector.h): lengths, unit vectors, constants, distances.
//
// The constants are initialised by the compiler: no guard is taken, and no order of
// start-up can show them unset.
#include <zelvan/vector.h>

#include <cmath>

#include "math/algebra.h"

double VECTF::Length() const noexcept {
  return std::sqrt(x * x + y * y + z * z);
}

VECTF VECTF::Normal() const noexcept {
  VECTF unit = *this;
  unit.Normalize();
  return unit;
}

void VECTF::Normalize() noexcept {
  const double length = Length();
  if (length == 0.0) return;
  const double r = 1.0 / length;
  x *= r;
  y *= r;
  z *= r;
}

const VECTF& vec::vZero() noexcept {
  static constexpr VECTF v(0.0, 0.0, 0.0);
  return v;
}

const VECTF& vec::vXdir() noexcept {
  static constexpr VECTF v(1.0, 0.0, 0.0);
  return v;
}

const VECTF& vec::vXinv() noexcept {
  static constexpr VECTF v(-1.0, 0.0, 0.0);
  return v;
}

const VECTF& vec::vYdir() noexcept {
  static constexpr VECTF v(0.0, 1.0, 0.0);
  return v;
}

const VECTF& vec::vYinv() noexcept {
  static constexpr VECTF v(0.0, -1.0, 0.0);
  return v;
}

const VECTF& vec::vZdir() noexcept {
  static constexpr VECTF v(0.0, 0.0, 1.0);
  return v;
}

const VECTF& vec::vZinv() noexcept {
  static constexpr VECTF v(0.0, 0.0, -1.0);
  return v;
}

bool vec::cmp(const VECTF& a, const VECTF& b) noexcept {
  constexpr double kTolerance = 1e-6;
  return std::abs(a.x - b.x) < kTolerance && std::abs(a.y - b.y) < kTolerance &&
         std::abs(a.z - b.z) < kTolerance;
}

double vec::dist2(const VECTF& a, const VECTF& b) noexcept {
  const double dx = a.x - b.x;
  const double dy = a.y - b.y;
  return std::sqrt(dx * dx + dy * dy);
}

double vec::dist3(const VECTF& a, const VECTF& b) noexcept {
  return algebra::Minus(a, b).Length();
}

VECTF vec::calc_normal(const VECTF& a, const VECTF& b, const VECTF& c) noexcept {
  const VECTF u = algebra::Minus(b, a);
  const VECTF v = algebra::Minus(c, a);
  return {u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x};
}
