// Where points lie in a region (region_side.h).
#include "interface/region_side.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <new>
#include <span>
#include <vector>

#include "memory/word_sort.h"
#include "polygon/input_predicates.h"
#include "polygon/sweep_axis.h"

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

// Null while there is none. The thread whose points reach the limit makes it, and so does one that
// has as many at once; where memory runs out, the count begins anew.
const RegionLocator* LocatorOf(const zelvan_region& region, std::uint32_t points) noexcept {
  const RegionLocator* const locator = region.locator.Get();
  if (locator != nullptr || region.flat.points.size() < kFewVertices) return locator;
  const std::uint32_t before = region.unaided.fetch_add(points, std::memory_order_relaxed);
  const bool reaches = before < kScansOfIndex && points >= kScansOfIndex - before;
  if (!reaches && points < kScansOfIndex) return nullptr;
  try {
    Prepare(region);
  } catch (...) {
    region.unaided.store(0, std::memory_order_relaxed);
  }
  return region.locator.Get();
}

// Fewer points are looked up as they come.
constexpr std::uint32_t kManyPoints = 4096;

// An axis cut into cells. Halves, so that no extent overflows.
class Cells {
 public:
  Cells(double min, double max, int bits) noexcept
      : min_(min / 2), last_(std::ldexp(1.0, bits) - 1), perUnit_((last_ + 1) / (max / 2 - min_)) {}

  [[nodiscard]] std::uint32_t Of(double v) const noexcept {
    const double cell = (v / 2 - min_) * perUnit_;  // or no number
    return cell > 0.0 ? static_cast<std::uint32_t>(std::min(cell, last_)) : 0;
  }

 private:
  double min_;
  double last_;
  double perUnit_;
};

// Strips of points, from left to right in each: what is near each other is looked up one behind
// the other, while the part of the index is at hand. Throws std::bad_alloc.
std::vector<std::uint64_t> NearOnes(const zelvan_region& region, const double* xy,
                                    std::uint32_t count, bool isTurned) {
  constexpr int bits = 32;
  const int places = bits / 2 + std::countl_zero(count) / 2;  // about sqrt(count) strips
  const WorldBox box = BoundsOf(region);
  const WorldPoint min = Turned(box.min, isTurned);
  const WorldPoint max = Turned(box.max, isTurned);
  const Cells strips(min.y, max.y, bits - places);
  const Cells along(min.x, max.x, places);
  std::vector<std::uint64_t> words(count);
  for (std::size_t i = 0; i < count; ++i) {
    const WorldPoint p = Turned(WorldPoint{xy[2 * i], xy[2 * i + 1]}, isTurned);
    const std::uint32_t place = strips.Of(p.y) << places | along.Of(p.x);
    words[i] = std::uint64_t{place} << bits | i;
  }
  std::vector<std::uint64_t> scratch;
  SortWords(words, scratch, bits, bits);
  return words;
}

int SideOf(const zelvan_region& region, const RegionLocator* locator, WorldPoint p) noexcept {
  if (locator == nullptr) return SideByScan(region, p);
  return std::isfinite(p.x) && std::isfinite(p.y) ? locator->SideOf(region.grid.StepsOf(p)) : -1;
}

}  // namespace

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
  if (IsEmpty(&region)) return;
  region.locator.Make(region.flat, region.grid.StepsOf(GridPoint{0, 0}));
}

void FindSides(const zelvan_region& region, const double* xy, std::uint32_t count,
               std::int8_t* sides) noexcept {
  const RegionLocator* const locator = LocatorOf(region, count);
  const auto find = [&](std::size_t i) {
    const WorldPoint p{xy[2 * i], xy[2 * i + 1]};
    sides[i] = static_cast<std::int8_t>(SideOf(region, locator, p));
  };
  if (locator != nullptr && count >= kManyPoints) {
    try {
      for (const std::uint64_t word : NearOnes(region, xy, count, locator->IsTurned())) {
        find(static_cast<std::uint32_t>(word));
      }
      return;
    } catch (const std::bad_alloc&) {  // in the order as given
    }
  }
  for (std::size_t i = 0; i < count; ++i) find(i);
}

}  // namespace zelvan
