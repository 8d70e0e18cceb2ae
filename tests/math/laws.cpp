// What must hold of every answer of the toolkit: each law goes another way to the same answer.
#include <algorithm>
#include <complex>
#include <cstring>
#include <iterator>
#include <vector>

#include "math/numbers.h"

namespace laws {
namespace {

using Complex = std::complex<double>;

constexpr double kPi = 3.141592653589793;
const VECTF kUnset(9, 9, 9), kZero(0, 0, 0), kX(1, 0, 0), kY(0, 1, 0), kZ(0, 0, 1);

// Do all numbers of two records differ by no more? One that is none is like another.
template <class Record>
bool Close(const Record& a, const Record& b, double tolerance = 0.0) {
  double x[sizeof a / sizeof(double)], y[sizeof a / sizeof(double)];
  std::memcpy(x, &a, sizeof a);
  std::memcpy(y, &b, sizeof b);
  return std::equal(std::begin(x), std::end(x), y, [tolerance](double p, double q) {
    return p == q || std::abs(p - q) <= tolerance || (std::isnan(p) && std::isnan(q));
  });
}

VECTF Plus(const VECTF& a, double t, const VECTF& b) {
  return {a.x + t * b.x, a.y + t * b.y, a.z + t * b.z};
}

VECTF Times(const VECTF& a, const VECTF& b) {
  return {a.x * b.x, a.y * b.y, a.z * b.z};
}

VECTF Cross(const VECTF& a, const VECTF& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double Dot(const VECTF& a, const VECTF& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}

VECTF Flat(const Complex& c) {
  return {c.real(), c.imag(), 0};
}

// Rodrigues: p turned by `angle` about the axis through the origin.
VECTF Turned(const VECTF& p, const VECTF& axis, double angle) {
  const double l = std::hypot(axis.x, axis.y, axis.z), c = std::cos(angle);
  const VECTF k = l > 0.0 ? VECTF(axis.x / l, axis.y / l, axis.z / l) : kZ;
  const VECTF level = Plus(Times(p, {c, c, c}), std::sin(angle), Cross(k, p));
  return Plus(level, Dot(k, p) * (1.0 - c), k);
}

MATRX SomeMatrix(Numbers& in) {
  MATRX m;
  for (int i = 0; i < 16; ++i) m.m[i / 4][i % 4] = in.Between(-2, 2);
  return m;
}

TFORM SomeTransform(Numbers& in) {
  const VECTF turn = in.Vector(3), move = in.Vector();
  return TFORM::R(turn) * TFORM::T(move) * TFORM::S(in.Between(0.5, 2), 0.7, in.Between(-2, -1));
}

bool Lengths(Numbers& in) {
  const VECTF a = in.Vector(), b = in.Vector(), c = in.Vector(), u = Plus(b, -1, a);
  const double d = in.Around(1e-6), r = 1.0 / u.Length(), none[] = {0.0, -0.0, 1e-300};
  const VECTF apart[] = {{d, 0, 0}, {0, d, 0}, {0, 0, d}};
  const VECTF z(none[in.Below(3)], none[in.Below(3)], none[in.Below(3)]);
  return Close(vec::dist3(a, b), std::hypot(u.x, u.y, u.z), 1e-13) &&
         Close(vec::dist2(a, b), std::hypot(u.x, u.y), 1e-13) &&
         Close(vec::calc_normal(a, b, c), Cross(u, Plus(c, -1, a))) &&
         Close(u.Normal(), Times(u, {r, r, r})) && Close(z.Normal(), z) &&
         z.IsZero() == (z.x + z.y + z.z == 0.0) &&
         vec::cmp(apart[in.Below(3)], kZero) == (std::abs(d) < 1e-6);
}

bool Products(Numbers& in) {
  const MATRX a = SomeMatrix(in), b = SomeMatrix(in);
  MATRX want = {}, left = a, right = b;
  for (int i = 0; i < 64; ++i) {
    want.m[i / 16][i % 4] += a.m[i / 16][i / 4 % 4] * b.m[i / 4 % 4][i % 4];
  }
  left = left * b;
  right = a * right;
  const double *const row = a.m[2], *const sum = want.m[2];
  const VECTH image = VECTH{row[0], row[1], row[2], row[3]} * b, h = VECTH(VECTF(row)) * b;
  VECTF moved(row);
  return Close(left, want, 1e-14) && Close(right, left) && Close(moved *= b, VECTF(row) * b) &&
         Close(image, {sum[0], sum[1], sum[2], sum[3]}, 1e-14) && Close(moved, {h.x, h.y, h.z});
}

// The determinant is right where the adjugate over it is the inverse.
bool Inverses(Numbers& in) {
  const MATRX m = SomeMatrix(in);
  const double d = in.Around(1e-6);
  MATRX inverse = m, out = m, flat = TFORM::S(1, d * 4, 0.25).mDir;
  const bool singular = std::abs(d) < 1e-6;
  return inverse.Inverse(inverse) == (std::abs(m.det()) < 1e-6 ? 0 : 1.0 / m.det()) &&
         (std::abs(m.det()) < 0.05 || Close(m * inverse, vec::mE(), 1e-9)) &&
         flat.Inverse(out) == (singular ? 0.0 : 1.0 / d) &&
         Close(out, singular ? m : TFORM::S(1, 0.25 / d, 4).mDir, 1e-9);
}

bool Rotations(Numbers& in) {
  VECTF axis = in.Vector();
  for (double* const part : {&axis.x, &axis.y, &axis.z}) *part *= in.Below(3) > 0 ? 1 : 0;
  // The sine of an axis next to Z comes from its cosine, and with fewer digits.
  const double tilt = std::hypot(axis.x, axis.y) / std::hypot(axis.x, axis.y, axis.z);
  const double tolerance = 1e-11 / (tilt > 0 ? tilt : 1), angle = in.Between(-7, 7);
  const VECTF q = in.Vector(), s = in.Vector(), p = in.Vector();
  const VECTF t = Turned(Plus(p, -1, q), axis, angle);
  MATRX turn, scale, shift;
  turn.RotateScale(nullptr, axis, angle, nullptr);
  scale.RotateScale(&q, axis, angle, &s);
  shift.RotateShift(q, axis, angle, s);
  return Close(p * turn, Turned(p, axis, angle), tolerance) && Close(kZero * turn, kZero) &&
         Close(p * scale, Plus(q, 1, Times(t, s)), tolerance) &&
         Close(p * shift, Plus(Plus(q, 1, t), 1, s), tolerance) && (VECTH(p) * shift).w == 1.0;
}

bool Normals(Numbers& in) {
  const VECTF n = in.Vector(in.Flip() ? 10.0 : 1e-3), q = in.Vector(), up = Plus(q, 1, kZ);
  const VECTF level = Plus(q, 1, {-n.y, n.x, 0});  // which the shortest way leaves alone
  const bool toZ = in.Flip();
  TFORM t;
  t.CalcNTform(&q, n, toZ);
  const MATRX& there = toZ ? t.mInv : t.mDir;
  return Close(up * there, Plus(q, 1, n.Normal()), 1e-9) && Close(level * there, level, 1e-8) &&
         Close(t.mDir * t.mInv, vec::mE(), 1e-12);
}

// The sign of a last-bit entry tells the axis of a half turn from its opposite.
bool NormalsNextToZ(Numbers& in) {
  const double d = in.Flip() ? in.Around(1e-6) : 0, x = d * in.Below(5) / 4;
  const VECTF n(in.Flip() ? x : -x, d - x, in.Below(3) - 1.0);
  const VECTF aboutX(n.y < 0 ? 1 : -1, 0, 0), aboutY(0, n.x > 0 ? 1 : -1, 0);
  MATRX m, half;
  m.CalcNMatrx(nullptr, n, false);
  half.RotateScale(nullptr, std::abs(n.x) < std::abs(n.y) ? aboutX : aboutY, kPi, nullptr);
  if (!(std::abs(n.x) + std::abs(n.y) < 1e-6)) return Close(kZ * m, n.Normal(), 1e-8);
  return n.z < 0.0 ? Close(m, half) : Close(m, vec::mE(), 1e-15);
}

bool Transforms(Numbers& in) {
  const VECTF p = in.Vector(), q = in.Vector(), v = in.Vector(), a = in.Vector(3);
  const VECTF pq = Plus(q, -1, p), turned = Turned(Turned(Turned(p, kX, a.x), kY, a.y), kZ, a.z);
  const TFORM s = SomeTransform(in), t = SomeTransform(in), st = s * t;
  VECTF there = pq, back;
  tform_direct(&there, there, t, false);
  tform_direct(&back, there, t, true);
  TFORM apart, asBasis = s, asT = t;
  tform_InBasis(&apart, s, t);
  tform_InBasis(&asBasis, asBasis, t);
  tform_InBasis(&asT, s, asT);
  return Close(p * TFORM::T(v).mDir, Plus(p, 1, v)) && Close(p * TFORM::S(v).mDir, Times(p, v)) &&
         Close(p * TFORM::R(a).mDir, turned, 1e-12) && Close(t.Inverse(), {t.mInv, t.mDir}) &&
         Close(p * st.mDir, p * s.mDir * t.mDir, 1e-11) && Close(p * st.mDir * st.mInv, p, 1e-11) &&
         Close(there, Plus(q * t.mDir, -1, p * t.mDir), 1e-12) && Close(back, pq, 1e-12) &&
         Close(p * apart.mDir, p * s.mDir * t.mDir * s.mInv, 1e-10) && Close(asBasis, apart) &&
         Close(p * apart.mInv, p * s.mDir * t.mInv * s.mInv, 1e-10) && Close(asT, apart);
}

bool Frames(Numbers& in) {
  const MATRX turn = TFORM::R(in.Vector(3)).mDir;
  const VECTF o = in.Vector(), uvw = in.Vector(), x = kX * turn, y = kY * turn, z = kZ * turn;
  const VECTF p = Plus(Plus(Plus(o, uvw.x, x), uvw.y, y), uvw.z, z);
  TFORM view, world;
  view_tform(&view, false, o, x, Plus(y, 2, y), Plus(z, 0.5, z));
  view_tform(&world, true, o, x, y, z);
  return Close(p * view.mDir, uvw, 1e-12) && Close(uvw * view.mInv, p, 1e-12) &&
         Close(world, view.Inverse(), 1e-14);
}

bool OntoPlane(Numbers& in) {
  const VECTF o = in.Vector(), p = in.Vector();
  TFORM plane, line, upright = TFORM::E();
  view_tform(&plane, false, kZero, kX, kY, in.Vector());
  view_tform(&line, false, o, kX, kY, in.Vector());
  const VECTF n(plane.mInv.m[2]), d(line.mInv.m[2]);
  const double slope = upright.mInv.m[2][2] = in.Around(1e-6);
  VECTF out = p, level = p;
  const bool meets = Point2Plain(plane, line, out, &out);
  const bool met = Point2Plain(TFORM::T(o), upright, p, &level);
  return met == (std::abs(slope) > 1e-6) && Close(level, {p.x, p.y, met ? o.z : p.z}, 1e-12) &&
         (std::abs(Dot(n, d)) < 0.01 ||
          (meets && std::abs(Dot(n, out)) < 1e-9 && Cross(Plus(out, -1, p), d).Length() < 1e-9));
}

// Segments between the points of a small grid, where everything is exact: the points common to
// both, among all multiples of 1/60 along the first (every crossing there has a divisor of 60
// for its denominator). Only how long a touch may be depends on the size of the grid.
bool CommonPoints(Numbers& in) {
  const double size = std::ldexp(1, in.Flip() ? -10 - in.Below(7) : -200 * in.Below(2));
  VECTF p[4], o1 = kUnset, o2 = kUnset;
  for (VECTF& v : p) v = VECTF(in.Below(3) * size, in.Below(3) * size, in.Between(-1, 1));
  const Complex a1(p[0].x, p[0].y), b1(p[2].x, p[2].y), b2(p[3].x, p[3].y);
  const Complex a = Complex(p[1].x, p[1].y) - a1, b = b2 - b1;
  const auto parallel = [](Complex u, Complex v) {
    return u.real() * v.imag() == u.imag() * v.real();
  };
  const bool asLines = in.Flip() && parallel(a, b);
  const unsigned int kind = vec::isect2(&p[0], &p[1], &p[2], &p[3], &o1, &o2, asLines);
  const bool untouched = Close(o1, kUnset) && Close(o2, kUnset);
  if (asLines) return untouched && kind == (parallel(b == 0.0 ? a : b, b1 - a1) ? 2u : 0u);
  std::vector<Complex> common;
  for (int i = 0; i <= (a == 0.0 ? 0 : 60); ++i) {
    const Complex q = a1 + a * (i / 60.0);
    if (std::abs(q - b1) + std::abs(q - b2) - std::abs(b) < 1e-12 * size) common.push_back(q);
  }
  if (common.empty()) return kind == 0 && untouched;
  VECTF last = Flat(common.front()), first = Flat(common.back());
  if (first.x < last.x || (first.x == last.x && first.y < last.y)) std::swap(first, last);
  const bool isLong = std::max(first.x - last.x, std::abs(first.y - last.y)) > 1e-4;
  return kind == (isLong ? 2u : 1u) && Close(o1, first, 1e-9 * size) &&
         (common.size() == 1 || Close(o2, last, 1e-9 * size));
}

// Where a position is 0 or 1, within a bound or just not; or anywhere.
double Position(Numbers& in) {
  const int end = in.Below(3);
  return end == 2 ? in.Between(-0.5, 1.5) : end + in.Around(1e-4);
}

// Two unit segments at right angles that cross at chosen positions, in one of many places; ends
// attract.
bool Crossings(Numbers& in) {
  const double t = Position(in), u = Position(in), scale = std::ldexp(1, in.Below(41) - 20);
  const bool swapped = in.Flip(), asLines = in.Flip();
  const auto place = [&](double x, double y) {
    return swapped ? VECTF(y * scale, -x * scale, x + 5) : VECTF(x * scale, y * scale, y - 5);
  };
  const auto at = [](double position, double end) { return std::abs(position - end) <= 1e-4; };
  const auto beyond = [](double position) { return position < -1e-4 || position > 1.0 + 1e-4; };
  const VECTF a1 = place(0, 0), a2 = place(1, 0), b1 = place(t, -u), b2 = place(t, 1 - u);
  VECTF out = b1;
  const unsigned int kind = vec::isect2(&a1, &a2, &out, &b2, &out, nullptr, asLines);
  if (!asLines && (beyond(t) || beyond(u))) return kind == 0 && Close(out, b1);
  const VECTF end = at(t, 0) ? a1 : at(u, 0) ? b1 : at(t, 1) ? a2 : at(u, 1) ? b2 : place(t, 0);
  return kind == 1 && Close(out, {end.x, end.y, 0}, 1e-15 * scale);
}

bool NearestPoints(Numbers& in) {
  const VECTF a = in.Vector(), b = in.Vector(), v = in.Vector(), d = Plus(b, -1, a);
  const VECTF q(in.Flip() ? b.x : v.x, in.Flip() ? b.y : v.y, in.Flip() ? b.z : v.z);
  VECTF out = q, at;
  const double t = vec::nearest(a, b, out, &out);
  for (int i = 0; i <= 50; ++i) {
    if (vec::dist3(out, q) > vec::dist3(Plus(a, i / 50.0, d), q) + 1e-12) return false;
  }
  return Close(out, Plus(a, t, d), 1e-12) && vec::nearest(a, b, q, nullptr) == t &&
         vec::nearest(a, b, b, nullptr) == 1 && vec::nearest(a, b, a, nullptr) == 0 &&
         vec::nearest(a, a, a, nullptr) == 1 && vec::nearest(a, a, v, &at) == 0 && Close(at, a);
}

bool LineAndPlane(Numbers& in) {
  const VECTF p = in.Vector(), dir = in.Vector(), n = in.Vector(), across(-n.y, n.x, 0);
  const VECTF meet = Plus(p, in.Between(-2, 2), dir), q = Plus(meet, 1, across);
  VECTF out = p, no = kUnset, far;
  return vec::cross_plane(&out, out, dir, q, n) == ERR::OK &&
         Close(out, meet, 1e-9 / std::abs(Dot(dir, n))) &&
         vec::cross_plane(&no, p, {0, -0.0, 0}, q, n) == ERR::FAIL &&
         vec::cross_plane(&no, p, across, q, n) == ERR::PARALLEL && Close(no, kUnset) &&
         vec::cross_plane(&far, p, {1, 0, 1e-100}, q, kZ) == ERR::OK;
}

bool Arcs(Numbers& in) {
  const bool exact = in.Flip(), clockwise = in.Flip();  // exact: by quarters
  const Complex quarters[] = {1.0, {0, 1}, -1.0, {0, -1}};
  const Complex c = exact ? 0.0 : Complex(in.Between(-5, 5), in.Between(-5, 5));
  const double radius = exact ? 1 : in.Between(0.5, 5), from = in.Between(-kPi, kPi);
  const double span = in.Between(0.1, 6.2), middle = in.Between(0.05, 0.95) * span;
  const int start = in.Below(4), on = 2 + in.Below(2), there = 1 + in.Below(on - 1);
  const auto at = [&](double angle, int quarter) {
    return Flat(exact ? quarters[(start + quarter) % 4] : c + std::polar(radius, from + angle));
  };
  const VECTF first = at(0, 0), through = at(middle, there), last = at(span, on);
  double v[7], w[7] = {9, 9, 9, 9, 9, 9, 9}, unset[7] = {9, 9, 9, 9, 9, 9, 9};
  const double h = in.Around(0.5e-10);  // half of what is compared with the bound
  const bool found =
      mth_calc_arc(w, w + 1, w + 2, w + 3, w + 4, w + 5, w + 6, kZero, kX, {0, h, 0});
  return mth_calc_arc(v, v + 1, v + 2, v + 3, v + 4, v + 5, v + 6, clockwise ? last : first,
                      through, clockwise ? first : last) &&
         Close(VECTF(v), {c.real(), c.imag(), radius}, exact ? 0 : 1e-8) && v[3] == first.x &&
         v[4] == first.y && v[5] == last.x && v[6] == last.y &&
         found == (std::abs(2 * h) >= 1e-10) && found != Close(w, unset);
}

bool Angles(Numbers& in) {
  const MATRX turn = TFORM::R(in.Vector(3)).mDir;
  const VECTF a = in.Vector();
  const double angle = in.Between(0.01, kPi - 0.01), length = in.Around(1e-6);
  const Complex u = std::polar(in.Between(1, 5), in.Between(0, 6)), v = u * std::polar(2.0, angle);
  const VECTF b = Plus(a, 1, Flat(u) * turn), c = Plus(a, 1, Flat(v) * turn);
  return Close(mth_angle_1(a, b, c), angle, 1e-11) && mth_angle_1(kZero, kX, {-3, 0, 0}) == kPi &&
         mth_angle_1(kZero, kX, {3, 0, 0}) == 0 &&
         mth_angle_1(kZero, kX, {0, length, 0}) == (std::abs(length) > 1e-6 ? kPi / 2 : 0);
}

double PlainTurns(double value, double turn) {
  while (value < 0) value += turn;
  return value;
}

bool Bearings(Numbers& in) {
  const double x = in.Between(-1, 1) * std::pow(10.0, in.Between(-3, 7));
  const double far = std::ldexp(1.9, 30 + in.Below(994)), g = M_R2G(far), r = M_G2R(far);
  return M_G2R(x) == PlainTurns(kPi / 2 - x * 0.015707963267948967, 2 * kPi) &&
         M_R2G(x) == PlainTurns(100 - x * 63.66197723675814, 400) && M_G2R(100) == 2 * kPi &&
         M_R2G(kPi / 2) == 0 && r >= 0 && r <= 2 * kPi &&
         (far * 64 > 1e308 || (g >= 0 && g <= 400)) && M_R2G(-far) > 0;
}

// Ranges hold, and what is refused writes nothing.
bool AnyNumbers(Numbers& in) {
  VECTF p[4], o = kUnset, out;
  for (VECTF& v : p) v = {in.Any(), in.Any(), in.Any()};
  const auto& [a, b, c, d] = p;
  TFORM plane, line;
  plane.CalcNTform(&a, b, in.Flip());
  view_tform(&line, in.Flip(), a, b, c, d);
  MATRX inverse = plane.mDir;
  const double det = line.mDir.det(), r = line.mDir.Inverse(inverse), angle = mth_angle_1(a, b, c);
  const double t = vec::nearest(a, b, c, &out);
  const bool singular = std::abs(det) < 1e-6;
  const bool written = vec::isect2(&a, &b, &c, &d, &o, &o, in.Flip()) > 0 ||
                       vec::cross_plane(&o, a, b, c, d) == ERR::OK ||
                       Point2Plain(plane, line, c, &o);
  return (written || Close(o, kUnset)) && Close(r, singular ? 0 : 1 / det) &&
         (!singular || Close(inverse, plane.mDir)) &&
         !(t < 0 || t > 1 || angle < 0 || angle > kPi) &&
         vec::cmp(a, a) == (std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z)) &&
         !(M_G2R(a.x) < 0 || M_R2G(a.x) < 0);
}

constexpr bool (*kAll[])(Numbers&) = {
    Lengths,      Products, Inverses,  Rotations,    Normals,   NormalsNextToZ,
    Transforms,   Frames,   OntoPlane, CommonPoints, Crossings, NearestPoints,
    LineAndPlane, Arcs,     Angles,    Bearings,     AnyNumbers};

}  // namespace

const int kLaws = static_cast<int>(std::size(kAll));

bool Holds(int law, Numbers& in) {
  return kAll[law](in);
}

}  // namespace laws
