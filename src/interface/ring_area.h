// Twice the signed area of a ring on the grid, which may cross itself and run round and round;
// of a region.
#pragma once

#include <cstdint>
#include <span>

#include "interface/region_grid.h"
#include "polygon/flat_region.h"
#include "polygon/grid.h"

namespace zelvan {

/// An exact sum of up to 2^31 whole numbers of 64 bits, in two halves.
class WideSum {
 public:
  constexpr void Add(std::int64_t whole) noexcept {
    high_ += whole >> 32;
    low_ += whole & kLow;
  }
  constexpr void Add(const WideSum& sum) noexcept {
    high_ += sum.high_ + (sum.low_ >> 32);
    low_ += sum.low_ & kLow;
  }

  [[nodiscard]] constexpr int Sign() const noexcept {
    const std::int64_t high = high_ + (low_ >> 32);
    if (high != 0) return high < 0 ? -1 : 1;
    return (low_ & kLow) != 0 ? 1 : 0;
  }
  /// The double next to the sum where that has 64 bits; else a few units in the last place away.
  [[nodiscard]] constexpr double Double() const noexcept {
    const std::int64_t high = high_ + (low_ >> 32);
    return DoubleOf(high) * 0x1p32 + static_cast<double>(static_cast<std::uint32_t>(low_));
  }

 private:
  static constexpr std::int64_t kLow = 0xffffffff;

  std::int64_t high_ = 0;  // times 2^32
  std::int64_t low_ = 0;
};

/// In squared steps; positive where the ring runs counter-clockwise.
[[nodiscard]] inline WideSum TwiceAreaOf(std::span<const GridPoint> ring) noexcept {
  WideSum sum;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const GridPoint p = i > 0 ? ring[i - 1] : ring.back();
    sum.Add(std::int64_t{p.gx} * ring[i].gy - std::int64_t{p.gy} * ring[i].gx);
  }
  return sum;
}

[[nodiscard]] inline WideSum TwiceAreaOf(const FlatRegion& region) noexcept {
  WideSum sum;
  for (std::size_t i = 0; i < region.Rings(); ++i) sum.Add(TwiceAreaOf(region.Ring(i)));
  return sum;
}

}  // namespace zelvan
