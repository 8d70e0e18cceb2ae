// In which order the edges are inserted, and when the search roots are refreshed.
//
// The order decides the running time, the pool slots and so the order in which
// triangles are emitted, but not the set of triangles. It is drawn from a generator
// of its own, so that the same area gives the same bytes on every machine. The
// phases only shorten the searches: a search from a refreshed root ends in the same
// trapezoid, so a last-bit difference of std::log between machines changes nothing.
#pragma once

#include <cstdint>
#include <span>

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
void ShuffleOrder(std::span<zelvan::VertexNode*> order, std::uint32_t seed) noexcept;

/// How often the natural logarithm can be taken of n >= 1 before it falls below 1,
/// less one.
[[nodiscard]] std::uint32_t LogStar(std::uint32_t n) noexcept;

/// Number of edges inserted by the end of phase h <= LogStar(n), from 1 to n
/// (Seidel 1991): n over the h-fold logarithm of n, rounded up; 1 for h = 0.
[[nodiscard]] std::uint32_t PhaseEnd(std::uint32_t n, std::uint32_t h) noexcept;

}  // namespace VORNEX
