// Sorting the vertices of a sweep (vertex_order.h).
#include "triangulation/vertex_order.h"

#include <algorithm>
#include <array>
#include <bit>

namespace VORNEX {

namespace {

constexpr std::uint32_t kDigitBits = 8;
constexpr std::size_t kBuckets = std::size_t{1} << kDigitBits;

// Highest first: both coordinates are counted down from the largest of any vertex.
struct Keys {
  explicit Keys(std::span<const SweepVertex> vertices) noexcept
      : top(vertices[0].point), right(top.gx) {
    std::int32_t bottom = top.gy;
    std::int32_t left = right;
    for (const SweepVertex& v : vertices) {
      top.gy = std::max(top.gy, v.point.gy);
      bottom = std::min(bottom, v.point.gy);
      right = std::max(right, v.point.gx);
      left = std::min(left, v.point.gx);
    }
    top.gx = right;
    xBits = static_cast<std::uint32_t>(std::bit_width(static_cast<std::uint32_t>(right - left)));
    bits = xBits +
           static_cast<std::uint32_t>(std::bit_width(static_cast<std::uint32_t>(top.gy - bottom)));
  }

  [[nodiscard]] std::uint64_t operator()(GridPoint p) const noexcept {
    const auto x = static_cast<std::uint32_t>(top.gx - p.gx);
    const auto y = static_cast<std::uint32_t>(top.gy - p.gy);
    return std::uint64_t{y} << xBits | x;
  }

  GridPoint top;
  std::int32_t right;
  std::uint32_t xBits;
  std::uint32_t bits;
};

}  // namespace

std::span<std::uint32_t> VertexOrder::Sort(std::span<const SweepVertex> vertices) {
  const auto n = static_cast<std::uint32_t>(vertices.size());
  const Keys keyOf(vertices);
  const auto numberBits = static_cast<std::uint32_t>(std::bit_width(n - 1));
  const std::uint32_t keptBits = std::min(keyOf.bits, 64 - numberBits);
  const std::uint32_t droppedBits = keyOf.bits - keptBits;
  words_.resize(n);
  for (std::uint32_t i = 0; i < n; ++i) {
    words_[i] = keyOf(vertices[i].point) >> droppedBits << numberBits | i;
  }

  constexpr std::uint32_t few = 100;
  constexpr std::uint32_t more = 6;  // bits that leave few pairs of equals among random keys
  std::uint32_t sorted = 0;          // bits
  if (n > few) {
    sorted = std::min(keptBits, numberBits + more);
    SortByDigits(numberBits + keptBits - sorted, sorted);
  }
  const std::uint64_t numbers = (std::uint64_t{1} << numberBits) - 1;
  const auto numberOf = [=](std::uint64_t word) {
    return static_cast<std::uint32_t>(word & numbers);
  };
  const auto isBefore = [&](std::uint64_t a, std::uint64_t b) {
    if (droppedBits == 0 || a >> numberBits != b >> numberBits) return a < b;
    const std::uint64_t keyA = keyOf(vertices[numberOf(a)].point);
    const std::uint64_t keyB = keyOf(vertices[numberOf(b)].point);
    return keyA != keyB ? keyA < keyB : a < b;
  };
  const std::uint32_t restBits = numberBits + keptBits - sorted;
  for (std::uint32_t begin = 0, end = 0; begin < n; begin = end) {
    const auto prefix = [&](std::uint32_t i) { return restBits < 64 ? words_[i] >> restBits : 0; };
    for (end = begin + 1; end < n && prefix(end) == prefix(begin);) ++end;
    if (end > begin + 1) std::sort(words_.data() + begin, words_.data() + end, isBefore);
  }
  order_.resize(n);
  for (std::uint32_t i = 0; i < n; ++i) order_[i] = numberOf(words_[i]);
  return order_;
}

// From the lowest byte of these bits to the highest; each pass keeps the order of equals.
void VertexOrder::SortByDigits(std::uint32_t lowBits, std::uint32_t bits) {
  scratch_.resize(words_.size());
  std::array<std::array<std::uint32_t, kBuckets>, 64 / kDigitBits> places{};
  const std::uint32_t digits = (bits + kDigitBits - 1) / kDigitBits;
  const std::uint64_t mask = (std::uint64_t{1} << bits) - 1;
  const auto digitOf = [=](std::uint64_t word, std::uint32_t digit) {
    return static_cast<std::size_t>((word >> lowBits & mask) >> (digit * kDigitBits)) &
           (kBuckets - 1);
  };
  for (const std::uint64_t word : words_) {
    for (std::uint32_t digit = 0; digit < digits; ++digit) ++places[digit][digitOf(word, digit)];
  }
  for (std::uint32_t digit = 0; digit < digits; ++digit) {
    std::array<std::uint32_t, kBuckets>& place = places[digit];
    if (place[digitOf(words_.front(), digit)] == words_.size()) continue;
    std::uint32_t sum = 0;
    for (std::uint32_t& p : place) {
      const std::uint32_t here = p;
      p = sum;
      sum += here;
    }
    for (const std::uint64_t word : words_) scratch_[place[digitOf(word, digit)]++] = word;
    words_.swap(scratch_);
  }
}

}  // namespace VORNEX
