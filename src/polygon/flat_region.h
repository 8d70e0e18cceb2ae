// A region in three flat arrays, in an order that depends on the region alone.
//
// What holds here:
//  - Ring i owns the points from ringOffsets[i] to ringOffsets[i + 1] - 1; polygon p owns the
//    rings from polygonOffsets[p] to polygonOffsets[p + 1] - 1, its outer ring first.
//  - Rings are simple, have no points on straight runs, and begin with their least point
//    (x, then y). Outer rings run counter-clockwise, holes clockwise.
//  - Holes of a polygon, and polygons by their outer rings, ascend as sequences of points.
// So two regions of the same points have the same arrays.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "polygon/area.h"
#include "polygon/grid.h"
#include "polygon/records.h"

namespace zelvan {

struct FlatRegion {
  std::vector<GridPoint> points;
  std::vector<std::uint32_t> ringOffsets{0};
  std::vector<std::uint32_t> polygonOffsets{0};

  [[nodiscard]] std::size_t Rings() const noexcept { return ringOffsets.size() - 1; }
  [[nodiscard]] std::size_t Polygons() const noexcept { return polygonOffsets.size() - 1; }
  [[nodiscard]] std::span<const GridPoint> Ring(std::size_t i) const noexcept {
    return {points.data() + ringOffsets[i], points.data() + ringOffsets[i + 1]};
  }

  friend bool operator==(const FlatRegion&, const FlatRegion&) = default;
};

/// The region of a ring of areas whose contours are whole boundary walks of its faces: a vertex
/// with VERTEX_MAY_TOUCH wherever a walk touches itself. Throws std::bad_alloc.
[[nodiscard]] FlatRegion FlattenWalks(const Area* ring);

/// Twice the region's area in squared grid steps.
[[nodiscard]] std::int64_t TwiceArea(const FlatRegion& region) noexcept;

}  // namespace zelvan
