// Parts of flat regions, and what two have in common (flat_region.h).
#include "polygon/flat_region.h"

namespace zelvan {

namespace {

// The next corner of a ring from i on, or its number of points.
std::size_t CornerFrom(std::span<const GridPoint> ring, std::size_t i) noexcept {
  for (; i < ring.size(); ++i) {
    const GridPoint before = i > 0 ? ring[i - 1] : ring.back();
    const GridPoint after = i + 1 < ring.size() ? ring[i + 1] : ring.front();
    if (Cross(before, ring[i], after) != 0) break;
  }
  return i;
}

bool HaveSameCorners(std::span<const GridPoint> a, std::span<const GridPoint> b) noexcept {
  std::size_t i = CornerFrom(a, 0);
  std::size_t j = CornerFrom(b, 0);
  while (i < a.size() && j < b.size()) {
    if (a[i] != b[j]) return false;
    i = CornerFrom(a, i + 1);
    j = CornerFrom(b, j + 1);
  }
  return i == a.size() && j == b.size();
}

}  // namespace

FlatRegion Polygons(const FlatRegion& region, std::size_t first, std::size_t end) {
  FlatRegion some;
  const std::uint32_t firstRing = region.polygonOffsets[first];
  const std::uint32_t firstPoint = region.FirstPoint(first);
  const std::uint32_t lastPoint = region.FirstPoint(end);
  const GridPoint* points = region.points.data();
  some.points.assign(points + firstPoint, points + lastPoint);
  for (std::size_t i = first + 1; i <= end; ++i) {
    some.polygonOffsets.push_back(region.polygonOffsets[i] - firstRing);
  }
  for (std::size_t i = firstRing + 1; i <= region.polygonOffsets[end]; ++i) {
    some.ringOffsets.push_back(region.ringOffsets[i] - firstPoint);
  }
  const auto touches = region.touches.end();
  auto touch = std::partition_point(region.touches.begin(), touches,
                                    [=](std::uint32_t i) { return i < firstPoint; });
  for (; touch != touches && *touch < lastPoint; ++touch) {
    some.touches.push_back(*touch - firstPoint);
  }
  return some;
}

bool HaveSameCorners(const FlatRegion& a, const FlatRegion& b) noexcept {
  if (a.polygonOffsets != b.polygonOffsets || a.Rings() != b.Rings()) return false;
  for (std::size_t i = 0; i < a.Rings(); ++i) {
    if (!HaveSameCorners(a.Ring(i), b.Ring(i))) return false;
  }
  return true;
}

}  // namespace zelvan
