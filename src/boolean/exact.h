// Exact arithmetic of the sweep: the crossing point of two segments as a pair of
// rationals, and its way to the grid.
//
// The bit budget, all in signed 64 bits. A coordinate is below 2^19 in magnitude
// (or equal), a difference of two below 2^20, so
//   a product of two differences                 below 2^40
//   D and N, differences of two such             below 2^41
//   coordinate * D + difference * N              below 2^60 + 2^61 < 2^62
#pragma once

#include <cstdint>

#include "polygon/grid.h"

namespace zelvan {

namespace budget {
inline constexpr std::int64_t kDifference = GRID_MAX;
inline constexpr std::int64_t kProduct = kDifference * kDifference;
inline constexpr std::int64_t kDeterminant = 2 * kProduct;
inline constexpr std::int64_t kNumerator = GRID_OFFSET * kDeterminant + kDifference * kDeterminant;
inline constexpr std::int64_t kTwiceY = 2 * (GRID_OFFSET * kDifference + kDifference * kDifference);
static_assert(kDifference < std::int64_t{1} << 20);
static_assert(kDeterminant < std::int64_t{1} << 41);
static_assert(kNumerator < std::int64_t{1} << 62);
static_assert(kTwiceY < std::int64_t{1} << 42);
static_assert(2 * kDeterminant < std::int64_t{1} << 42, "twice a remainder, in RoundRatio");
}  // namespace budget

/// A rational brought to the grid, and the sign of (true value - rounded value).
struct Rounded {
  std::int32_t value;
  std::int32_t sign;
};

/// num / den, den > 0, to the nearest integer, halves upward.
[[nodiscard]] constexpr Rounded RoundRatio(std::int64_t num, std::int64_t den) noexcept {
  const std::int64_t q = num / den;
  const std::int64_t r = num % den;
  const auto result = [](std::int64_t value, std::int32_t sign) {
    return Rounded{static_cast<std::int32_t>(value), sign};
  };
  if (num >= 0) {
    if (2 * r >= den) return result(q + 1, -1);
    return result(q, r != 0 ? 1 : 0);
  }
  if (-2 * r > den) return result(q - 1, 1);
  return result(q, r != 0 ? -1 : 0);
}

/// The common point (xNum / den, yNum / den) of the lines of two segments.
struct Crossing {
  std::int64_t xNum;
  std::int64_t yNum;
  std::int64_t den;  ///< never negative
  bool counts;       ///< strictly between the ends of both segments, in (x, then y) order
};

/// The crossing of segments a0 a1 and b0 b1, each given with its end that comes
/// first in (x, then y) order first. Parallel segments have none.
[[nodiscard]] constexpr Crossing FindCrossing(GridPoint a0, GridPoint a1, GridPoint b0,
                                              GridPoint b1) noexcept {
  const std::int64_t ax = a0.gx - a1.gx;
  const std::int64_t ay = a0.gy - a1.gy;
  const std::int64_t bx = b0.gx - b1.gx;
  const std::int64_t by = b0.gy - b1.gy;
  std::int64_t d = ax * by - ay * bx;
  std::int64_t n = std::int64_t{b0.gy - a0.gy} * bx - std::int64_t{b0.gx - a0.gx} * by;
  if (d == 0) return {0, 0, 0, false};
  if (d < 0) {
    d = -d;
    n = -n;
  }
  const Crossing c{a0.gx * d - ax * n, a0.gy * d - ay * n, d, true};
  const auto before = [&](GridPoint p) {
    const std::int64_t x = p.gx * d;
    return c.xNum < x || (c.xNum == x && c.yNum < p.gy * d);
  };
  const auto after = [&](GridPoint p) {
    const std::int64_t x = p.gx * d;
    return c.xNum > x || (c.xNum == x && c.yNum > p.gy * d);
  };
  return {c.xNum, c.yNum, d, before(a1) && before(b1) && after(a0) && after(b0)};
}

}  // namespace zelvan
