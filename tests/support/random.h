// Random data that is the same on every machine, for a printed seed: bits of std::mt19937_64,
// whose sequence the standard fixes, and nothing else of <random>.
#pragma once

#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace zelvan::test {

class Random {
 public:
  explicit Random(std::uint64_t seed) : bits_(seed) {}

  std::uint64_t Bits() { return bits_(); }
  /// An integer of [0, n).
  template <class Integer>
  Integer Below(Integer n) {
    return static_cast<Integer>((bits_() >> 16) % static_cast<std::uint64_t>(n));
  }
  /// An integer of [low, high].
  std::int32_t Between(std::int32_t low, std::int32_t high) { return low + Below(high - low + 1); }
  double Between(double low, double high) { return low + (high - low) * Unit(); }
  /// A double of [0, 1).
  double Unit() { return static_cast<double>(bits_() >> 11) * 0x1p-53; }
  template <class T>
  const T& Pick(const std::vector<T>& items) {
    return items[Below(items.size())];
  }
  template <class T>
  void Shuffle(std::vector<T>& items) {
    for (std::size_t i = items.size(); i > 1; --i) std::swap(items[i - 1], items[Below(i)]);
  }
  /// A random order of 0 .. n - 1.
  std::vector<std::uint32_t> Permutation(std::size_t n) {
    std::vector<std::uint32_t> order;
    while (order.size() < n) order.push_back(static_cast<std::uint32_t>(order.size()));
    Shuffle(order);
    return order;
  }

 private:
  std::mt19937_64 bits_;
};

}  // namespace zelvan::test
