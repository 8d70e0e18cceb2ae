// Random numbers that are the same with every library, tolerances, and matrices
// written out by hand.
#ifndef ZELVAN_TESTS_MATH_SUPPORT_H
#define ZELVAN_TESTS_MATH_SUPPORT_H

#include <gtest/gtest.h>
#include <zelvan/toolkit.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <random>

// The generator bits, turned into doubles by hand.
struct Random {
  explicit Random(std::uint64_t seed) : bits(seed) {}
  double In(double low, double high) {
    return low + (high - low) * static_cast<double>(bits() >> 11) * 0x1p-53;
  }
  int Below(int n) { return static_cast<int>(bits() % static_cast<std::uint64_t>(n)); }
  VECTF Vector(double r = 10.0) {
    const double x = In(-r, r), y = In(-r, r);
    return {x, y, In(-r, r)};
  }
  std::mt19937_64 bits;
};

// Runs `body(random)` for a number of seeds; a failure prints the seed.
template <class Body>
void ForSeeds(std::uint64_t count, Body body) {
  for (std::uint64_t seed = 1; seed <= count && !testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    Random random(seed);
    body(random);
  }
}

inline void ExpectVector(const VECTF& got, const VECTF& want, double tolerance = 0.0) {
  EXPECT_NEAR(got.x, want.x, tolerance);
  EXPECT_NEAR(got.y, want.y, tolerance);
  EXPECT_NEAR(got.z, want.z, tolerance);
}

inline void ExpectMatrix(const MATRX& got, const MATRX& want, double tolerance = 0.0) {
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j) {
      EXPECT_NEAR(got.m[i][j], want.m[i][j], tolerance) << "entry " << i << ", " << j;
    }
  }
}

inline MATRX Diagonal(double a, double b, double c, double d = 1.0) {
  return {{{a, 0, 0, 0}, {0, b, 0, 0}, {0, 0, c, 0}, {0, 0, 0, d}}};
}

inline VECTF Plus(const VECTF& a, double t, const VECTF& b) {
  return {a.x + t * b.x, a.y + t * b.y, a.z + t * b.z};
}

// Rodrigues: p turned by `angle` about the unit axis k through the origin.
inline VECTF Turned(const VECTF& p, const VECTF& axis, double angle) {
  const double l = std::hypot(axis.x, axis.y, axis.z);
  const VECTF k = l > 0.0 ? VECTF(axis.x / l, axis.y / l, axis.z / l) : VECTF(0, 0, 1);
  const VECTF cross(k.y * p.z - k.z * p.y, k.z * p.x - k.x * p.z, k.x * p.y - k.y * p.x);
  const double along = (k.x * p.x + k.y * p.y + k.z * p.z) * (1.0 - std::cos(angle));
  const double c = std::cos(angle);
  return Plus(Plus({p.x * c, p.y * c, p.z * c}, std::sin(angle), cross), along, k);
}

#endif
