// Queries against brute force, complex numbers and the plain loop.
#include <complex>
#include <limits>

#include "math/support.h"

namespace {

using Complex = std::complex<double>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kPi = 3.141592653589793;

unsigned int Cross(const std::array<VECTF, 4>& p, bool asLines, VECTF* o1, VECTF* o2) {
  return vec::isect2(&p[0], &p[1], &p[2], &p[3], o1, o2, asLines);
}

// Segments between the points of a small grid, where everything is exact: the
// points common to both, among all multiples of 1/60 along the first (every
// crossing there has a divisor of 60 for its denominator).
TEST(Intersection, AgreesWithBruteForceOnAGrid) {
  int kinds[3] = {0, 0, 0};
  ForSeeds(20000, [&kinds](Random& random) {
    std::array<VECTF, 4> p;
    for (VECTF& v : p) v = VECTF(random.Below(3), random.Below(3), random.In(-1, 1));
    const Complex a1(p[0].x, p[0].y), a(p[1].x - p[0].x, p[1].y - p[0].y);
    const Complex b1(p[2].x, p[2].y), b2(p[3].x, p[3].y);
    std::array<Complex, 61> common;
    int found = 0;
    for (int i = 0; i <= 60; ++i) {
      const Complex q = a1 + a * (i / 60.0);
      if (std::abs(std::abs(q - b1) + std::abs(q - b2) - std::abs(b1 - b2)) > 1e-12) continue;
      if (found == 0 || std::abs(q - common[0]) > 1e-9)
        common[static_cast<std::size_t>(found++)] = q;
    }
    VECTF o1(9, 9, 9), o2(9, 9, 9);
    const unsigned int kind = Cross(p, false, &o1, &o2);
    ASSERT_EQ(kind, found == 0 ? 0u : found == 1 ? 1u : 2u);
    ++kinds[kind];
    if (kind == 0) return ExpectVector(o1, VECTF(9, 9, 9));
    Complex first = common[0], last = common[static_cast<std::size_t>(found - 1)];
    if (first.real() < last.real() || (first.real() == last.real() && first.imag() < last.imag())) {
      std::swap(first, last);
    }
    ExpectVector(o1, VECTF(first.real(), first.imag(), 0), 1e-9);
    if (kind == 2) ExpectVector(o2, VECTF(last.real(), last.imag(), 0), 1e-9);
  });
  for (const int kind : kinds) EXPECT_GT(kind, 500) << "each answer was exercised";
}

TEST(Intersection, ToleranceAlongASegment) {
  VECTF o1, o2;
  const double start = 1e-4, past = std::nextafter(start, 1);
  const struct {
    double x;  // where an upright segment crosses the one from 0 to 1
    bool asLines;
    double want;  // NaN: nowhere
  } cases[] = {{start, false, 0},       {-start, false, 0},
               {past, false, past},     {-past, false, NAN},
               {1 + 0.99e-4, false, 1}, {1 + 1.01e-4, false, NAN},
               {1 - 0.99e-4, false, 1}, {1 + 1.01e-4, true, 1 + 1.01e-4},
               {-0.5e-4, true, 0},      {-past, true, -past}};
  for (const auto& c : cases) {
    o1 = VECTF(9, 9, 9);
    const unsigned int kind = Cross(
        {VECTF(0, 0, 5), VECTF(1, 0, 5), VECTF(c.x, -1, 7), VECTF(c.x, 1, 7)}, c.asLines, &o1, &o2);
    EXPECT_EQ(kind, std::isnan(c.want) ? 0u : 1u) << c.x;
    ExpectVector(o1, kind == 0 ? VECTF(9, 9, 9) : VECTF(c.want, 0, 0), 1e-15);
  }
  // The first end that is near wins: b1 before a2.
  EXPECT_EQ(
      Cross({VECTF(0, 0, 0), VECTF(1, 0, 0), VECTF(1, 5e-5, 0), VECTF(1, 1, 0)}, false, &o1, &o2),
      1u);
  EXPECT_EQ(o1.y, 5e-5);
}

TEST(Intersection, ParallelIsExactAndTouchingIsNot) {
  VECTF o1(9, 9, 9), o2(9, 9, 9);
  const VECTF a1(0, 0, 1), a2(1, 0, 1), b2(3, 0, 1);
  EXPECT_EQ(Cross({a1, a2, VECTF(2, 0, 0), b2}, true, &o1, &o2), 2u);
  EXPECT_EQ(Cross({a1, a2, VECTF(2, 1e-300, 0), VECTF(3, 1e-300, 0)}, true, &o1, &o2), 0u);
  ExpectVector(o2, VECTF(9, 9, 9));
  EXPECT_EQ(Cross({a1, a2, VECTF(1 - 0.99e-4, 0, 0), b2}, false, &o1, &o2), 1u);
  ExpectVector(o2, VECTF(1 - 0.99e-4, 0, 0));
  EXPECT_EQ(Cross({a1, a2, VECTF(1 - 1.01e-4, 0, 0), b2}, false, &o1, &o2), 2u);
}

TEST(Nearest, NoPointOfTheSegmentIsNearer) {
  ForSeeds(300, [](Random& random) {
    const VECTF a = random.Vector(), b = random.Vector(), q = random.Vector();
    VECTF out = q;
    const double t = vec::nearest(a, b, out, &out);
    ExpectVector(out, Plus(a, t, Plus(b, -1, a)), 1e-12);
    EXPECT_EQ(vec::nearest(a, b, q, nullptr), t);
    for (int i = 0; i <= 200; ++i) {
      EXPECT_LE(vec::dist3(out, q), vec::dist3(Plus(a, i / 200.0, Plus(b, -1, a)), q) + 1e-12);
    }
  });
  const VECTF a(1, 2, 3);
  EXPECT_EQ(vec::nearest(a, a, a, nullptr), 1.0);
  EXPECT_EQ(vec::nearest(a, a, VECTF(1, 2, 4), nullptr), 0.0);
}

TEST(Plane, LineMeetsPlaneExactlyUnlessParallel) {
  ForSeeds(100, [](Random& random) {
    const VECTF p = random.Vector(), dir = random.Vector(), n = random.Vector();
    const double t = random.In(-2, 2);
    const VECTF meet = Plus(p, t, dir), side(n.y, -n.x, 0);
    VECTF out;
    ASSERT_EQ(vec::cross_plane(&out, p, dir, Plus(meet, 1, side), n), ERR::OK);
    ExpectVector(out, meet, 1e-8);
  });
  VECTF out(9, 9, 9);
  const VECTF p(0, 0, 5), q(0, 0, 1), n(0, 0, 3);
  EXPECT_EQ(vec::cross_plane(&out, p, VECTF(0, -0.0, 0), q, n), ERR::FAIL);
  EXPECT_EQ(vec::cross_plane(&out, p, VECTF(1, 0, 0), q, n), ERR::PARALLEL);
  ExpectVector(out, VECTF(9, 9, 9));
  EXPECT_EQ(vec::cross_plane(&out, p, VECTF(1, 0, 1e-100), q, n), ERR::OK);
}

TEST(Arc, RunsCounterClockwiseThroughTheMiddlePoint) {
  ForSeeds(2000, [](Random& random) {
    const Complex c(random.In(-5, 5), random.In(-5, 5));
    const double radius = random.In(0.5, 5), from = random.In(-kPi, kPi);
    const double span = random.In(0.1, 6.2), middle = random.In(0.05, 0.95) * span;
    const auto at = [&](double angle) {
      const Complex p = c + std::polar(radius, from + angle);
      return VECTF(p.real(), p.imag(), random.In(-1, 1));
    };
    const VECTF first = at(0), through = at(middle), last = at(span);
    const bool clockwise = random.Below(2) != 0;
    double cx, cy, r, sx, sy, ex, ey;
    ASSERT_TRUE(mth_calc_arc(&cx, &cy, &r, &sx, &sy, &ex, &ey, clockwise ? last : first, through,
                             clockwise ? first : last));
    EXPECT_NEAR(std::abs(Complex(cx, cy) - c), 0.0, 1e-8);
    EXPECT_NEAR(r, radius, 1e-8);
    ExpectVector(VECTF(sx, sy, 0), VECTF(first.x, first.y, 0));
    ExpectVector(VECTF(ex, ey, 0), VECTF(last.x, last.y, 0));
  });
}

TEST(Arc, QuarterPointsAreExact) {
  const VECTF quarter[] = {VECTF(1, 0, 0), VECTF(0, 1, 0), VECTF(-1, 0, 0), VECTF(0, -1, 0)};
  for (int k = 0; k < 64; ++k) {
    const int i = k % 4, second = k / 4 % 4, third = k / 16;
    const int there = (second - i + 4) % 4, on = (third - i + 4) % 4;  // quarters from the first
    if (there == 0 || on == 0 || there == on) continue;
    double cx, cy, r, sx, sy, ex, ey;
    ASSERT_TRUE(mth_calc_arc(&cx, &cy, &r, &sx, &sy, &ex, &ey, quarter[i], quarter[second],
                             quarter[third]));
    ExpectVector(VECTF(cx, cy, r), VECTF(0, 0, 1));
    ExpectVector(VECTF(sx, sy, 0), quarter[there < on ? i : third]);
    ExpectVector(VECTF(ex, ey, 0), quarter[there < on ? third : i]);
  }
}

TEST(Arc, CollinearBoundIsStrict) {
  double v[7] = {9, 9, 9, 9, 9, 9, 9};
  const auto arc = [&v](double h) {  // four times the area is 2 h
    return mth_calc_arc(v, v + 1, v + 2, v + 3, v + 4, v + 5, v + 6, VECTF(0, 0, 0), VECTF(1, 0, 0),
                        VECTF(0, h, 0));
  };
  EXPECT_FALSE(arc(std::nextafter(0.5e-10, 0)));
  for (const double value : v) EXPECT_EQ(value, 9.0);
  EXPECT_TRUE(arc(0.5e-10));
  EXPECT_TRUE(arc(-0.5e-10));
}

TEST(Angle, AgreesWithComplexNumbersAndHasBounds) {
  ForSeeds(300, [](Random& random) {
    const MATRX turn = TFORM::R(random.Vector(3)).mDir;
    const VECTF a = random.Vector();
    const double angle = random.In(0.01, kPi - 0.01);
    const Complex u = std::polar(random.In(1, 5), random.In(0, 6)), v = u * std::polar(2.0, angle);
    EXPECT_NEAR(mth_angle_1(a, Plus(a, 1, VECTF(u.real(), u.imag(), 0) * turn),
                            Plus(a, 1, VECTF(v.real(), v.imag(), 0) * turn)),
                angle, 1e-11);
  });
  const VECTF o(0, 0, 0), x(1, 0, 0);
  EXPECT_EQ(mth_angle_1(o, x, VECTF(-3, 0, 0)), kPi);
  EXPECT_EQ(mth_angle_1(o, x, VECTF(3, 0, 0)), 0.0);
  EXPECT_EQ(mth_angle_1(o, x, VECTF(0, 1e-6, 0)), 0.0);
  EXPECT_EQ(mth_angle_1(o, x, VECTF(0, std::nextafter(1e-6, 1), 0)), kPi / 2);
}

double PlainG2R(double g) {
  double r = 1.5707963267948966 - g * 0.015707963267948967;
  while (r < 0) r += 6.283185307179586;
  return r;
}

double PlainR2G(double r) {
  double g = 100 - r * 63.66197723675814;
  while (g < 0) g += 400;
  return g;
}

TEST(Bearing, SameBitsAsAddingTurnsOneByOne) {
  ForSeeds(400, [](Random& random) {
    const double x = random.In(-1, 1) * std::pow(10.0, random.In(-3, 7));
    EXPECT_EQ(M_G2R(x), PlainG2R(x)) << x;
    EXPECT_EQ(M_R2G(x), PlainR2G(x)) << x;
  });
  EXPECT_EQ(M_G2R(9.87e9), PlainG2R(9.87e9));
  EXPECT_EQ(M_R2G(1.23e9), PlainR2G(1.23e9));
  EXPECT_EQ(M_G2R(100), 6.283185307179586) << "just below 0, then a turn";
  EXPECT_EQ(M_G2R(-100), kPi);
  EXPECT_EQ(M_R2G(kPi / 2), 0.0);
  EXPECT_EQ(M_R2G(-kPi / 2), 200.0);
}

TEST(Bearing, EveryArgumentReturnsAtOnce) {
  for (int e = 30; e < 1024; ++e) {
    const double x = std::ldexp(1.9, e);
    const double r = M_G2R(x), g = M_R2G(x);
    EXPECT_TRUE(r >= 0 && r <= 2 * kPi) << x;
    EXPECT_TRUE((g >= 0 && g <= 400) || x * 64 > 1e308) << x;
    EXPECT_GT(M_R2G(-x), 0.0);
  }
  EXPECT_TRUE(std::isnan(M_G2R(kInfinity)) && std::isnan(M_R2G(NAN)));
  EXPECT_EQ(M_G2R(-kInfinity), kInfinity);
}

}  // namespace
