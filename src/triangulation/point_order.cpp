// Sorting the vertices of a sweep (point_order.h).
#include "triangulation/point_order.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace VORNEX {

namespace {

constexpr std::uint32_t kKeyBits = 40;
constexpr std::uint32_t kDigitBits = 8;
constexpr std::size_t kDigits = kKeyBits / kDigitBits;
constexpr std::size_t kBuckets = std::size_t{1} << kDigitBits;
constexpr std::size_t kFewVertices = 200;

// Ascending keys are descending points.
std::uint64_t KeyOf(GridPoint p) noexcept {
  const auto x = static_cast<std::uint32_t>(p.gx + zelvan::GRID_OFFSET);
  const auto y = static_cast<std::uint32_t>(p.gy + zelvan::GRID_OFFSET);
  constexpr std::uint32_t highest = zelvan::GRID_MAX;
  return std::uint64_t{highest - y} << (kKeyBits / 2) | (highest - x);
}

// Key and position in one word.
struct Packed {
  static constexpr std::uint32_t kPositionBits = 64 - kKeyBits;

  Packed() = default;
  Packed(std::uint64_t key, std::uint32_t position) noexcept
      : word(key << kPositionBits | position) {}

  [[nodiscard]] std::uint64_t key() const noexcept { return word >> kPositionBits; }
  [[nodiscard]] std::uint32_t position() const noexcept {
    return static_cast<std::uint32_t>(word & ((std::uint64_t{1} << kPositionBits) - 1));
  }
  [[nodiscard]] bool operator<(Packed other) const noexcept { return word < other.word; }

  std::uint64_t word;
};

// The same for more vertices than a word can number.
struct Wide {
  Wide() = default;
  Wide(std::uint64_t key, std::uint32_t position) noexcept : key_(key), position_(position) {}

  [[nodiscard]] std::uint64_t key() const noexcept { return key_; }
  [[nodiscard]] std::uint32_t position() const noexcept { return position_; }
  [[nodiscard]] bool operator<(const Wide& other) const noexcept {
    return std::pair(key_, position_) < std::pair(other.key_, other.position_);
  }

  std::uint64_t key_;
  std::uint32_t position_;
};

template <class Entry>
std::size_t DigitOf(const Entry& entry, std::size_t digit) noexcept {
  return (entry.key() >> (digit * kDigitBits)) & (kBuckets - 1);
}

// From the lowest byte of the key to the highest; each pass keeps the order of equals.
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

template <class Entry>
PointOrder Order(std::span<const SweepVertex> vertices) {
  std::vector<Entry> entries;
  entries.reserve(vertices.size());
  for (std::uint32_t i = 0; i < vertices.size(); ++i) {
    entries.emplace_back(KeyOf(vertices[i].point), i);
  }
  if (entries.size() < kFewVertices) {
    std::sort(entries.begin(), entries.end());
  } else {
    RadixSort(entries);
  }

  PointOrder order;
  order.positions.resize(entries.size());
  for (std::uint32_t k = 0; k < entries.size(); ++k) {
    order.positions[k] = entries[k].position();
    if (k == 0 || entries[k].key() != entries[k - 1].key()) continue;
    if (order.shared.empty() || order.shared.back().end != k) order.shared.push_back({k - 1, k});
    order.shared.back().end = k + 1;
  }
  return order;
}

}  // namespace

PointOrder OrderFromTheTop(std::span<const SweepVertex> vertices, std::size_t packLimit) {
  return vertices.size() <= packLimit ? Order<Packed>(vertices) : Order<Wide>(vertices);
}

}  // namespace VORNEX
