// Sorting of 64-bit words whose low bits are in ascending order already: a radix sort of the
// bits above them, or a comparison sort of few words.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace zelvan {

namespace detail {

inline constexpr std::size_t kFewWords = 300;    // sorted by comparisons
inline constexpr std::size_t kManyWords = 3000;  // sorted by wide digits

// Each pass is stable, so the passes from the lowest digit to the highest leave all words in
// order.
template <int kDigitBits>
void RadixSortWords(std::vector<std::uint64_t>& words, std::vector<std::uint64_t>& scratch, int low,
                    int bits) {
  constexpr std::size_t buckets = std::size_t{1} << kDigitBits;
  scratch.resize(words.size());
  for (int shift = low; shift < low + bits; shift += kDigitBits) {
    const int width = std::min(kDigitBits, low + bits - shift);
    const std::uint64_t mask = (std::uint64_t{1} << width) - 1;
    const auto digit = [&](std::uint64_t word) {
      return static_cast<std::size_t>((word >> shift) & mask);
    };
    std::array<std::uint32_t, buckets> places{};
    for (const std::uint64_t word : words) ++places[digit(word)];
    if (places[digit(words[0])] == words.size()) continue;
    std::uint32_t sum = 0;
    for (std::uint32_t& place : places) sum += std::exchange(place, sum);
    for (const std::uint64_t word : words) scratch[places[digit(word)]++] = word;
    words.swap(scratch);
  }
}

}  // namespace detail

/// Sorts words by their bits from `low` up, of which there are `bits`; the bits below must be
/// in ascending order where those are equal. What `scratch` holds is lost. Throws std::bad_alloc.
inline void SortWords(std::vector<std::uint64_t>& words, std::vector<std::uint64_t>& scratch,
                      int low, int bits) {
  if (words.size() < detail::kFewWords) {
    std::sort(words.begin(), words.end());
  } else if (words.size() < detail::kManyWords) {
    detail::RadixSortWords<8>(words, scratch, low, bits);
  } else {
    detail::RadixSortWords<11>(words, scratch, low, bits);
  }
}

}  // namespace zelvan
