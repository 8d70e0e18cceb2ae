// Queries (zelvan/query.h, and those of `vec` in zelvan/vector.h): intersections,
// the nearest point, arcs, angles and bearings. Outputs are stored last, so that
// they may be inputs too.
#include <zelvan/query.h>

#include <cmath>
#include <utility>

#include "math/algebra.h"

using algebra::Cross2;
using algebra::Dot;
using algebra::Minus;

namespace {

// ---- Planar intersection --------------------------------------------------

constexpr double kSnap = 1e-4;  // of a position along a segment; of a length when touching

VECTF Flat(const VECTF& v) noexcept {
  return {v.x, v.y, 0.0};
}

// Where two lines cross at position t of the first and u of the second, f = a1 - a2;
// the end points attract, the first that is near enough wins.
VECTF CrossingPoint(const VECTF& a1, const VECTF& a2, const VECTF& b1, const VECTF& b2,
                    const VECTF& f, double t, double u) noexcept {
  if (std::abs(t) <= kSnap) return Flat(a1);
  if (std::abs(u) <= kSnap) return Flat(b1);
  if (std::abs(t - 1.0) <= kSnap) return Flat(a2);
  if (std::abs(u - 1.0) <= kSnap) return Flat(b2);
  return {a1.x - t * f.x, a1.y - t * f.y, 0.0};
}

bool Beyond(double position) noexcept {
  return position < -kSnap || position > 1.0 + kSnap;
}

// A point on a line, with the key that orders the points along it.
struct Keyed {
  const VECTF* point;
  double key;
};

// The key grows as x falls, and as y falls on an upright line; `origin` has 0.
Keyed KeyFrom(const VECTF& origin, const VECTF* q) noexcept {
  const double dx = origin.x - q->x;
  const double dy = origin.y - q->y;
  const bool positive = origin.x > q->x || (origin.x == q->x && origin.y > q->y);
  const double square = dx * dx + dy * dy;
  return {q, positive ? square : -square};
}

// The common stretch of two segments on one line; see vec::isect2 for the result.
unsigned int Overlap(const VECTF* a1, const VECTF* a2, const VECTF* b1, const VECTF* b2,
                     VECTF* out1, VECTF* out2) noexcept {
  Keyed aFirst = {a1, 0.0};
  Keyed aSecond = KeyFrom(*a1, a2);
  Keyed bFirst = KeyFrom(*a1, b1);
  Keyed bSecond = KeyFrom(*a1, b2);
  if (aSecond.key < 0.0) std::swap(aFirst, aSecond);
  if (bFirst.key > bSecond.key) std::swap(bFirst, bSecond);
  if (aSecond.key < bFirst.key || aFirst.key > bSecond.key) return 0;

  const VECTF from = Flat(*(aFirst.key < bFirst.key ? bFirst : aFirst).point);
  const VECTF to = Flat(*(aSecond.key < bSecond.key ? aSecond : bSecond).point);
  *out1 = from;
  *out2 = to;
  return std::abs(from.x - to.x) <= kSnap && std::abs(from.y - to.y) <= kSnap ? 1 : 2;
}

// ---- Arcs -----------------------------------------------------------------

// Whether the counter-clockwise arc through p2 runs from p3 to p1, by the cross
// products of the three radii. Where p2 and p3 lie opposite each other the second
// is 0 either way, and the sense of the triple decides.
bool RunsFromLast(const VECTF& r1, const VECTF& r2, const VECTF& r3, bool clockwise) noexcept {
  const double c12 = Cross2(r1, r2);
  const double c23 = Cross2(r2, r3);
  const double c13 = Cross2(r1, r3);
  if (c23 == 0.0 && c12 < 0.0) return clockwise;
  return ((c12 < 0.0) == (c23 > 0.0) && c13 > 0.0) || (c12 < 0.0 && c23 < 0.0);
}

// ---- Whole turns ----------------------------------------------------------

// Adds `turn` to `value` one at a time until it is not negative, to the last bit,
// but in few steps. Between two powers of two all sums are rounded to one spacing,
// so every addition there moves the value by the same amount, and a run of them is
// one exact multiplication. (A sum half-way between two neighbours goes to the even
// one. After one addition the value is even where that can happen, and stays so:
// hence the amount is measured on the second addition.) Each pass of the loop
// leaves a power of two behind or is one of a few near it. Where a turn changes
// nothing the loop could never end: reduced exactly.
double AddTurns(double value, double turn) noexcept {
  while (value < 0.0) {
    const double next = value + turn;
    if (next == value) {
      const double rest = std::fmod(value, turn);
      return rest < 0.0 ? rest + turn : rest;
    }
    value = next;
    if (value > -4.0 * turn) continue;
    const double step = (value + turn) - value;
    const double edge = -std::ldexp(1.0, std::ilogb(value));
    const double additions = std::floor((edge - value) / step) - 2.0;
    if (additions > 0.0) value += additions * step;
  }
  return value;
}

}  // namespace

unsigned int vec::isect2(const VECTF* a1, const VECTF* a2, const VECTF* b1, const VECTF* b2,
                         VECTF* out1, VECTF* out2, bool asLines) noexcept {
  const VECTF f = Minus(*a1, *a2);
  const VECTF e = Minus(*b1, *b2);
  const VECTF g = Minus(*b1, *a1);
  const double d = Cross2(f, e);
  const double n = Cross2(e, g);
  if (d == 0.0) {
    // A point for b has no direction to test against: whether it lies on a is asked of a's.
    const bool point = e.x == 0.0 && e.y == 0.0;
    if ((point ? Cross2(f, g) : n) != 0.0) return 0;
    if (asLines) return 2;
    return Overlap(a1, a2, b1, b2, out1, out2);
  }
  const double t = n / d;
  const double u = Cross2(f, g) / d;
  if (!asLines && (Beyond(t) || Beyond(u))) return 0;
  *out1 = CrossingPoint(*a1, *a2, *b1, *b2, f, t, u);
  return 1;
}

double vec::nearest(const VECTF& a, const VECTF& b, const VECTF& q, VECTF* out) noexcept {
  const auto answer = [out](const VECTF& point, double position) {
    if (out != nullptr) *out = point;
    return position;
  };
  if (q.x == b.x && q.y == b.y && q.z == b.z) return answer(b, 1.0);
  const VECTF d = Minus(b, a);
  if (d.IsZero()) return answer(a, 0.0);
  const VECTF w = Minus(q, a);
  if (w.IsZero()) return answer(a, 0.0);
  const double t = Dot(w, d) / Dot(d, d);
  if (t <= 0.0) return answer(a, 0.0);
  if (t >= 1.0) return answer(b, 1.0);
  return answer(algebra::Along(a, t, d), t);
}

ERR::CODE vec::cross_plane(VECTF* out, const VECTF& p, const VECTF& dir, const VECTF& q,
                           const VECTF& n) noexcept {
  if (dir.IsZero()) return ERR::FAIL;
  const double den = Dot(dir, n);
  if (den == 0.0) return ERR::PARALLEL;
  const double t = Dot(Minus(q, p), n) / den;
  *out = algebra::Along(p, t, dir);
  return ERR::OK;
}

bool mth_calc_arc(double* cx, double* cy, double* r, double* sx, double* sy, double* ex, double* ey,
                  const VECTF& p1, const VECTF& p2, const VECTF& p3) noexcept {
  constexpr double kCollinear = 1e-10;
  const double a = p1.x - p2.x;
  const double b = p1.x - p3.x;
  const double c = p1.y - p2.y;
  const double d = p1.y - p3.y;
  const double e = p1.x * p1.x - p2.x * p2.x + p1.y * p1.y - p2.y * p2.y;
  const double f = p1.x * p1.x - p3.x * p3.x + p1.y * p1.y - p3.y * p3.y;
  const double D = 2.0 * (d * a - c * b);
  if (std::abs(D) < kCollinear) return false;

  const VECTF center((e * d - f * c) / D, (a * f - e * b) / D, 0.0);
  const double radius = vec::dist2(center, p1);
  const bool swapped =
      RunsFromLast(Minus(p1, center), Minus(p2, center), Minus(p3, center), D < 0.0);
  const VECTF start = swapped ? p3 : p1;
  const VECTF end = swapped ? p1 : p3;
  *cx = center.x;
  *cy = center.y;
  *r = radius;
  *sx = start.x;
  *sy = start.y;
  *ex = end.x;
  *ey = end.y;
  return true;
}

double mth_angle_1(const VECTF& a, const VECTF& b, const VECTF& c) noexcept {
  constexpr double kDegenerate = 1e-6;
  const VECTF u = Minus(b, a);
  const VECTF v = Minus(c, a);
  const double lengths = std::sqrt(Dot(v, v) * Dot(u, u));
  if (lengths <= kDegenerate) return 0.0;
  const double cosine = Dot(v, u) / lengths;
  if (cosine >= 1.0) return 0.0;
  if (cosine <= -1.0) return algebra::kPi;
  return std::acos(cosine);
}

double M_G2R(double g) noexcept {
  return AddTurns(algebra::kHalfPi - g * 0.015707963267948967, 6.283185307179586);
}

// The factor is one unit in the last place above the double nearest to 200 / pi.
double M_R2G(double r) noexcept {
  return AddTurns(100.0 - r * 63.66197723675814, 400.0);
}
