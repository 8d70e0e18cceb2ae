// Grids of regions: one power of two as the step of both axes, the origin a multiple of it.
//
// What holds here: a coordinate is a whole number of steps, at most 2^53, times the step, so
// it is a double without rounding, and so is every move between grids of whole numbers.
#pragma once

#include <zelvan/region_c.h>

#include <cstdint>
#include <optional>
#include <span>

#include "polygon/grid.h"

namespace zelvan {

/// A grid has 2^kRegionGridBits points along each axis. Points on it are named by their numbers
/// from -kRegionGridOffset to kRegionGridMax - kRegionGridOffset, so that differences of two have
/// 32 bits, too.
inline constexpr int kRegionGridBits = ZELVAN_GRID_BITS;
inline constexpr auto kRegionGridMax =
    static_cast<std::int32_t>((std::int64_t{1} << kRegionGridBits) - 1);
inline constexpr std::int32_t kRegionGridOffset = std::int32_t{1} << (kRegionGridBits - 1);
static_assert(kRegionGridBits <= 31);

/// A grid as its lowest, leftmost point, in steps, and its step.
class RegionGrid {
 public:
  /// The step 1, and (0, 0) in the middle.
  RegionGrid() = default;

  /// None where `grid` is no grid (zelvan/region_c.h says what one is).
  [[nodiscard]] static std::optional<RegionGrid> From(const zelvan_grid& grid) noexcept;

  /// The grid with the least step, 2^leastExponent or more, that holds a box of finite numbers;
  /// none where they are too large.
  [[nodiscard]] static std::optional<RegionGrid> Covering(const WorldBox& box,
                                                          int leastExponent) noexcept;

  [[nodiscard]] zelvan_grid Data() const noexcept;
  [[nodiscard]] int Exponent() const noexcept { return exponent_; }
  [[nodiscard]] double Step() const noexcept { return step_; }
  [[nodiscard]] std::int64_t OriginX() const noexcept { return x_; }
  [[nodiscard]] std::int64_t OriginY() const noexcept { return y_; }

  /// The point next to a finite place, the upper one of two that are as near; none where it is
  /// not on the grid.
  [[nodiscard]] std::optional<GridPoint> Snap(WorldPoint p) const noexcept;

  /// The same of a point of another grid, which this one must hold. Exact in whole numbers.
  [[nodiscard]] GridPoint Move(GridPoint p, const RegionGrid& from) const noexcept;

  [[nodiscard]] WorldPoint PlaceOf(GridPoint p) const noexcept {
    const WorldPoint steps = StepsOf(p);
    return {steps.x * step_, steps.y * step_};
  }

  /// A place in steps, for comparisons with StepsOf. Numbers less than 2^-400 steps from 0,
  /// but not 0, count as that far, on the side where they are.
  [[nodiscard]] WorldPoint StepsOf(WorldPoint p) const noexcept;
  [[nodiscard]] WorldPoint StepsOf(GridPoint p) const noexcept {
    return {middle_.x + p.gx, middle_.y + p.gy};
  }

  [[nodiscard]] bool Holds(const WorldBox& box) const noexcept;

  friend bool operator==(const RegionGrid& a, const RegionGrid& b) noexcept {
    return a.x_ == b.x_ && a.y_ == b.y_ && a.exponent_ == b.exponent_;
  }

 private:
  void SetExponent(int exponent) noexcept;
  void SetOrigin(std::int64_t x, std::int64_t y) noexcept;

  std::int64_t x_ = -kRegionGridOffset;
  std::int64_t y_ = -kRegionGridOffset;
  WorldPoint middle_{};  // the point (0, 0), in steps
  int exponent_ = 0;
  double step_ = 1.0;
  double perUnit_ = 1.0;  // steps
};

/// The double next to a whole number, in two halves: 32-bit targets would send 64 bits through
/// the x87 unit.
[[nodiscard]] constexpr double DoubleOf(std::int64_t whole) noexcept {
  const auto high = static_cast<std::int32_t>(whole >> 32);
  const auto low = static_cast<std::uint32_t>(whole);
  return static_cast<double>(high) * 0x1p32 + static_cast<double>(low);
}

/// A grid and what must be on it.
struct GridClaim {
  RegionGrid grid;
  WorldBox box;
};

/// The grid for an operation (zelvan_region_combine documents it), whatever the order of the
/// claims; that of no claims holds (0, 0). None where no grid holds all.
[[nodiscard]] std::optional<RegionGrid> CommonGrid(std::span<const GridClaim> claims) noexcept;

}  // namespace zelvan
