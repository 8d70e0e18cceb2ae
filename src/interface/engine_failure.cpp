// What the engines raise (engine_failure.h).
#include "interface/engine_failure.h"

#include <zelvan/error.h>

namespace zelvan {

EngineFailure ClearEngineFailure() noexcept {
  return ERR::Clear() == ERR::NOMEM ? EngineFailure::kNoMemory : EngineFailure::kOther;
}

}  // namespace zelvan
