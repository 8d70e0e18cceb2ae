// What the exported functions on regions ask of their arguments, and how failures become statuses.
#pragma once

#include <zelvan/region_c.h>

#include <algorithm>
#include <limits>

#include "interface/region_grid.h"
#include "interface/region_refusal.h"
#include "interface/region_rings.h"
#include "offset/raw_curve.h"
#include "overlay/selection.h"

namespace zelvan {

/// Whatever is thrown inside is disposed of and becomes a status.
template <class Work>
[[nodiscard]] zelvan_status Guarded(zelvan_fault* fault, Work work) noexcept {
  try {
    work();
    return ZELVAN_OK;
  } catch (...) {
    return StatusOfException(fault);
  }
}

[[nodiscard]] inline RingInput CheckedRings(const double* xy, const std::uint32_t* offsets,
                                            std::uint32_t count) {
  if (count == 0) return {nullptr, {}};
  Require(offsets != nullptr && count < std::numeric_limits<std::uint32_t>::max());
  const RingInput rings{xy, {offsets, std::size_t{count} + 1}};
  Require(offsets[0] == 0 && std::is_sorted(rings.offsets.begin(), rings.offsets.end()));
  Require(rings.Points() <= std::numeric_limits<std::int32_t>::max(), ZELVAN_TOO_LARGE);
  Require(xy != nullptr || rings.Points() == 0);
  return rings;
}

[[nodiscard]] inline RegionGrid CheckedGrid(const zelvan_grid& grid) {
  const auto checked = RegionGrid::From(grid);
  Require(checked.has_value(), ZELVAN_BAD_GRID);
  return *checked;
}

[[nodiscard]] inline FillRule RuleOf(std::int32_t rule) {
  Require(rule >= ZELVAN_EVEN_ODD && rule <= ZELVAN_NEGATIVE);
  return static_cast<FillRule>(rule);
}

[[nodiscard]] inline overlay::Operation OperationOf(std::int32_t operation) {
  constexpr overlay::Operation operations[] = {
      overlay::Operation::kUnite, overlay::Operation::kIntersect, overlay::Operation::kSubtract,
      overlay::Operation::kExclusiveOr};
  Require(operation >= ZELVAN_UNITE && operation <= ZELVAN_XOR);
  return operations[operation];
}

[[nodiscard]] inline offset::Style StyleOf(std::int32_t join, double miterLimit) {
  Require(join >= ZELVAN_JOIN_ROUND && join <= ZELVAN_JOIN_BEVEL);
  Require(join != ZELVAN_JOIN_MITER || miterLimit >= 1.0);
  return {static_cast<offset::Join>(join), miterLimit};
}

/// On a given grid, or where it is null on the one that covers all rings.
[[nodiscard]] inline RegionHandle FromRings(const RingInput& rings, std::int32_t rule,
                                            RingTurns turns, const zelvan_grid* grid) {
  return RegionOfRings(rings, RuleOf(rule), turns,
                       grid != nullptr ? CheckedGrid(*grid) : GridCovering({&rings, 1}));
}

}  // namespace zelvan
