// What a handle of a region names: a flat region on a grid, never changed. One without polygons
// has a handle only where it must say what was lost. Indexes of its edges (region_locator.h,
// edge_tree.h) are made when they pay: any thread may publish one, others go on without it.
#pragma once

#include <zelvan/region_c.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include "interface/once_made.h"
#include "interface/region_grid.h"
#include "polygon/edge_tree.h"
#include "polygon/flat_region.h"
#include "polygon/grid.h"
#include "polygon/placement.h"
#include "polygon/region_locator.h"

struct zelvan_region {
  /// A region with one handle. Throws std::bad_alloc.
  zelvan_region(const zelvan::RegionGrid& onGrid, zelvan::FlatRegion&& region,
                std::uint32_t lostRings);
  const zelvan::RegionGrid grid;
  const zelvan::FlatRegion flat;
  const std::uint32_t lost;  ///< rings with area that had none on the grid
  std::vector<zelvan::GridBox> ringBoxes;
  zelvan::GridBox box{};
  std::uint32_t triangles;
  mutable std::atomic<std::uint32_t> handles{1};
  zelvan::OnceMade<zelvan::RegionLocator> locator;  ///< for where a point lies
  zelvan::OnceMade<zelvan::EdgeTree> tree;          ///< for how far one is
  mutable std::atomic<std::uint32_t> unaided{0};    ///< points that were looked up without it
};

namespace zelvan {

/// Gives a region's handle back; null is ignored.
void Release(const zelvan_region* region) noexcept;

struct RegionReleaser {
  void operator()(const zelvan_region* region) const noexcept { Release(region); }
};

/// Owns one handle; null is the empty region.
using RegionHandle = std::unique_ptr<const zelvan_region, RegionReleaser>;

/// A handle for a region, null where it has nothing and lost nothing. Throws std::bad_alloc.
[[nodiscard]] RegionHandle MakeRegion(const RegionGrid& grid, FlatRegion&& region,
                                      std::uint32_t lost);

/// One more handle.
[[nodiscard]] RegionHandle Share(const zelvan_region* region) noexcept;

/// A region with another number of lost rings, the same one where it has that. Throws
/// std::bad_alloc.
[[nodiscard]] RegionHandle Share(const zelvan_region* region, std::uint32_t lost);

/// Is it null, or without polygons?
[[nodiscard]] bool IsEmpty(const zelvan_region* region) noexcept;

[[nodiscard]] std::uint32_t LostOf(const zelvan_region* region) noexcept;

/// The sum of two numbers of lost rings, which stops at the largest number.
[[nodiscard]] constexpr std::uint32_t AddLosses(std::uint32_t a, std::uint32_t b) noexcept {
  return a + b >= a ? a + b : ~std::uint32_t{0};
}

/// Have both the same corners on the same grid, or none? What they lost does not count.
[[nodiscard]] bool IsSame(const zelvan_region* a, const zelvan_region* b) noexcept;

[[nodiscard]] zelvan_counts CountsOf(const zelvan_region* region) noexcept;

[[nodiscard]] WorldBox BoundsOf(const zelvan_region& region) noexcept;

/// A region that has polygons, with where its points lie in steps of 2^exponent.
[[nodiscard]] PlacedRegion PlacedIn(const zelvan_region& region, int exponent) noexcept;

}  // namespace zelvan
