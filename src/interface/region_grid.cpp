// Grids of regions (region_grid.h).
#include "interface/region_grid.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <tuple>

namespace zelvan {

namespace {

constexpr int kLeastExponent = -480;
constexpr int kGreatestExponent = 480;
constexpr int kGreatestNumberExponent = 500;  // of a number that a grid may hold
constexpr int kOriginBits = 52;

constexpr std::int64_t kFarthestOrigin = std::int64_t{1} << kOriginBits;

bool IsAllowed(double v) noexcept {
  return std::fabs(v) <= std::ldexp(1.0, kGreatestNumberExponent);
}

// A double without a fraction, of at most 53 bits, as a whole number; in two halves, too.
std::int64_t WholeOf(double value) noexcept {
  const double high = std::floor(value * 0x1p-26);
  const double low = value - high * 0x1p26;
  return std::int64_t{static_cast<std::int32_t>(high)} * (std::int64_t{1} << 26) +
         static_cast<std::int32_t>(low);
}

// The whole number next to one, the upper one of two; infinite stays so. Below 2^51 a sum with
// a number that has no room for fractions rounds, two as near to the even one.
double Nearest(double steps) noexcept {
  constexpr double noFraction = 0x1.8p52;
  if (std::fabs(steps) < 0x1p51) {
    const double even = (steps + noFraction) - noFraction;
    return steps - even == 0.5 ? even + 1.0 : even;
  }
  const double below = std::floor(steps);
  return steps - below >= 0.5 ? below + 1.0 : below;
}

// Seen from the grid's point (0, 0).
bool IsCoordinate(double steps) noexcept {
  return steps >= -kRegionGridOffset && steps <= kRegionGridMax - kRegionGridOffset;
}

std::int32_t CoordinateOf(std::int64_t steps, std::int64_t origin) noexcept {
  return static_cast<std::int32_t>(steps - origin) - kRegionGridOffset;
}

// The least exponent of a step at which an extent fits and a number is near enough to 0.
int LeastExponent(double extent, double farthest, int least) noexcept {
  int exponent = std::max(least, kLeastExponent);
  if (extent > 0.0) exponent = std::max(exponent, std::ilogb(extent) - kRegionGridBits);
  if (farthest > 0.0) exponent = std::max(exponent, std::ilogb(farthest) + 1 - kOriginBits);
  return exponent;
}

std::int64_t OriginAround(double low, double high, double perUnit) noexcept {
  const double middle = std::ceil((low / 2 + high / 2) * perUnit);
  return WholeOf(middle) - kRegionGridOffset;
}

// A number of steps at another step, which may be coarser: to the nearest, the upper one of two.
std::int64_t Rescale(std::int64_t steps, int exponents) noexcept {
  if (exponents <= 0) return steps * (std::int64_t{1} << -exponents);
  const int shift = std::min(exponents, 60);
  const std::int64_t half = std::int64_t{1} << (shift - 1);
  return (steps + half) >> shift;
}

// The step may be so large that a number has none of its bits left in steps.
double AwayFromZero(double steps, double number) noexcept {
  constexpr double least = 0x1p-400;
  return number != 0.0 && std::fabs(steps) < least ? std::copysign(least, number) : steps;
}

WorldBox Merged(std::span<const GridClaim> claims) noexcept {
  WorldBox box = claims.front().box;
  for (const GridClaim& claim : claims) {
    box.min = {std::min(box.min.x, claim.box.min.x), std::min(box.min.y, claim.box.min.y)};
    box.max = {std::max(box.max.x, claim.box.max.x), std::max(box.max.y, claim.box.max.y)};
  }
  return box;
}

// In which order grids of one step are tried, so that the order of operands does not count.
bool IsBefore(const RegionGrid& a, const RegionGrid& b) noexcept {
  return std::tuple(a.OriginX(), a.OriginY()) < std::tuple(b.OriginX(), b.OriginY());
}

}  // namespace

std::optional<RegionGrid> RegionGrid::From(const zelvan_grid& grid) noexcept {
  int exponent = 0;
  if (!std::isfinite(grid.step) || std::frexp(grid.step, &exponent) != 0.5) return std::nullopt;
  --exponent;
  if (exponent < kLeastExponent || exponent > kGreatestExponent) return std::nullopt;
  RegionGrid result;
  result.SetExponent(exponent);
  const auto take = [&result](double v, std::int64_t& origin) {
    const double steps = v * result.perUnit_;
    if (!(std::fabs(steps) <= DoubleOf(kFarthestOrigin))) return false;
    origin = WholeOf(std::floor(steps));
    return DoubleOf(origin) * result.step_ == v;
  };
  std::int64_t x = 0;
  std::int64_t y = 0;
  if (!take(grid.x, x) || !take(grid.y, y)) return std::nullopt;
  result.SetOrigin(x, y);
  return result;
}

std::optional<RegionGrid> RegionGrid::Covering(const WorldBox& box, int leastExponent) noexcept {
  const double numbers[] = {box.min.x, box.min.y, box.max.x, box.max.y};
  double farthest = 0.0;
  for (const double v : numbers) {
    if (!IsAllowed(v)) return std::nullopt;
    farthest = std::max(farthest, std::fabs(v));
  }
  const double extent = std::max(box.max.x - box.min.x, box.max.y - box.min.y);
  RegionGrid grid;
  for (int exponent = LeastExponent(extent, farthest, leastExponent); exponent <= kGreatestExponent;
       ++exponent) {
    grid.SetExponent(exponent);
    grid.SetOrigin(OriginAround(box.min.x, box.max.x, grid.perUnit_),
                   OriginAround(box.min.y, box.max.y, grid.perUnit_));
    const bool isNear = std::max(std::abs(grid.x_), std::abs(grid.y_)) <= kFarthestOrigin;
    if (isNear && grid.Holds(box)) return grid;
  }
  return std::nullopt;
}

zelvan_grid RegionGrid::Data() const noexcept {
  return {DoubleOf(x_) * step_, DoubleOf(y_) * step_, step_};
}

void RegionGrid::SetExponent(int exponent) noexcept {
  exponent_ = exponent;
  step_ = std::ldexp(1.0, exponent);
  perUnit_ = std::ldexp(1.0, -exponent);
}

void RegionGrid::SetOrigin(std::int64_t x, std::int64_t y) noexcept {
  x_ = x;
  y_ = y;
  middle_ = {DoubleOf(x + kRegionGridOffset), DoubleOf(y + kRegionGridOffset)};
}

std::optional<GridPoint> RegionGrid::Snap(WorldPoint p) const noexcept {
  const double x = Nearest(p.x * perUnit_) - middle_.x;
  const double y = Nearest(p.y * perUnit_) - middle_.y;
  if (!IsCoordinate(x) || !IsCoordinate(y)) return std::nullopt;
  return GridPoint{static_cast<std::int32_t>(x), static_cast<std::int32_t>(y)};
}

GridPoint RegionGrid::Move(GridPoint p, const RegionGrid& from) const noexcept {
  const int coarser = exponent_ - from.exponent_;
  return {CoordinateOf(Rescale(from.x_ + kRegionGridOffset + p.gx, coarser), x_),
          CoordinateOf(Rescale(from.y_ + kRegionGridOffset + p.gy, coarser), y_)};
}

WorldPoint RegionGrid::StepsOf(WorldPoint p) const noexcept {
  return {AwayFromZero(p.x * perUnit_, p.x), AwayFromZero(p.y * perUnit_, p.y)};
}

bool RegionGrid::Holds(const WorldBox& box) const noexcept {
  return Snap(box.min).has_value() && Snap(box.max).has_value();
}

std::optional<RegionGrid> CommonGrid(std::span<const GridClaim> claims) noexcept {
  if (claims.empty()) return RegionGrid();
  const WorldBox box = Merged(claims);
  int coarsest = claims.front().grid.Exponent();
  for (const GridClaim& claim : claims) coarsest = std::max(coarsest, claim.grid.Exponent());
  const RegionGrid* first = nullptr;
  for (const GridClaim& claim : claims) {
    if (claim.grid.Exponent() != coarsest || !claim.grid.Holds(box)) continue;
    if (first == nullptr || IsBefore(claim.grid, *first)) first = &claim.grid;
  }
  if (first != nullptr) return *first;
  return RegionGrid::Covering(box, coarsest);
}

}  // namespace zelvan
