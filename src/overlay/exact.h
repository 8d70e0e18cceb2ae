// The exact arithmetic of the overlay engine, in 64 bits.
//
// The bit budget, for coordinates in [-2^30, 2^30):
//
//   difference of two coordinates, d                |d| <= 2^31 - 1
//   product of two differences                      < 2^62
//   determinant, the difference of two products     < 2^63
//   height at a column's edge, twice: (2x - 2a) d   < 2^63, where a <= x + 1/2
//   crossing: 0 < n < den, determinants both; the remainder d n - q den, |.| <= den, modulo 2^64
#pragma once

#include <cstdint>

#include "overlay/edges.h"
#include "polygon/grid.h"
#include "polygon/nearest_double.h"

namespace zelvan::overlay {

namespace budget {
inline constexpr std::int64_t kCoordinate = std::int64_t{1} << 30;
inline constexpr std::int64_t kDifference = 2 * kCoordinate - 1;
static_assert(kDifference <= INT32_MAX);
static_assert(kDifference * kDifference <= (INT64_MAX - 1) / 2, "a determinant");
static_assert((2 * kDifference + 1) <= INT64_MAX / kDifference, "twice a height");
}  // namespace budget

/// Where p lies of the line through two points, the first before the second: above 0 left of
/// it, which is above a line that runs to the right.
[[nodiscard]] inline std::int64_t SideOf(GridPoint low, GridPoint high, GridPoint p) noexcept {
  return Cross(low, high, p);
}

/// A number brought to the grid, and the sign of (true value - rounded value).
struct Rounded {
  std::int32_t value;
  std::int32_t side;
};

/// from + extent n / d to the nearest whole number, halves upward, for 0 < n < d.
/// The quotient of doubles is off by one at most; the remainder, exact modulo 2^64, tells.
[[nodiscard]] inline Rounded RoundedPlace(std::int32_t from, std::int32_t extent, std::int64_t n,
                                          std::int64_t d) noexcept {
  const double ratio = NearestDouble(n) / NearestDouble(d);
  constexpr double noFraction = 0x1.8p52;  // a sum with it has no room for fractions
  auto q = static_cast<std::int32_t>(static_cast<double>(extent) * ratio + noFraction - noFraction);
  const auto product = [](std::int64_t a, std::int64_t b) {
    return static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b);
  };
  auto r = static_cast<std::int64_t>(product(extent, n) - product(q, d));
  if (r >= 0 && r >= d - r) {
    ++q;
    r -= d;
  } else if (r < 0 && -r > d + r) {
    --q;
    r += d;
  }
  return {from + q, (r > 0) - (r < 0)};
}

/// The place where two segments cross, brought to the grid.
struct Crossing {
  GridPoint pixel;
  std::int32_t sideX;  ///< of the true place, seen from the pixel's centre
  std::int32_t sideY;
};

/// The crossing of two segments that cross strictly between their ends.
[[nodiscard]] inline Crossing CrossingOf(GridPoint a0, GridPoint a1, GridPoint b0,
                                         GridPoint b1) noexcept {
  const std::int32_t ax = a1.gx - a0.gx;
  const std::int32_t ay = a1.gy - a0.gy;
  const std::int64_t bx = b1.gx - b0.gx;
  const std::int64_t by = b1.gy - b0.gy;
  std::int64_t d = ax * by - ay * bx;
  std::int64_t n = (std::int64_t{b0.gx} - a0.gx) * by - (std::int64_t{b0.gy} - a0.gy) * bx;
  if (d < 0) {
    d = -d;
    n = -n;
  }
  const Rounded x = RoundedPlace(a0.gx, ax, n, d);
  const Rounded y = RoundedPlace(a0.gy, ay, n, d);
  return {{x.value, y.value}, x.side, y.side};
}

/// The height of an edge that is not vertical at abscissa twiceX / 2, which lies at most half a
/// step outside the edge, to the nearest whole number, halves upward.
[[nodiscard]] inline std::int32_t HeightAt(const Edge& e, std::int64_t twiceX) noexcept {
  const std::int64_t den = 2 * (std::int64_t{e.high.gx} - e.low.gx);
  const std::int64_t num =
      (twiceX - 2 * std::int64_t{e.low.gx}) * (std::int64_t{e.high.gy} - e.low.gy);
  std::int64_t q = num / den;
  std::int64_t r = num % den;
  if (r < 0) {
    r += den;
    --q;
  }
  return static_cast<std::int32_t>(e.low.gy + q + (r >= den - r ? 1 : 0));
}

}  // namespace zelvan::overlay
