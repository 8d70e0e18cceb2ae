// What a handle of a region names: a flat region on a grid, never empty, never changed.
#pragma once

#include <zelvan/region_c.h>

#include <atomic>
#include <vector>

#include "interface/region_grid.h"
#include "polygon/flat_region.h"
#include "polygon/grid.h"

struct zelvan_region {
  /// A region with one handle. `flat` must have a polygon. Throws std::bad_alloc.
  zelvan_region(const zelvan::RegionGrid& onGrid, zelvan::FlatRegion&& region);

  const zelvan::RegionGrid grid;
  const zelvan::FlatRegion flat;
  std::vector<zelvan::GridBox> ringBoxes;
  zelvan::GridBox box;
  std::uint32_t triangles;
  mutable std::atomic<std::uint32_t> handles{1};
};

namespace zelvan {

/// Gives a region's handle back; null is ignored.
void Release(const zelvan_region* region) noexcept;

struct RegionReleaser {
  void operator()(const zelvan_region* region) const noexcept { Release(region); }
};

/// Owns one handle; null is the empty region.
using RegionHandle = std::unique_ptr<const zelvan_region, RegionReleaser>;

/// A handle for a region, or the empty one. Throws std::bad_alloc.
[[nodiscard]] RegionHandle MakeRegion(const RegionGrid& grid, FlatRegion&& region);

/// One more handle.
[[nodiscard]] RegionHandle Share(const zelvan_region* region) noexcept;

/// The same points on the same grid, or both empty?
[[nodiscard]] bool IsSame(const zelvan_region* a, const zelvan_region* b) noexcept;

[[nodiscard]] zelvan_counts CountsOf(const zelvan_region* region) noexcept;

/// 1 inside, 0 on the boundary, -1 outside; exact.
[[nodiscard]] int SideOf(const zelvan_region& region, WorldPoint p) noexcept;

[[nodiscard]] WorldBox BoundsOf(const zelvan_region& region) noexcept;

}  // namespace zelvan
