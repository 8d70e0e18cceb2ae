// The order in which a sweep meets points of 31 bits a coordinate: from the highest to the
// lowest, equally high ones from right to left.
//
// A key has up to 62 bits, fewer for a small polygon; with the number of its point it rarely
// fits a word. So words hold as many of the key's first bits as there is room for. Of these, a
// radix sort looks at a few more than tell that many points apart; runs that are equal so far,
// short ones in general, are sorted by comparison.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "triangulation/sweep_records.h"

namespace VORNEX {

/// Keeps its arrays from one polygon to the next.
class VertexOrder {
 public:
  /// The numbers of the vertices in order. Throws std::bad_alloc.
  [[nodiscard]] std::span<std::uint32_t> Sort(std::span<const SweepVertex> vertices);

 private:
  void SortByDigits(std::uint32_t lowBits, std::uint32_t bits);

  std::vector<std::uint64_t> words_;
  std::vector<std::uint64_t> scratch_;
  std::vector<std::uint32_t> order_;
};

}  // namespace VORNEX
