// Measures of regions (region_measures.h).
#include "interface/region_measures.h"

#include <cmath>
#include <utility>
#include <vector>

#include "interface/ring_area.h"
#include "polygon/convex_hull.h"
#include "polygon/error_free.h"
#include "polygon/nearest_double.h"

namespace zelvan {

namespace {

// Calls visit(from, to) for every edge.
template <class Visit>
void ForEachEdge(const FlatRegion& region, Visit visit) {
  for (std::size_t i = 0; i < region.Rings(); ++i) {
    const std::span<const GridPoint> ring = region.Ring(i);
    GridPoint from = ring.back();
    for (const GridPoint to : ring) visit(std::exchange(from, to), to);
  }
}

// An exact sum of up to 2^31 products of whole numbers, of 63 and of 32 bits.
class ProductSum {
 public:
  void Add(std::int64_t wide, std::int64_t narrow) noexcept {
    const std::int64_t high = (wide >> 32) * narrow;
    const std::int64_t low = (wide & kLow) * narrow;
    parts_[0] += low & kLow;
    parts_[1] += (low >> 32) + (high & kLow);
    parts_[2] += high >> 32;
  }

  /// Off by a few units in the last place.
  [[nodiscard]] double Double() const noexcept {
    const ProductSum sum = Carried();
    return sum.parts_[2] < 0 ? -sum.Negated().Carried().Positive() : sum.Positive();
  }

 private:
  static constexpr std::int64_t kLow = 0xffffffff;

  [[nodiscard]] ProductSum Carried() const noexcept {
    ProductSum sum = *this;
    sum.parts_[1] += sum.parts_[0] >> 32;
    sum.parts_[2] += sum.parts_[1] >> 32;
    sum.parts_[0] &= kLow;
    sum.parts_[1] &= kLow;
    return sum;
  }
  [[nodiscard]] ProductSum Negated() const noexcept {
    ProductSum sum;
    for (std::size_t i = 0; i < 3; ++i) sum.parts_[i] = -parts_[i];
    return sum;
  }
  [[nodiscard]] double Positive() const noexcept {
    return (NearestDouble(parts_[2]) * 0x1p32 + NearestDouble(parts_[1])) * 0x1p32 +
           NearestDouble(parts_[0]);
  }

  std::array<std::int64_t, 3> parts_{};  // times 1, 2^32, 2^64
};

}  // namespace

double LengthOf(const zelvan_region& region) noexcept {
  double sum = 0.0;
  double error = 0.0;
  ForEachEdge(region.flat, [&](GridPoint from, GridPoint to) {
    const std::int64_t x = to.gx - from.gx;
    const std::int64_t y = to.gy - from.gy;
    const TwoSumResult next = TwoSum(sum, std::sqrt(NearestDouble(x * x + y * y)));
    sum = next.value;
    error += next.error;
  });
  return (sum + error) * region.grid.Step();
}

// Each edge makes a triangle with the middle of the box: a third of its corners' sum, times its
// area.
WorldPoint CentroidOf(const zelvan_region& region) noexcept {
  const auto between = [](std::int32_t low, std::int32_t high) { return low + (high - low) / 2; };
  const GridPoint origin{between(region.box.min.gx, region.box.max.gx),
                         between(region.box.min.gy, region.box.max.gy)};
  ProductSum sumX;
  ProductSum sumY;
  WideSum twiceArea;
  ForEachEdge(region.flat, [&](GridPoint from, GridPoint to) {
    const std::int64_t x = to.gx - origin.gx;
    const std::int64_t y = to.gy - origin.gy;
    const std::int64_t fromX = from.gx - origin.gx;
    const std::int64_t fromY = from.gy - origin.gy;
    const std::int64_t twice = fromX * y - fromY * x;
    twiceArea.Add(twice);
    sumX.Add(twice, fromX + x);
    sumY.Add(twice, fromY + y);
  });
  const double divisor = 3.0 * twiceArea.Double();
  const WorldPoint at = region.grid.StepsOf(origin);
  const double step = region.grid.Step();
  return {(at.x + sumX.Double() / divisor) * step, (at.y + sumY.Double() / divisor) * step};
}

RegionHandle HullRegion(const zelvan_region& region) {
  FlatRegion hull;
  hull.points = HullOf(region.flat);
  hull.ringOffsets.push_back(static_cast<std::uint32_t>(hull.points.size()));
  hull.polygonOffsets.push_back(1);
  return MakeRegion(region.grid, std::move(hull), 0);
}

std::array<WorldPoint, 4> LeastBoxOf(const zelvan_region& region) {
  const Placement place = PlacedIn(region, 0).place;
  return LeastBoxAround(HullOf(region.flat), place);
}

}  // namespace zelvan
