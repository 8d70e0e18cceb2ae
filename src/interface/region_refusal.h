// How what goes wrong with regions becomes a status.
#pragma once

#include <zelvan/region_c.h>

namespace zelvan {

/// Thrown for what the caller did wrong, and in which coordinate.
struct RegionRefusal {
  zelvan_status status;
  zelvan_fault fault{};
};

/// Throws a refusal unless the condition holds.
void Require(bool condition, zelvan_status otherwise = ZELVAN_BAD_ARGUMENT);

/// In a catch-all handler: disposes of the exception in flight.
/// @param fault  receives the place of a refused coordinate; may be null
[[nodiscard]] zelvan_status StatusOfException(zelvan_fault* fault) noexcept;

}  // namespace zelvan
