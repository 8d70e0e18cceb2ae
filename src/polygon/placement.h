// Where the points of a region lie in coordinates that it shares with other regions or points.
#pragma once

#include <span>

#include "polygon/flat_region.h"
#include "polygon/grid.h"

namespace zelvan {

/// A point p of a grid lies at scale (middle + p). The scale is a power of two, and the sums are
/// whole numbers of 53 bits at most: so places are exact.
struct Placement {
  WorldPoint middle{0.0, 0.0};
  double scale = 1.0;

  [[nodiscard]] WorldPoint operator()(GridPoint p) const noexcept {
    return {(middle.x + p.gx) * scale, (middle.y + p.gy) * scale};
  }

  friend bool operator==(const Placement& a, const Placement& b) noexcept {
    return a.middle.x == b.middle.x && a.middle.y == b.middle.y && a.scale == b.scale;
  }
};

/// A region with at least one polygon, and where it lies.
struct PlacedRegion {
  const FlatRegion& region;
  std::span<const GridBox> ringBoxes;
  GridBox box;
  Placement place;
};

}  // namespace zelvan
