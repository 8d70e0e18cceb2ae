// What the engines raise, told apart without its classes.
#pragma once

#include <cstdint>

namespace zelvan {

enum class EngineFailure : std::uint8_t { kNoMemory, kOther };

/// In a catch-all handler: disposes of the exception in flight (zelvan/error.h).
[[nodiscard]] EngineFailure ClearEngineFailure() noexcept;

}  // namespace zelvan
