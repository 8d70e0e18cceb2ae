// Insertion order and phases (insertion_order.h).
#include "triangulation/insertion_order.h"

#include <cmath>
#include <cstddef>
#include <utility>

namespace VORNEX {

void ShuffleOrder(std::span<zelvan::VertexNode*> order, std::uint32_t seed) noexcept {
  Random15 random(seed);
  const auto n = static_cast<std::uint32_t>(order.size());
  for (std::size_t i = 0; i < n; ++i) {
    const std::uint32_t high = random();
    const std::uint32_t low = random();
    std::swap(order[i], order[(high * 65535u + low) % n]);
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
