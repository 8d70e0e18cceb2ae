// The two coordinate forms of a polygon and the constants that join them.
//
// World coordinates are IEEE doubles in the host's units. Grid coordinates are
// integers of 20 bits relative to a world box, each axis mapped separately, so
// the scale can differ between x and y. Every product of two coordinate
// differences fits in 42 bits; the engines compute on the grid alone.
#pragma once

#include <compare>
#include <cstdint>
#include <initializer_list>

namespace zelvan {

inline constexpr std::int32_t GRID_MAX = 1048575;    ///< steps across a box, 2^20 - 1
inline constexpr std::int32_t GRID_OFFSET = 524288;  ///< lowest grid coordinate, negated

struct WorldPoint {
  double x;
  double y;
};

struct GridPoint {
  std::int32_t gx;
  std::int32_t gy;

  /// In order of x, then y.
  friend constexpr auto operator<=>(const GridPoint&, const GridPoint&) noexcept = default;
};

struct WorldBox {
  WorldPoint min;
  WorldPoint max;
};

struct GridBox {
  GridPoint min;
  GridPoint max;
};

/// Makes a box hold a point.
constexpr void GrowBox(GridBox& box, GridPoint p) noexcept {
  if (p.gx < box.min.gx) box.min.gx = p.gx;
  if (p.gy < box.min.gy) box.min.gy = p.gy;
  if (p.gx > box.max.gx) box.max.gx = p.gx;
  if (p.gy > box.max.gy) box.max.gy = p.gy;
}

/// Grows a box by the points a and b.
constexpr void MergeBoxes(WorldPoint& boxMin, WorldPoint& boxMax, WorldPoint a,
                          WorldPoint b) noexcept {
  for (const WorldPoint p : {a, b}) {
    if (p.x < boxMin.x) boxMin.x = p.x;
    if (p.y < boxMin.y) boxMin.y = p.y;
    if (p.x > boxMax.x) boxMax.x = p.x;
    if (p.y > boxMax.y) boxMax.y = p.y;
  }
}

/// (b - a) x (c - a): twice the signed area of the triangle a, b, c, positive
/// when it runs counter-clockwise. Exact for grid points.
[[nodiscard]] constexpr std::int64_t Cross(GridPoint a, GridPoint b, GridPoint c) noexcept {
  return std::int64_t{b.gx - a.gx} * (c.gy - a.gy) - std::int64_t{b.gy - a.gy} * (c.gx - a.gx);
}

}  // namespace zelvan
