// Regions behind handles (region.h).
#include "interface/region.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "polygon/contour.h"

namespace {

zelvan::GridBox BoxOf(std::span<const zelvan::GridPoint> points) noexcept {
  zelvan::GridBox box{points.front(), points.front()};
  for (const zelvan::GridPoint p : points) zelvan::GrowBox(box, p);
  return box;
}

// n + 2h - 2 for each polygon, less two for each ring more that touches others in one place.
std::uint32_t CountTriangles(const zelvan::FlatRegion& flat) noexcept {
  std::size_t count = flat.points.size() + 2 * flat.Rings() - 4 * flat.Polygons();
  for (std::size_t i = 0; i < flat.Polygons(); ++i) {
    zelvan::ForEachTouch(flat, i, [&](auto points) { count -= 2 * (points.size() - 1); });
  }
  return static_cast<std::uint32_t>(count);
}

}  // namespace

zelvan_region::zelvan_region(const zelvan::RegionGrid& onGrid, zelvan::FlatRegion&& region,
                             std::uint32_t lostRings)
    : grid(onGrid), flat(std::move(region)), lost(lostRings) {
  ringBoxes.reserve(flat.Rings());
  for (std::size_t i = 0; i < flat.Rings(); ++i) {
    ringBoxes.push_back(BoxOf(flat.Ring(i)));
    if (i == 0) box = ringBoxes.front();
    GrowBox(box, ringBoxes.back().min);
    GrowBox(box, ringBoxes.back().max);
  }
  triangles = CountTriangles(flat);
}

namespace zelvan {

void Release(const zelvan_region* region) noexcept {
  if (region != nullptr && region->handles.fetch_sub(1, std::memory_order_acq_rel) == 1) {
    delete region;
  }
}

RegionHandle MakeRegion(const RegionGrid& grid, FlatRegion&& region, std::uint32_t lost) {
  if (region.Polygons() != 0) return RegionHandle(new zelvan_region(grid, std::move(region), lost));
  return lost != 0 ? RegionHandle(new zelvan_region({}, {}, lost)) : nullptr;
}

RegionHandle Share(const zelvan_region* region) noexcept {
  if (region != nullptr) region->handles.fetch_add(1, std::memory_order_relaxed);
  return RegionHandle(region);
}

RegionHandle Share(const zelvan_region* region, std::uint32_t lost) {
  if (LostOf(region) == lost) return Share(region);
  if (region == nullptr) return MakeRegion({}, {}, lost);
  return MakeRegion(region->grid, FlatRegion(region->flat), lost);
}

bool IsEmpty(const zelvan_region* region) noexcept {
  return region == nullptr || region->flat.Polygons() == 0;
}

std::uint32_t LostOf(const zelvan_region* region) noexcept {
  return region != nullptr ? region->lost : 0;
}

bool IsSame(const zelvan_region* a, const zelvan_region* b) noexcept {
  if (a == b || IsEmpty(a) || IsEmpty(b)) return IsEmpty(a) == IsEmpty(b);
  return a->grid == b->grid && HaveSameCorners(a->flat, b->flat);
}

zelvan_counts CountsOf(const zelvan_region* region) noexcept {
  if (region == nullptr) return {};
  const auto polygons = static_cast<std::uint32_t>(region->flat.Polygons());
  const auto rings = static_cast<std::uint32_t>(region->flat.Rings());
  const auto vertices = static_cast<std::uint32_t>(region->flat.points.size());
  return {polygons, rings, vertices, region->triangles};
}

WorldBox BoundsOf(const zelvan_region& region) noexcept {
  return {region.grid.PlaceOf(region.box.min), region.grid.PlaceOf(region.box.max)};
}

PlacedRegion PlacedIn(const zelvan_region& region, int exponent) noexcept {
  const WorldPoint middle = region.grid.StepsOf(GridPoint{0, 0});
  const double scale = std::ldexp(1.0, region.grid.Exponent() - exponent);
  return {region.flat, region.ringBoxes, region.box, {middle, scale}};
}

}  // namespace zelvan
