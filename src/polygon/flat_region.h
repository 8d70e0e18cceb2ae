// A region in three flat arrays, in an order that depends on the region alone.
//
// What holds here:
//  - Ring i owns the points from ringOffsets[i] to ringOffsets[i + 1] - 1; polygon p owns the
//    rings from polygonOffsets[p] to polygonOffsets[p + 1] - 1, its outer ring first.
//  - Rings are simple and begin with their least point (x, then y). Their points are corners,
//    and the places where rings of one polygon touch. Outer rings run counter-clockwise, holes
//    clockwise.
//  - Holes of a polygon, and polygons by their outer rings, ascend as sequences of points.
// So two regions of the same points have the same arrays. Only the parts of an overlay of layers
// also have points on straight edges, where other parts meet; these do not count in that order.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "polygon/grid.h"

namespace zelvan {

struct FlatRegion {
  std::vector<GridPoint> points;
  std::vector<std::uint32_t> ringOffsets{0};
  std::vector<std::uint32_t> polygonOffsets{0};
  /// The points at which rings of one polygon touch, by polygon, then place: those of a touch
  /// follow each other.
  std::vector<std::uint32_t> touches;

  [[nodiscard]] std::size_t Rings() const noexcept { return ringOffsets.size() - 1; }
  [[nodiscard]] std::size_t Polygons() const noexcept { return polygonOffsets.size() - 1; }
  [[nodiscard]] std::span<const GridPoint> Ring(std::size_t i) const noexcept {
    return {points.data() + ringOffsets[i], points.data() + ringOffsets[i + 1]};
  }
  /// Of a polygon, or the number of all points.
  [[nodiscard]] std::uint32_t FirstPoint(std::size_t polygon) const noexcept {
    return ringOffsets[polygonOffsets[polygon]];
  }

  friend bool operator==(const FlatRegion&, const FlatRegion&) = default;
};

/// Some polygons of a region that follow each other. Throws std::bad_alloc.
[[nodiscard]] FlatRegion Polygons(const FlatRegion& region, std::size_t first, std::size_t end);

/// Are the corners of both the same? Then they are the same points of the plane: what stands in
/// straight lines does not count.
[[nodiscard]] bool HaveSameCorners(const FlatRegion& a, const FlatRegion& b) noexcept;

/// Calls visit(points) for each touch of a polygon, with the numbers of the points there.
template <class Visit>
void ForEachTouch(const FlatRegion& region, std::size_t polygon, Visit visit);

template <class Visit>
void ForEachTouch(const FlatRegion& region, std::size_t polygon, Visit visit) {
  const std::uint32_t first = region.FirstPoint(polygon);
  const std::uint32_t last = region.FirstPoint(polygon + 1);
  const auto end = region.touches.end();
  auto begin = std::partition_point(region.touches.begin(), end,
                                    [first](std::uint32_t i) { return i < first; });
  while (begin != end && *begin < last) {
    const auto next = std::find_if(begin, end, [&](std::uint32_t i) {
      return i >= last || region.points[i] != region.points[*begin];
    });
    visit(std::span<const std::uint32_t>(&*begin, static_cast<std::size_t>(next - begin)));
    begin = next;
  }
}

}  // namespace zelvan
