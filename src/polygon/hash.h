// One mixing function for the hash indices of the library. Fixed, so that no
// result and no running time depends on the machine.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zelvan {

/// Spreads a pair of 32-bit values over 64 bits (the finaliser of splitmix64,
/// Steele, Lea and Flood 2014).
[[nodiscard]] constexpr std::uint64_t MixPair(std::uint32_t a, std::uint32_t b) noexcept {
  std::uint64_t z = (std::uint64_t{a} << 32 | b) + 0x9E3779B97F4A7C15u;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
  return z ^ (z >> 31);
}

/// Smallest power of two that leaves an open-addressing table of n keys at most half full.
[[nodiscard]] constexpr std::size_t HashSlots(std::size_t n) noexcept {
  std::size_t slots = 8;
  while (slots < 2 * n) slots *= 2;
  return slots;
}

}  // namespace zelvan
