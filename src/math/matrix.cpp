// The 4x4 matrix (zelvan/matrix.h): products, determinant and inverse, rotations.
//
// Sums and products are written in the order in which they are rounded. The loops
// over columns are independent, so vector instructions leave every result alone.
#include <zelvan/matrix.h>

#include <cmath>

#include "math/algebra.h"

using algebra::kHalfPi;
using algebra::kPi;

namespace {

using Rows = double[4][4];

constexpr double kThreeHalvesPi = 4.71238898038469;

// Determinant of what remains when a row and a column are deleted, expanded along
// its first row.
template <int Row, int Column>
double Minor(const Rows& m) noexcept {
  const double* const a = m[Row > 0 ? 0 : 1];
  const double* const b = m[Row > 1 ? 1 : 2];
  const double* const c = m[Row > 2 ? 2 : 3];
  constexpr int i = Column > 0 ? 0 : 1;
  constexpr int j = Column > 1 ? 1 : 2;
  constexpr int k = Column > 2 ? 2 : 3;
  return a[i] * (b[j] * c[k] - b[k] * c[j]) - a[j] * (b[i] * c[k] - b[k] * c[i]) +
         a[k] * (b[i] * c[j] - b[j] * c[i]);
}

double Determinant(const Rows& m) noexcept {
  return m[0][0] * Minor<0, 0>(m) - m[0][1] * Minor<0, 1>(m) + m[0][2] * Minor<0, 2>(m) -
         m[0][3] * Minor<0, 3>(m);
}

// Row `Row` of the adjugate times r: the minors of column `Row`, of alternating
// sign. The sign is given to r, which rounds to the same product.
template <int Row>
void AdjugateRow(const Rows& m, double r, double* out) noexcept {
  const double even = Row % 2 == 0 ? r : -r;
  const double odd = -even;
  out[0] = Minor<0, Row>(m) * even;
  out[1] = Minor<1, Row>(m) * odd;
  out[2] = Minor<2, Row>(m) * even;
  out[3] = Minor<3, Row>(m) * odd;
}

// A unit axis by its spherical angles: (sz cp, sz sp, cz).
struct Direction {
  double cz, sz;  // cosine and sine of the angle from +Z
  double cp, sp;  // cosine and sine of the azimuth
};

double Azimuth(const VECTF& axis) noexcept {
  if (axis.x == 0.0) return axis.y >= 0.0 ? kHalfPi : kThreeHalvesPi;
  const double angle = std::atan(axis.y / axis.x);
  return axis.x < 0.0 ? angle + kPi : angle;
}

Direction DirectionOf(const VECTF& axis) noexcept {
  const double length = axis.Length();
  if (length == 0.0) return {1.0, 0.0, 1.0, 0.0};
  const double azimuth = Azimuth(axis);
  const double cz = axis.z / length;
  return {cz, std::sqrt(1.0 - cz * cz), std::cos(azimuth), std::sin(azimuth)};
}

// Writes the 3x3 block of the rotation about `axis`, and column 3.
void SetRotation(Rows& m, const VECTF& axis, double angle) noexcept {
  const auto [cz, sz, cp, sp] = DirectionOf(axis);
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  const double t = 1.0 - c;
  const double cz2 = cz * cz;
  const double sz2 = 1.0 - cz2;
  const double cp2 = cp * cp;
  const double a = cz2 * c + sz2;

  m[0][0] = a * cp2 + (1.0 - cp2) * c;
  m[0][1] = cz * s + sz2 * sp * cp * t;
  m[0][2] = (cp * cz * t - sp * s) * sz;
  m[1][0] = sz2 * sp * cp * t - cz * s;
  m[1][1] = a * (1.0 - cp2) + cp2 * c;
  m[1][2] = (s * cp + sp * cz * t) * sz;
  m[2][0] = (sp * s + cp * cz * t) * sz;
  m[2][1] = (sp * cz * t - s * cp) * sz;
  m[2][2] = sz2 * c + cz2;

  m[0][3] = 0.0;
  m[1][3] = 0.0;
  m[2][3] = 0.0;
  m[3][3] = 1.0;
}

// Writes the translation that keeps q where it is under the 3x3 block.
void FixPoint(Rows& m, const VECTF& q) noexcept {
  const double target[3] = {q.x, q.y, q.z};
  for (int j = 0; j < 3; ++j) {
    m[3][j] = target[j] - q.x * m[0][j] - q.y * m[1][j] - q.z * m[2][j];
  }
}

struct Turn {
  VECTF axis;
  double angle;
};

// The turn that carries +Z onto `normal`. The comparisons are written so that a
// normal that is no number gives an angle that is none.
Turn TurnFromZ(const VECTF& normal) noexcept {
  constexpr double kTolerance = 1e-6;
  const double x = normal.x;
  const double y = normal.y;
  const double z = normal.z;
  const VECTF axis(-y, x, 0.0);
  if (!(std::abs(axis.x) + std::abs(axis.y) < kTolerance)) {
    return {axis, std::acos(z / std::sqrt(z * z + x * x + y * y))};
  }
  if (!(z < 0.0)) return {axis, z >= 0.0 ? 0.0 : z};
  if (std::abs(x) >= std::abs(y)) return {VECTF(0.0, x > 0.0 ? 1.0 : -1.0, 0.0), kPi};
  return {VECTF(-y > 0.0 ? 1.0 : -1.0, 0.0, 0.0), kPi};
}

}  // namespace

const MATRX& vec::mE() noexcept {
  static constexpr MATRX identity = {
      {{1.0, 0.0, 0.0, 0.0}, {0.0, 1.0, 0.0, 0.0}, {0.0, 0.0, 1.0, 0.0}, {0.0, 0.0, 0.0, 1.0}}};
  return identity;
}

MATRX operator*(const MATRX& a, const MATRX& b) noexcept {
  MATRX c;
  for (int i = 0; i < 4; ++i) {
    const double* const row = a.m[i];
    for (int j = 0; j < 4; ++j) {
      c.m[i][j] = row[0] * b.m[0][j] + row[1] * b.m[1][j] + row[2] * b.m[2][j] + row[3] * b.m[3][j];
    }
  }
  return c;
}

VECTF& operator*=(VECTF& v, const MATRX& m) noexcept {
  v = VECTF(v.x * m.m[0][0] + v.y * m.m[1][0] + v.z * m.m[2][0] + m.m[3][0],
            v.x * m.m[0][1] + v.y * m.m[1][1] + v.z * m.m[2][1] + m.m[3][1],
            v.x * m.m[0][2] + v.y * m.m[1][2] + v.z * m.m[2][2] + m.m[3][2]);
  return v;
}

VECTH operator*(const VECTH& v, const MATRX& m) noexcept {
  double r[4];
  for (int j = 0; j < 4; ++j) {
    r[j] = v.x * m.m[0][j] + v.y * m.m[1][j] + v.z * m.m[2][j] + v.w * m.m[3][j];
  }
  return {r[0], r[1], r[2], r[3]};
}

double MATRX::det() const noexcept {
  return Determinant(m);
}

double MATRX::Inverse(MATRX& out) const noexcept {
  constexpr double kSingular = 1e-6;
  const double d = Determinant(m);
  if (std::abs(d) < kSingular) return 0.0;
  const double r = 1.0 / d;
  MATRX inverse;
  AdjugateRow<0>(m, r, inverse.m[0]);
  AdjugateRow<1>(m, r, inverse.m[1]);
  AdjugateRow<2>(m, r, inverse.m[2]);
  AdjugateRow<3>(m, r, inverse.m[3]);
  out = inverse;
  return r;
}

void MATRX::RotateScale(const VECTF* center, const VECTF& axis, double angle,
                        const VECTF* scale) noexcept {
  SetRotation(m, axis, angle);
  if (scale != nullptr) {
    for (int i = 0; i < 3; ++i) {
      m[i][0] *= scale->x;
      m[i][1] *= scale->y;
      m[i][2] *= scale->z;
    }
  }
  if (center != nullptr) {
    FixPoint(m, *center);
  } else {
    m[3][0] = m[3][1] = m[3][2] = 0.0;
  }
}

void MATRX::RotateShift(const VECTF& center, const VECTF& axis, double angle,
                        const VECTF& shift) noexcept {
  SetRotation(m, axis, angle);
  FixPoint(m, center);
  m[3][0] += shift.x;
  m[3][1] += shift.y;
  m[3][2] += shift.z;
}

void MATRX::CalcNMatrx(const VECTF* center, const VECTF& normal, bool toZ) noexcept {
  const Turn turn = TurnFromZ(normal);
  RotateScale(center, turn.axis, toZ ? -turn.angle : turn.angle, nullptr);
}
