// Transforms (zelvan/transform.h). Results are formed apart from the output, so
// that an output may be one of the inputs.
#include <zelvan/transform.h>

#include <cmath>

#include "math/algebra.h"

using algebra::Dot;

namespace {

TFORM Rotation(const VECTF& axis, double angle) noexcept {
  TFORM t;
  t.mDir.RotateScale(nullptr, axis, angle, nullptr);
  t.mInv.RotateScale(nullptr, axis, -angle, nullptr);
  return t;
}

}  // namespace

const TFORM& TFORM::E() noexcept {
  static const TFORM identity = {vec::mE(), vec::mE()};
  return identity;
}

TFORM TFORM::T(double x, double y, double z) noexcept {
  TFORM t = E();
  t.mDir.m[3][0] = x;
  t.mDir.m[3][1] = y;
  t.mDir.m[3][2] = z;
  t.mInv.m[3][0] = -x;
  t.mInv.m[3][1] = -y;
  t.mInv.m[3][2] = -z;
  return t;
}

TFORM TFORM::T(const VECTF& v) noexcept {
  return T(v.x, v.y, v.z);
}

TFORM TFORM::S(double sx, double sy, double sz) noexcept {
  TFORM t = E();
  t.mDir.m[0][0] = sx;
  t.mDir.m[1][1] = sy;
  t.mDir.m[2][2] = sz;
  t.mInv.m[0][0] = 1.0 / sx;
  t.mInv.m[1][1] = 1.0 / sy;
  t.mInv.m[2][2] = 1.0 / sz;
  return t;
}

TFORM TFORM::S(const VECTF& v) noexcept {
  return S(v.x, v.y, v.z);
}

TFORM TFORM::R(double ax, double ay, double az) noexcept {
  return Rotation(vec::vXdir(), ax) * Rotation(vec::vYdir(), ay) * Rotation(vec::vZdir(), az);
}

TFORM TFORM::R(const VECTF& v) noexcept {
  return R(v.x, v.y, v.z);
}

TFORM TFORM::Inverse() const noexcept {
  return {mInv, mDir};
}

void TFORM::CalcNTform(const VECTF* center, const VECTF& normal, bool toZ) noexcept {
  mDir.CalcNMatrx(center, normal, toZ);
  mInv.CalcNMatrx(center, normal, !toZ);
}

TFORM operator*(const TFORM& a, const TFORM& b) noexcept {
  return {a.mDir * b.mDir, b.mInv * a.mInv};
}

void tform_direct(VECTF* out, const VECTF& v, const TFORM& t, bool useInverse) noexcept {
  const MATRX& m = useInverse ? t.mInv : t.mDir;
  const VECTF o = vec::vZero() * m;
  const VECTF q = v * m;
  *out = algebra::Minus(q, o);
}

void tform_InBasis(TFORM* out, const TFORM& basis, const TFORM& t) noexcept {
  const TFORM inBasis = {basis.mDir * t.mDir * basis.mInv, basis.mDir * t.mInv * basis.mInv};
  *out = inBasis;
}

void view_tform(TFORM* out, bool toWorld, const VECTF& origin, const VECTF& xAxis,
                const VECTF& yAxis, const VECTF& zAxis) noexcept {
  const VECTF e1 = xAxis.Normal();
  const VECTF e2 = yAxis.Normal();
  const VECTF e3 = zAxis.Normal();
  const MATRX world = {{{e1.x, e2.x, e3.x, 0.0},
                        {e1.y, e2.y, e3.y, 0.0},
                        {e1.z, e2.z, e3.z, 0.0},
                        {-Dot(e1, origin), -Dot(e2, origin), -Dot(e3, origin), 1.0}}};
  const MATRX frame = {{{e1.x, e1.y, e1.z, 0.0},
                        {e2.x, e2.y, e2.z, 0.0},
                        {e3.x, e3.y, e3.z, 0.0},
                        {origin.x, origin.y, origin.z, 1.0}}};
  out->mDir = toWorld ? frame : world;
  out->mInv = toWorld ? world : frame;
}

bool Point2Plain(const TFORM& plane, const TFORM& line, const VECTF& p, VECTF* out) noexcept {
  constexpr double kParallel = 1e-6;
  const VECTF n(plane.mInv.m[2]);
  const VECTF d(line.mInv.m[2]);
  const double den = Dot(d, n);
  if (std::abs(den) <= kParallel) return false;
  const double k = -Dot(VECTF(plane.mDir.m[3]), n);
  const double lambda = -(Dot(n, p) + k) / den;
  *out = algebra::Along(p, lambda, d);
  return true;
}
