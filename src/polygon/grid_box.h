// Closed boxes on the grid.
#pragma once

#include "polygon/grid.h"

namespace zelvan {

/// An empty box: grown by a box or a point, it is that box or point.
inline constexpr GridBox kNoBox{{GRID_MAX, GRID_MAX}, {-GRID_MAX, -GRID_MAX}};

inline constexpr GridBox kWholeGrid{{-GRID_OFFSET, -GRID_OFFSET},
                                    {GRID_MAX - GRID_OFFSET, GRID_MAX - GRID_OFFSET}};

constexpr void GrowBox(GridBox& box, const GridBox& other) noexcept {
  GrowBox(box, other.min);
  GrowBox(box, other.max);
}

/// The box and a step more at each side, also beyond the grid.
[[nodiscard]] constexpr GridBox Widened(const GridBox& box) noexcept {
  return {{box.min.gx - 1, box.min.gy - 1}, {box.max.gx + 1, box.max.gy + 1}};
}

[[nodiscard]] constexpr bool Overlap(const GridBox& a, const GridBox& b) noexcept {
  return a.min.gx <= b.max.gx && b.min.gx <= a.max.gx && a.min.gy <= b.max.gy &&
         b.min.gy <= a.max.gy;
}

[[nodiscard]] constexpr bool Contains(const GridBox& box, const GridBox& inner) noexcept {
  return box.min.gx <= inner.min.gx && box.min.gy <= inner.min.gy && inner.max.gx <= box.max.gx &&
         inner.max.gy <= box.max.gy;
}

}  // namespace zelvan
