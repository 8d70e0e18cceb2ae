// Random data that is the same with every standard library: bits of
// std::mt19937_64, whose sequence the standard fixes, and nothing else of <random>.
#pragma once

#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace support {

class Random {
 public:
  explicit Random(std::uint64_t seed) : bits_(seed) {}

  std::uint64_t Bits() { return bits_(); }

  /// An integer of [0, n).
  std::uint32_t Below(std::uint32_t n) { return static_cast<std::uint32_t>((bits_() >> 32) % n); }

  /// An integer of [low, high].
  std::int32_t Between(std::int32_t low, std::int32_t high) {
    return low + static_cast<std::int32_t>(Below(static_cast<std::uint32_t>(high - low) + 1));
  }

  /// A double of [0, 1).
  double Unit() { return static_cast<double>(bits_() >> 11) * 0x1p-53; }

  double Between(double low, double high) { return low + (high - low) * Unit(); }

  template <class T>
  void Shuffle(std::vector<T>& items) {
    for (std::size_t i = items.size(); i > 1; --i) {
      std::swap(items[i - 1], items[Below(static_cast<std::uint32_t>(i))]);
    }
  }

 private:
  std::mt19937_64 bits_;
};

}  // namespace support
