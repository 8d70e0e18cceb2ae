// Sorting: of 64-bit words, and of numbers by their keys.
//
// Words go through a radix sort of the bits that tell them apart, few words through a comparison
// sort. A number travels in one word with as many of its key's first bits as there is room for.
// The radix sort looks at a few more of these than tell that many numbers apart; runs that are
// equal so far, short ones in general, are sorted by comparison.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace zelvan {

namespace detail {

inline constexpr std::size_t kFewWords = 300;    // sorted by comparisons
inline constexpr std::size_t kManyWords = 3000;  // sorted by wide digits
inline constexpr int kDigitBits = 8;
inline constexpr int kWideDigitBits = 11;

// Each pass is stable, so the passes from the lowest digit to the highest leave all words in
// order.
template <int kBits>
void RadixSortWords(std::vector<std::uint64_t>& words, std::vector<std::uint64_t>& scratch, int low,
                    int bits) {
  constexpr std::size_t buckets = std::size_t{1} << kBits;
  scratch.resize(words.size());
  for (int shift = low; shift < low + bits; shift += kBits) {
    const int width = std::min(kBits, low + bits - shift);
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

/// Sorts words by their bits from `low` up, of which there are `bits`. The bits below must be
/// in ascending order where those are equal; few words are sorted by them as well. What
/// `scratch` holds is lost. Throws std::bad_alloc.
inline void SortWords(std::vector<std::uint64_t>& words, std::vector<std::uint64_t>& scratch,
                      int low, int bits) {
  if (words.size() < detail::kFewWords) {
    std::sort(words.begin(), words.end());
  } else if (words.size() < detail::kManyWords) {
    detail::RadixSortWords<detail::kDigitBits>(words, scratch, low, bits);
  } else {
    detail::RadixSortWords<detail::kWideDigitBits>(words, scratch, low, bits);
  }
}

/// Sorts numbers by keys. It keeps its arrays from one call to the next.
class KeySorter {
 public:
  /// Sorts the numbers 0 to n - 1 by keyOf(number), of at most `keyBits` bits; numbers with equal
  /// keys ascend. Throws std::bad_alloc.
  template <class KeyOf>
  void Sort(std::uint32_t n, int keyBits, KeyOf keyOf);

  /// The number in a place of the order.
  [[nodiscard]] std::uint32_t operator[](std::uint32_t place) const noexcept {
    return NumberOf(words_[place]);
  }

  /// Do the keys of two places agree in the bits that the words hold? Equal keys do.
  [[nodiscard]] bool MayBeEqual(std::uint32_t i, std::uint32_t k) const noexcept {
    return (words_[i] ^ words_[k]) >> numberBits_ == 0;
  }

 private:
  [[nodiscard]] std::uint32_t NumberOf(std::uint64_t word) const noexcept {
    return static_cast<std::uint32_t>(word & ((std::uint64_t{1} << numberBits_) - 1));
  }

  std::vector<std::uint64_t> words_;
  std::vector<std::uint64_t> scratch_;
  int numberBits_ = 0;
};

template <class KeyOf>
void KeySorter::Sort(std::uint32_t n, int keyBits, KeyOf keyOf) {
  constexpr int kMore = 6;  // bits that leave few pairs of equals among random keys
  words_.resize(n);
  if (n == 0) return;
  numberBits_ = static_cast<int>(std::bit_width(n - 1));
  const int kept = std::min(keyBits, 64 - numberBits_);
  const int dropped = keyBits - kept;
  for (std::uint32_t i = 0; i < n; ++i) words_[i] = keyOf(i) >> dropped << numberBits_ | i;

  const int digit = n < detail::kManyWords ? detail::kDigitBits : detail::kWideDigitBits;
  const int digits = (numberBits_ + kMore + digit - 1) / digit;
  const int sorted = std::min(kept, digits * digit);
  const int rest = numberBits_ + kept - sorted;
  SortWords(words_, scratch_, rest, sorted);
  if (dropped == 0 && (sorted == kept || n < detail::kFewWords)) return;
  const auto isBefore = [&](std::uint64_t a, std::uint64_t b) {
    if (dropped == 0 || (a ^ b) >> numberBits_ != 0) return a < b;
    return std::pair(keyOf(NumberOf(a)), a) < std::pair(keyOf(NumberOf(b)), b);
  };
  for (auto begin = words_.begin(), end = begin; begin != words_.end(); begin = end) {
    while (end != words_.end() && (*end ^ *begin) >> rest == 0) ++end;
    if (end - begin > 1) std::sort(begin, end, isBefore);
  }
}

}  // namespace zelvan
