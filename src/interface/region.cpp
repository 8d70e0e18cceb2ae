// Regions behind handles (region.h).
#include "interface/region.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "polygon/contour.h"
#include "polygon/input_predicates.h"

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

zelvan_region::~zelvan_region() {
  delete locator.load(std::memory_order_acquire);
}

namespace zelvan {

namespace {

bool IsWithin(const RegionGrid& grid, const GridBox& box, WorldPoint steps) noexcept {
  const WorldPoint min = grid.StepsOf(box.min);
  const WorldPoint max = grid.StepsOf(box.max);
  return min.x <= steps.x && steps.x <= max.x && min.y <= steps.y && steps.y <= max.y;
}

// What an edge tells of a point: that it lies on it, or whether the ray from the point to the
// right crosses it. An edge has its lower end and not its upper one.
enum class Sight { kMisses, kCrosses, kOnEdge };

Sight Look(WorldPoint a, WorldPoint b, WorldPoint p) noexcept {
  if (p.y < std::min(a.y, b.y) || p.y > std::max(a.y, b.y) || p.x > std::max(a.x, b.x)) {
    return Sight::kMisses;
  }
  const bool isLeft = p.x < std::min(a.x, b.x);
  const int side = isLeft ? (a.y < b.y ? 1 : -1) : SideSign(b, a, p);
  if (!isLeft && side == 0) return Sight::kOnEdge;
  if ((a.y <= p.y) == (b.y <= p.y)) return Sight::kMisses;
  return (side > 0) == (a.y < b.y) ? Sight::kCrosses : Sight::kMisses;
}

// 0 where the point lies on the ring, 1 where a ray from it crosses the ring an odd number of
// times, else -1.
int SideOfRing(const RegionGrid& grid, std::span<const GridPoint> ring, WorldPoint p) noexcept {
  int side = -1;
  WorldPoint a = grid.StepsOf(ring.back());
  for (const GridPoint vertex : ring) {
    const WorldPoint b = grid.StepsOf(vertex);
    const Sight sight = Look(a, b, p);
    if (sight == Sight::kOnEdge) return 0;
    if (sight == Sight::kCrosses) side = -side;
    a = b;
  }
  return side;
}

// To make an index takes as long as to scan about so many times.
constexpr std::uint32_t kScansOfIndex = 64;
// A scan of fewer vertices is as fast as the index.
constexpr std::size_t kFewVertices = 16;

// Null while there is none. The thread that counts to the limit makes it; where memory runs out,
// the count begins anew.
const RegionLocator* LocatorOf(const zelvan_region& region) noexcept {
  const RegionLocator* const locator = region.locator.load(std::memory_order_acquire);
  if (locator != nullptr || region.flat.points.size() < kFewVertices) return locator;
  if (region.unaided.fetch_add(1, std::memory_order_relaxed) + 1 != kScansOfIndex) return nullptr;
  try {
    Prepare(region);
  } catch (...) {
    region.unaided.store(0, std::memory_order_relaxed);
  }
  return region.locator.load(std::memory_order_acquire);
}

}  // namespace

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
  return a->grid == b->grid && a->flat == b->flat;
}

zelvan_counts CountsOf(const zelvan_region* region) noexcept {
  if (region == nullptr) return {};
  const auto polygons = static_cast<std::uint32_t>(region->flat.Polygons());
  const auto rings = static_cast<std::uint32_t>(region->flat.Rings());
  const auto vertices = static_cast<std::uint32_t>(region->flat.points.size());
  return {polygons, rings, vertices, region->triangles};
}

int SideOf(const zelvan_region& region, WorldPoint p) noexcept {
  const RegionLocator* const locator = LocatorOf(region);
  if (locator == nullptr) return SideByScan(region, p);
  return std::isfinite(p.x) && std::isfinite(p.y) ? locator->SideOf(region.grid.StepsOf(p)) : -1;
}

int SideByScan(const zelvan_region& region, WorldPoint p) noexcept {
  if (!std::isfinite(p.x) || !std::isfinite(p.y)) return -1;
  const WorldPoint steps = region.grid.StepsOf(p);
  int side = -1;
  for (std::size_t i = 0; i < region.flat.Rings(); ++i) {
    if (!IsWithin(region.grid, region.ringBoxes[i], steps)) continue;
    const int ring = SideOfRing(region.grid, region.flat.Ring(i), steps);
    if (ring == 0) return 0;
    if (ring > 0) side = -side;
  }
  return side;
}

void Prepare(const zelvan_region& region) {
  if (IsEmpty(&region) || region.locator.load(std::memory_order_acquire) != nullptr) return;
  const WorldPoint middle = region.grid.StepsOf(GridPoint{0, 0});
  auto made = std::make_unique<const RegionLocator>(region.flat, middle);
  const RegionLocator* none = nullptr;
  if (region.locator.compare_exchange_strong(none, made.get(), std::memory_order_acq_rel)) {
    static_cast<void>(made.release());
  }
}

WorldBox BoundsOf(const zelvan_region& region) noexcept {
  return {region.grid.PlaceOf(region.box.min), region.grid.PlaceOf(region.box.max)};
}

}  // namespace zelvan
