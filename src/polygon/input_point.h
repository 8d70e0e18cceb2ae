// The points of an input contour.
#pragma once

#include <vector>

#include "polygon/grid.h"

namespace zelvan {

/// A point as the host gives it, in its own units; z is carried and dropped.
struct InputPoint {
  double x;
  double y;
  double z;
};
using PointList = std::vector<InputPoint>;

/// The place of an input point; z takes part in no test.
[[nodiscard]] constexpr WorldPoint Planar(const InputPoint& p) noexcept {
  return {p.x, p.y};
}

}  // namespace zelvan
