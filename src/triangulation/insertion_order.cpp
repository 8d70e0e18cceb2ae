// Insertion order and phases (insertion_order.h).
#include "triangulation/insertion_order.h"

#include <array>
#include <bit>
#include <cmath>

namespace VORNEX {

// Entry i of a permutation falls into the round of the place where the shuffle put it;
// taking the entries in order fills each round sorted.
void SortRounds(std::span<std::uint32_t> positions, std::span<std::uint32_t> place) noexcept {
  for (std::uint32_t k = 0; k < positions.size(); ++k) place[positions[k]] = k;
  std::array<std::uint32_t, 33> next{};
  for (std::uint32_t round = 1; round < next.size(); ++round) next[round] = 1u << (round - 1);
  for (std::uint32_t i = 0; i < positions.size(); ++i) {
    positions[next[std::bit_width(place[i])]++] = i;
  }
}

std::uint32_t LogStar(std::uint32_t n) noexcept {
  std::uint32_t i = 0;
  for (double x = n; x >= 1.0; x = std::log(x)) ++i;
  return i - 1;
}

std::uint32_t PhaseEnd(std::uint32_t n, std::uint32_t h) noexcept {
  double x = n;
  for (std::uint32_t i = 0; i < h; ++i) x = std::log(x);
  return static_cast<std::uint32_t>(std::ceil(n / x));
}

}  // namespace VORNEX
