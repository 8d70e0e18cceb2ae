// What the exported functions on regions ask of their arguments, and how they end.
#pragma once

#include "interface/region_grid.h"
#include "interface/region_refusal.h"
#include "overlay/selection.h"

namespace zelvan {

/// Whatever is thrown inside is disposed of and becomes a status.
template <class Work>
zelvan_status Guarded(zelvan_fault* fault, Work work) noexcept {
  try {
    work();
    return ZELVAN_OK;
  } catch (...) {
    return StatusOfException(fault);
  }
}

inline RegionGrid CheckedGrid(const zelvan_grid& grid) {
  const auto checked = RegionGrid::From(grid);
  Require(checked.has_value(), ZELVAN_BAD_GRID);
  return *checked;
}

inline overlay::Operation OperationOf(std::int32_t operation) {
  constexpr overlay::Operation operations[] = {
      overlay::Operation::kUnite, overlay::Operation::kIntersect, overlay::Operation::kSubtract,
      overlay::Operation::kExclusiveOr};
  Require(operation >= ZELVAN_UNITE && operation <= ZELVAN_XOR);
  return operations[operation];
}

}  // namespace zelvan
