// Sorting by keys of 40 bits: the size of a grid point.
//
// A radix sort by bytes (five passes, fewer where all keys share a byte), or a comparison
// sort below some hundred keys. Key and position travel in one word, up to 2^24 of them.
// Equal keys come out one behind the other, by ascending position, and are reported as
// runs.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "polygon/grid.h"

namespace zelvan {

inline constexpr std::uint32_t kKeyBits = 40;

/// Positions 0 to n - 1 in ascending order of their keys.
struct KeyOrder {
  struct Run {
    std::uint32_t begin;
    std::uint32_t end;
  };
  std::vector<std::uint32_t> positions;
  std::vector<Run> equal;  ///< runs of two and more positions with one key
};

/// Ascending keys are descending points: from the highest, from right to left.
[[nodiscard]] constexpr std::uint64_t KeyFromTheTop(GridPoint p) noexcept {
  constexpr std::uint32_t highest = GRID_MAX;
  const auto x = static_cast<std::uint32_t>(p.gx + GRID_OFFSET);
  const auto y = static_cast<std::uint32_t>(p.gy + GRID_OFFSET);
  return std::uint64_t{highest - y} << (kKeyBits / 2) | (highest - x);
}

namespace detail {

struct PackedKey {
  static constexpr std::uint32_t kPositionBits = 64 - kKeyBits;
  static constexpr std::size_t kMost = std::size_t{1} << kPositionBits;

  PackedKey() = default;
  PackedKey(std::uint64_t key, std::uint32_t position) noexcept
      : word(key << kPositionBits | position) {}

  [[nodiscard]] std::uint64_t key() const noexcept { return word >> kPositionBits; }
  [[nodiscard]] std::uint32_t position() const noexcept {
    return static_cast<std::uint32_t>(word & (kMost - 1));
  }
  [[nodiscard]] bool operator<(PackedKey other) const noexcept { return word < other.word; }

  std::uint64_t word;
};

struct WideKey {
  WideKey() = default;
  WideKey(std::uint64_t key, std::uint32_t position) noexcept : key_(key), position_(position) {}

  [[nodiscard]] std::uint64_t key() const noexcept { return key_; }
  [[nodiscard]] std::uint32_t position() const noexcept { return position_; }
  [[nodiscard]] bool operator<(const WideKey& other) const noexcept {
    return std::pair(key_, position_) < std::pair(other.key_, other.position_);
  }

 private:
  std::uint64_t key_;
  std::uint32_t position_;
};

inline constexpr std::uint32_t kDigitBits = 8;
inline constexpr std::size_t kDigits = kKeyBits / kDigitBits;
inline constexpr std::size_t kBuckets = std::size_t{1} << kDigitBits;

template <class Entry>
std::size_t DigitOf(const Entry& entry, std::size_t digit) noexcept {
  return static_cast<std::size_t>(entry.key() >> (digit * kDigitBits)) & (kBuckets - 1);
}

// From the lowest byte to the highest; each pass keeps the order of equals.
template <class Entry>
void RadixSort(std::vector<Entry>& entries) {
  std::array<std::array<std::uint32_t, kBuckets>, kDigits> places{};
  for (const Entry& entry : entries) {
    for (std::size_t digit = 0; digit < kDigits; ++digit) ++places[digit][DigitOf(entry, digit)];
  }
  std::vector<Entry> scratch(entries.size());
  for (std::size_t digit = 0; digit < kDigits; ++digit) {
    std::array<std::uint32_t, kBuckets>& place = places[digit];
    if (place[DigitOf(entries.front(), digit)] == entries.size()) continue;
    std::uint32_t sum = 0;
    for (std::uint32_t& p : place) sum += std::exchange(p, sum);
    for (const Entry& entry : entries) scratch[place[DigitOf(entry, digit)]++] = entry;
    entries.swap(scratch);
  }
}

template <class Entry, class KeyAt>
KeyOrder SortByKeyAs(std::uint32_t n, KeyAt keyAt) {
  constexpr std::uint32_t few = 200;
  std::vector<Entry> entries(n);
  for (std::uint32_t i = 0; i < n; ++i) entries[i] = Entry(keyAt(i), i);
  if (n < few) {
    std::sort(entries.begin(), entries.end());
  } else {
    RadixSort(entries);
  }

  KeyOrder order;
  order.positions.resize(n);
  for (std::uint32_t k = 0; k < n; ++k) {
    order.positions[k] = entries[k].position();
    if (k == 0 || entries[k].key() != entries[k - 1].key()) continue;
    if (order.equal.empty() || order.equal.back().end != k) order.equal.push_back({k - 1, k});
    order.equal.back().end = k + 1;
  }
  return order;
}

}  // namespace detail

/// Sorts n positions by keyAt(position), below 2^40. Throws std::bad_alloc.
/// @param packLimit  more positions than this do not travel in one word; for tests
template <class KeyAt>
[[nodiscard]] KeyOrder SortByKey(std::uint32_t n, KeyAt keyAt,
                                 std::size_t packLimit = detail::PackedKey::kMost) {
  return n <= packLimit ? detail::SortByKeyAs<detail::PackedKey>(n, keyAt)
                        : detail::SortByKeyAs<detail::WideKey>(n, keyAt);
}

}  // namespace zelvan
