// Along which axis to sweep, or to cut into slabs: the one on which fewer edges lie beside each
// other.
#pragma once

#include <cstdlib>
#include <span>

#include "polygon/grid.h"

namespace zelvan {

/// The axes exchanged, or not.
[[nodiscard]] constexpr GridPoint Turned(GridPoint p, bool isTurned) noexcept {
  return isTurned ? GridPoint{p.gy, p.gx} : p;
}
[[nodiscard]] constexpr WorldPoint Turned(WorldPoint p, bool isTurned) noexcept {
  return isTurned ? WorldPoint{p.y, p.x} : p;
}

/// How long edges are along both axes, summed. Divided by the extent of a region that is the number
/// of edges which a line across the axis meets on average.
struct AxisLengths {
  double x = 0.0;
  double y = 0.0;

  void Add(std::span<const GridPoint> ring) noexcept {
    GridPoint from = ring.back();
    for (const GridPoint to : ring) {
      x += std::abs(to.gx - from.gx);
      y += std::abs(to.gy - from.gy);
      from = to;
    }
  }

  [[nodiscard]] AxisLengths Per(const GridBox& box) const noexcept {
    return {x / (box.max.gx - box.min.gx), y / (box.max.gy - box.min.gy)};
  }
};

}  // namespace zelvan
