// Doubles of whole numbers of 64 bits, the same on every target.
#pragma once

#include <cstdint>

namespace zelvan {

/// The double next to a whole number. In two halves on 32-bit targets, where 64 bits would go
/// through the x87 unit.
[[nodiscard]] constexpr double NearestDouble(std::int64_t whole) noexcept {
  if constexpr (sizeof(void*) >= sizeof(std::int64_t)) {
    return static_cast<double>(whole);
  } else {
    const auto high = static_cast<std::int32_t>(whole >> 32);
    const auto low = static_cast<std::uint32_t>(whole & 0xffffffff);
    return static_cast<double>(high) * 0x1p32 + static_cast<double>(low);
  }
}

}  // namespace zelvan
