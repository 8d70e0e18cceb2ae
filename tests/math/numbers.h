// The numbers that laws of the toolkit are tried with: from a generator, or from any bytes.
#pragma once

#include <zelvan/toolkit.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <utility>

namespace laws {

class Numbers {
 public:
  explicit Numbers(std::function<std::uint64_t()> bits) : bits_(std::move(bits)) {}

  /// In general position: bytes that repeat give numbers that do not.
  double Between(double low, double high) {
    const std::uint64_t mixed = (bits_() + ++drawn_ * 0x9E3779B97F4A7C15) * 0xBF58476D1CE4E5B9;
    return low + (high - low) * static_cast<double>((mixed ^ (mixed >> 31)) >> 11) * 0x1p-53;
  }
  int Below(int n) { return static_cast<int>(bits_() % static_cast<std::uint64_t>(n)); }
  bool Flip() { return Below(2) != 0; }
  VECTF Vector(double r = 10.0) { return {Between(-r, r), Between(-r, r), Between(-r, r)}; }
  /// A bound, its neighbours, or something near it; of either sign.
  double Around(double bound) {
    const double near[] = {std::nextafter(bound, 0), bound, std::nextafter(bound, 1),
                           Between(0.5, 2) * bound};
    return near[Below(4)] * (Flip() ? 1 : -1);
  }
  double Any() {
    const double any[] = {0.0,          -0.0,
                          1.0,          1e-300,
                          -1e200,       HUGE_VAL,
                          -HUGE_VAL,    std::nan(""),
                          Around(1e-6), std::ldexp(Between(-1, 1), Below(2100) - 1050)};
    return any[Below(10)];
  }

 private:
  std::function<std::uint64_t()> bits_;
  std::uint64_t drawn_ = 0;
};

/// The number of laws, and whether one holds of some numbers.
extern const int kLaws;
bool Holds(int law, Numbers& in);

}  // namespace laws
