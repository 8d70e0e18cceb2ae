// Regions from rings of doubles.
//
// All throw std::bad_alloc, what the engine raises, and RegionRefusal (region_refusal.h).
#pragma once

#include <zelvan/fill_rule.h>
#include <zelvan/region_c.h>

#include <span>

#include "interface/region.h"
#include "interface/region_grid.h"

namespace zelvan {

/// Rings as the C functions take them, checked.
struct RingInput {
  const double* xy;
  std::span<const std::uint32_t> offsets;  ///< one more than there are rings

  [[nodiscard]] std::uint32_t Points() const noexcept {
    return offsets.empty() ? 0 : offsets.back();
  }
  [[nodiscard]] std::uint32_t Rings() const noexcept {
    return offsets.empty() ? 0 : static_cast<std::uint32_t>(offsets.size() - 1);
  }
};

/// The grid with the least step that holds the points of all rings.
[[nodiscard]] RegionGrid GridCovering(const RingInput& rings);

enum class RingTurns { kAsGiven, kCounterClockwise };

/// The region that rings bound; with turns, each ring is turned round where it must be.
[[nodiscard]] RegionHandle RegionOfRings(const RingInput& rings, FillRule rule, RingTurns turns,
                                         const RegionGrid& grid);

}  // namespace zelvan
