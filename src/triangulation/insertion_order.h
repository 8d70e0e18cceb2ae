// In which order the edges are inserted, and when the search roots are refreshed.
//
// A shuffle says which edges come in which round, of 1, 1, 2, 4, 8, ... edges; within
// a round they follow the contours. That keeps the expected work of a random order
// (Amenta, Choi and Rote, "Incremental Constructions con BRIO", 2003), and neighbours
// find each other's records in the cache, which shows from 10^5 vertices on.
//
// The order decides the running time, the pool slots and so the order in which
// triangles are emitted, but not the set of triangles. It is drawn from a generator
// of its own, so that the same area gives the same bytes on every machine. The
// phases only shorten the searches: a search from a refreshed root ends in the same
// trapezoid, so a last-bit difference of std::log between machines changes nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "polygon/records.h"

namespace VORNEX {

/// Draws of 15 bits from a linear congruential generator modulo 2^32.
class Random15 {
 public:
  explicit constexpr Random15(std::uint32_t seed) noexcept : state_(seed) {}

  constexpr std::uint32_t operator()() noexcept {
    state_ = state_ * 214013u + 2531011u;
    return (state_ >> 16) & 0x7FFFu;
  }

 private:
  std::uint32_t state_;
};

/// How the insertion order of an area is found. The default is the library's; the
/// rest is for tests.
struct InsertionOrder {
  std::uint32_t seed = 1;
  /// When not empty: the order itself, as positions of vertices, contour by contour
  /// from each head. It must be a permutation, as long as the area has vertices.
  std::span<const std::uint32_t> positions = {};
};

/// Shuffles the entries with draws from a fresh generator.
template <class T>
void ShuffleOrder(std::span<T> order, std::uint32_t seed) noexcept {
  Random15 random(seed);
  const auto n = static_cast<std::uint32_t>(order.size());
  for (std::size_t i = 0; i < n; ++i) {
    const std::uint32_t high = random();
    const std::uint32_t low = random();
    std::swap(order[i], order[(high * 65535u + low) % n]);
  }
}

/// Sorts the rounds of a permutation, each on its own: entry 0, then the entries
/// [1, 2), [2, 4), [4, 8), ...
/// @param place  scratch of the same length
void SortRounds(std::span<std::uint32_t> positions, std::span<std::uint32_t> place) noexcept;

/// How often the natural logarithm can be taken of n >= 1 before it falls below 1,
/// less one.
[[nodiscard]] std::uint32_t LogStar(std::uint32_t n) noexcept;

/// Number of edges inserted by the end of phase h <= LogStar(n), from 1 to n
/// (Seidel 1991): n over the h-fold logarithm of n, rounded up; 1 for h = 0.
[[nodiscard]] std::uint32_t PhaseEnd(std::uint32_t n, std::uint32_t h) noexcept;

}  // namespace VORNEX
