// What a handle of an overlay names: regions, each with the numbers of some inputs.
//
// All throw std::bad_alloc, what the engine raises, and RegionRefusal (region_refusal.h).
#pragma once

#include <zelvan/overlay_c.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "interface/region.h"
#include "overlay/layer_overlay.h"

struct zelvan_overlay {
  std::vector<zelvan::RegionHandle> regions;  ///< of the parts
  zelvan::overlay::NumberLists inputs;        ///< of the parts
  bool isCheck = false;                       ///< have the parts kinds and widths?
  std::vector<std::int32_t> kinds{};
  std::vector<double> widths{};
  mutable std::atomic<std::uint32_t> handles{1};
};

namespace zelvan {

using OverlayHandle = std::unique_ptr<zelvan_overlay>;

/// The regions of an overlay, on one grid.
struct LayersOnGrid {
  RegionGrid grid;
  std::vector<RegionHandle> regions;
  /// What some of them have lost, added up.
  [[nodiscard]] std::uint32_t LostOf(std::span<const std::uint32_t> inputs) const noexcept;
};

/// On the grid that an operation on all of them takes; a move that loses something is refused.
[[nodiscard]] LayersOnGrid OnOneGrid(std::span<const zelvan_region* const> regions);

/// One sweep over all.
[[nodiscard]] overlay::LayerParts PartsOf(const LayersOnGrid& layers, overlay::Gaps gaps);

/// What just some regions cover, for each set of them that covers some ground.
[[nodiscard]] OverlayHandle OverlayRegions(std::span<const zelvan_region* const> regions);

/// What is wrong with regions that ought to tile (zelvan_coverage_check).
[[nodiscard]] OverlayHandle CheckCoverage(std::span<const zelvan_region* const> regions,
                                          double gapWidth, double sliverWidth);

}  // namespace zelvan
