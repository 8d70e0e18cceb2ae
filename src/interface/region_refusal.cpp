// Statuses of exceptions (region_refusal.h). Apart from what is exported: GCC exports the types
// that are caught in a file which sees exported classes or functions for Windows.
#include "interface/region_refusal.h"

#include <new>

#include "interface/engine_failure.h"

namespace zelvan {

void Require(bool condition, zelvan_status otherwise) {
  if (!condition) throw RegionRefusal{otherwise};
}

zelvan_status StatusOfException(zelvan_fault* fault) noexcept {
  try {
    throw;
  } catch (const RegionRefusal& refusal) {
    const bool hasPlace =
        refusal.status == ZELVAN_NOT_FINITE || refusal.status == ZELVAN_OUTSIDE_GRID;
    if (hasPlace && fault != nullptr) *fault = refusal.fault;
    return refusal.status;
  } catch (const std::bad_alloc&) {
    return ZELVAN_NO_MEMORY;
  } catch (...) {
    return ClearEngineFailure() == EngineFailure::kNoMemory ? ZELVAN_NO_MEMORY : ZELVAN_INTERNAL;
  }
}

}  // namespace zelvan
