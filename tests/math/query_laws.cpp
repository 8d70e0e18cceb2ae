// Laws of queries: brute force, complex numbers, the plain loop; and what holds of any numbers.
#include <algorithm>
#include <array>
#include <complex>

#include "math/trial.h"

namespace laws {
namespace {

using Complex = std::complex<double>;

constexpr double kPi = 3.141592653589793;
const VECTF kUnset(9, 9, 9);

VECTF Flat(const Complex& c) {
  return {c.real(), c.imag(), 0};
}

// Segments between the points of a small grid, where everything is exact: the points common to
// both, among all multiples of 1/60 along the first (every crossing there has a divisor of 60
// for its denominator). Only how long a touch may be depends on the size of the grid.
bool CommonPoints(Trial& trial) {
  const double size = trial.Flip() ? 1 : std::ldexp(1, -10 - trial.Below(7));
  VECTF p[4];
  for (VECTF& v : p) v = VECTF(trial.Below(3) * size, trial.Below(3) * size, trial.In(-1, 1));
  const Complex a1(p[0].x, p[0].y), a2(p[1].x, p[1].y), b1(p[2].x, p[2].y), b2(p[3].x, p[3].y);
  std::vector<Complex> common;
  for (int i = 0; i <= 60; ++i) {
    const Complex q = a1 + (a2 - a1) * (i / 60.0);
    const double detour = std::abs(q - b1) + std::abs(q - b2) - std::abs(b1 - b2);
    if (detour < 1e-12 * size && (i == 0 || a1 != a2)) common.push_back(q);
  }
  VECTF o1 = kUnset, o2 = kUnset;
  const unsigned int kind = vec::isect2(&p[0], &p[1], &p[2], &p[3], &o1, &o2, false);
  if (common.empty()) return kind == 0 && Close(o1, kUnset) && Close(o2, kUnset);
  VECTF last = Flat(common.front()), first = Flat(common.back());
  if (first.x < last.x || (first.x == last.x && first.y < last.y)) std::swap(first, last);
  const bool isLong = std::max(first.x - last.x, std::abs(first.y - last.y)) > 1e-4;
  return kind == (isLong ? 2u : 1u) && Close(o1, first, 1e-9 * size) &&
         (common.size() == 1 || Close(o2, last, 1e-9 * size));
}

// Two unit segments at right angles that cross at chosen positions, in one of many places; ends
// attract.
bool Crossings(Trial& trial) {
  const auto position = [&trial] {
    const int where = trial.Below(3);
    return where == 2 ? trial.In(-0.5, 1.5) : where + trial.Around(1e-4);
  };
  const double t = position(), u = position();
  const double scale = std::ldexp(trial.Flip() ? 1 : -1, trial.Below(41) - 20);
  const bool swapped = trial.Flip(), asLines = trial.Flip();
  const auto place = [&](double x, double y, double z) {
    return swapped ? VECTF(y * scale, x * scale, z) : VECTF(x * scale, y * scale, z);
  };
  const auto at = [](double one, double end) { return std::abs(one - end) <= 1e-4; };
  const auto beyond = [](double one) { return one < -1e-4 || one > 1.0 + 1e-4; };
  const VECTF a1 = place(0, 0, 5), a2 = place(1, 0, 6);
  const VECTF b1 = place(t, -u, 7), b2 = place(t, 1 - u, 8);
  VECTF out = kUnset;
  const unsigned int kind = vec::isect2(&a1, &a2, &b1, &b2, &out, nullptr, asLines);
  if (!asLines && (beyond(t) || beyond(u))) return kind == 0 && Close(out, kUnset);
  const VECTF end = at(t, 0) ? a1 : at(u, 0) ? b1 : at(t, 1) ? a2 : at(u, 1) ? b2 : place(t, 0, 0);
  return kind == 1 && Close(out, {end.x, end.y, 0}, 1e-15 * std::abs(scale));
}

bool Parallels(Trial& trial) {
  const double x = trial.Below(5) - 2.0, y = trial.Below(3) - 1.0, aside = trial.Below(2) * 1e-300;
  const VECTF a1(x, y, 1), a2(3 * x, 3 * y, 1), b1(-x, -y, 0), b2(5 * x, 5 * y, 2);
  const VECTF up(0, 1, 0), c1(aside, 2, 0), c2(aside, 3, 0);
  VECTF o1 = kUnset, o2 = kUnset;
  return vec::isect2(&a1, &a2, &b1, &b2, &o1, &o2, true) == 2 &&
         vec::isect2(&b1, &b1, &up, &c2, &o1, &o2, true) == (x == 0 ? 2u : 0u) &&
         vec::isect2(&a1, &a1, &a1, &a1, &o1, &o2, true) == 2 &&
         vec::isect2(&vec::vZero(), &up, &c1, &c2, &o1, &o2, true) == (aside > 0 ? 0u : 2u) &&
         vec::isect2(&vec::vZero(), &up, &c1, &c2, &o1, &o2, false) == 0 && Close(o1, kUnset) &&
         Close(o2, kUnset);
}

bool NearestPoints(Trial& trial) {
  const VECTF a = trial.Vector(), b = trial.Vector(), q = trial.Vector(), d = Plus(b, -1, a);
  VECTF out, at;
  const double t = vec::nearest(a, b, q, &out);
  for (int i = 0; i <= 50; ++i) {
    if (vec::dist3(out, q) > vec::dist3(Plus(a, i / 50.0, d), q) + 1e-12) return false;
  }
  return Close(out, Plus(a, t, d), 1e-12) && vec::nearest(a, b, q, nullptr) == t &&
         vec::nearest(a, b, b, nullptr) == 1 && vec::nearest(a, b, a, nullptr) == 0 &&
         vec::nearest(a, a, a, nullptr) == 1 && vec::nearest(a, a, q, &at) == 0 && Close(at, a);
}

bool LineAndPlane(Trial& trial) {
  const VECTF p = trial.Vector(), dir = trial.Vector(), n = trial.Vector();
  const VECTF meet = Plus(p, trial.In(-2, 2), dir), q = Plus(meet, 1, {n.y, -n.x, 0});
  const double slope = dir.x * n.x + dir.y * n.y + dir.z * n.z;
  VECTF out, no = kUnset, far;
  return vec::cross_plane(&out, p, dir, q, n) == ERR::OK &&
         Close(out, meet, 1e-9 / std::abs(slope)) &&
         vec::cross_plane(&no, p, {0, -0.0, 0}, q, n) == ERR::FAIL &&
         vec::cross_plane(&no, p, {-n.y, n.x, 0}, q, n) == ERR::PARALLEL && Close(no, kUnset) &&
         vec::cross_plane(&far, p, {1, 0, 1e-100}, q, {0, 0, 3}) == ERR::OK;
}

bool Arcs(Trial& trial) {
  const bool exact = trial.Flip(), clockwise = trial.Flip();  // exact: quarters
  const Complex quarters[] = {1.0, {0, 1}, -1.0, {0, -1}};
  const Complex c = exact ? 0.0 : Complex(trial.In(-5, 5), trial.In(-5, 5));
  const double radius = exact ? 1 : trial.In(0.5, 5), from = trial.In(-kPi, kPi);
  const double span = trial.In(0.1, 6.2), middle = trial.In(0.05, 0.95) * span;
  const int start = trial.Below(4), on = 2 + trial.Below(2), there = 1 + trial.Below(on - 1);
  const auto at = [&](double angle, int quarter) {
    return Flat(exact ? quarters[(start + quarter) % 4] : c + std::polar(radius, from + angle));
  };
  const VECTF first = at(0, 0), through = at(middle, there), last = at(span, on);
  double v[7], w[7] = {9, 9, 9, 9, 9, 9, 9}, unset[7] = {9, 9, 9, 9, 9, 9, 9};
  const double h = trial.Around(0.5e-10);  // half of what is compared with the bound
  const bool found = mth_calc_arc(w, w + 1, w + 2, w + 3, w + 4, w + 5, w + 6, vec::vZero(),
                                  vec::vXdir(), {0, h, 0});
  return mth_calc_arc(v, v + 1, v + 2, v + 3, v + 4, v + 5, v + 6, clockwise ? last : first,
                      through, clockwise ? first : last) &&
         Close(VECTF(v), {c.real(), c.imag(), radius}, exact ? 0 : 1e-8) && v[3] == first.x &&
         v[4] == first.y && v[5] == last.x && v[6] == last.y &&
         found == (std::abs(2 * h) >= 1e-10) && found != Close(w, unset);
}

bool Angles(Trial& trial) {
  const MATRX turn = TFORM::R(trial.Vector(3)).mDir;
  const VECTF a = trial.Vector(), x(1, 0, 0), o(0, 0, 0);
  const double angle = trial.In(0.01, kPi - 0.01), length = trial.Around(1e-6);
  const Complex u = std::polar(trial.In(1, 5), trial.In(0, 6)), v = u * std::polar(2.0, angle);
  const VECTF b = Plus(a, 1, Flat(u) * turn), c = Plus(a, 1, Flat(v) * turn);
  return Close(mth_angle_1(a, b, c), angle, 1e-11) && mth_angle_1(o, x, {-3, 0, 0}) == kPi &&
         mth_angle_1(o, x, {3, 0, 0}) == 0 &&
         mth_angle_1(o, x, {0, length, 0}) == (std::abs(length) > 1e-6 ? kPi / 2 : 0);
}

double PlainTurns(double value, double turn) {
  while (value < 0) value += turn;
  return value;
}

bool Bearings(Trial& trial) {
  const double x = trial.In(-1, 1) * std::pow(10.0, trial.In(-3, 7));
  const double far = std::ldexp(1.9, 30 + trial.Below(994)), g = M_R2G(far), r = M_G2R(far);
  return M_G2R(x) == PlainTurns(kPi / 2 - x * 0.015707963267948967, 2 * kPi) &&
         M_R2G(x) == PlainTurns(100 - x * 63.66197723675814, 400) && r >= 0 && r <= 2 * kPi &&
         ((g >= 0 && g <= 400) || far * 64 > 1e308) && M_R2G(-far) > 0 && M_G2R(100) == 2 * kPi;
}

// A query answers the same where its output is its input, and leaves it alone where it has none.
template <class Query>
bool MayOverwrite(const VECTF& input, Query query) {
  VECTF apart = kUnset, over = input;
  return query(input, &apart) == query(over, &over) &&
         Close(over, Close(apart, kUnset) ? input : apart);
}

bool AnyNumbers(Trial& trial) {
  VECTF p[4];
  for (VECTF& v : p) v = {trial.Any(), trial.Any(), trial.Any()};
  const auto [a, b, c, d] = p;
  TFORM plane, line;
  plane.CalcNTform(&a, b, false);
  view_tform(&line, true, a, b, c, d);
  line.mDir.m[0][3] = trial.Any();
  MATRX inverse = plane.mDir;
  const double det = line.mDir.det(), r = line.mDir.Inverse(inverse);
  const double t = vec::nearest(a, b, c, nullptr), angle = mth_angle_1(a, b, c);
  return MayOverwrite(a,
                      [&](const VECTF& in, VECTF* out) {
                        VECTF end;
                        return vec::isect2(&in, &b, &c, &d, out, &end, trial.Flip());
                      }) &&
         MayOverwrite(d,
                      [&](const VECTF& in, VECTF* out) {
                        VECTF end;
                        return vec::isect2(&a, &b, &c, &in, &end, out, false);
                      }) &&
         MayOverwrite(c,
                      [&](const VECTF& in, VECTF* out) { return vec::nearest(a, b, in, out); }) &&
         MayOverwrite(
             a, [&](const VECTF& in, VECTF* out) { return vec::cross_plane(out, in, b, c, d); }) &&
         MayOverwrite(
             c, [&](const VECTF& in, VECTF* out) { return Point2Plain(plane, line, in, out); }) &&
         (std::abs(det) < 1e-6 ? r == 0 && Close(inverse, plane.mDir) : Close(r, 1 / det)) &&
         !(t < 0 || t > 1 || angle < 0 || angle > kPi || M_G2R(a.x) < 0 || M_R2G(a.x) < 0) &&
         vec::cmp(a, a) == std::isfinite(a.x + a.y + a.z);
}

}  // namespace

const std::vector<Law> kQueryLaws = {{"CommonPoints", CommonPoints},
                                     {"Crossings", Crossings},
                                     {"Parallels", Parallels},
                                     {"NearestPoints", NearestPoints},
                                     {"LineAndPlane", LineAndPlane},
                                     {"Arcs", Arcs},
                                     {"Angles", Angles},
                                     {"Bearings", Bearings},
                                     {"AnyNumbers", AnyNumbers}};

}  // namespace laws
