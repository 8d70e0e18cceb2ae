// The side of an edge on which an offset grows: a unit normal, and the arm, the vector from the
// edge to its copy at the distance, rounded to whole steps.
//
// What holds here:
//  - The side lies to the right of the edge: outside of a region, whose rings run with the
//    region on their left.
//  - Both ends of an edge have the same arm, so edge and copy bound a parallelogram, which
//    never turns over: rounding keeps the signs of both coordinates.
//  - Doubles come from +, -, *, / and square roots alone, so they are the same everywhere.
#pragma once

#include <cmath>
#include <cstdint>

#include "polygon/grid.h"

namespace zelvan::offset {

/// A vector of length 1.
struct Direction {
  double x;
  double y;

  friend Direction operator-(Direction d) noexcept { return {-d.x, -d.y}; }
};

[[nodiscard]] inline double Dot(Direction a, Direction b) noexcept {
  return a.x * b.x + a.y * b.y;
}

/// The nearest whole number, the even one of two, below 2^51.
[[nodiscard]] inline double Whole(double v) noexcept {
  constexpr double noFraction = 0x1.8p52;
  return (v + noFraction) - noFraction;
}

/// A vector of whole steps, each coordinate below 2^31.
using Arm = GridPoint;

[[nodiscard]] inline Arm ArmAlong(Direction d, double length) noexcept {
  return {static_cast<std::int32_t>(Whole(d.x * length)),
          static_cast<std::int32_t>(Whole(d.y * length))};
}

/// Above 0 where b points to the left of a.
[[nodiscard]] inline std::int64_t Cross(Arm a, Arm b) noexcept {
  return std::int64_t{a.gx} * b.gy - std::int64_t{a.gy} * b.gx;
}
[[nodiscard]] inline std::int64_t Dot(Arm a, Arm b) noexcept {
  return std::int64_t{a.gx} * b.gx + std::int64_t{a.gy} * b.gy;
}

struct Side {
  Direction normal;
  Arm arm;
};

/// The right side of the edge from p to q, which differ.
[[nodiscard]] inline Side RightSideOf(GridPoint p, GridPoint q, double distance) noexcept {
  const double dx = static_cast<double>(q.gx) - p.gx;
  const double dy = static_cast<double>(q.gy) - p.gy;
  const double length = std::sqrt(dx * dx + dy * dy);
  const Direction normal{dy / length, -dx / length};
  return {normal, ArmAlong(normal, distance)};
}

/// The same side of an edge that runs back.
[[nodiscard]] inline Side Opposite(const Side& side) noexcept {
  return {-side.normal, {-side.arm.gx, -side.arm.gy}};
}

}  // namespace zelvan::offset
