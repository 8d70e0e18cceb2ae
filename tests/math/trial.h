// One trial of a law of the toolkit: its numbers come from a generator or from any bytes.
#pragma once

#include <zelvan/toolkit.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <utility>
#include <vector>

namespace laws {

class Trial {
 public:
  explicit Trial(std::function<std::uint64_t()> bits) : bits_(std::move(bits)) {}

  /// In general position: bytes that repeat give numbers that do not.
  double In(double low, double high) {
    const std::uint64_t mixed = (bits_() + ++drawn_ * 0x9E3779B97F4A7C15) * 0xBF58476D1CE4E5B9;
    return low + (high - low) * static_cast<double>((mixed ^ (mixed >> 31)) >> 11) * 0x1p-53;
  }
  int Below(int n) { return static_cast<int>(bits_() % static_cast<std::uint64_t>(n)); }
  bool Flip() { return Below(2) != 0; }
  VECTF Vector(double r = 10.0) { return {In(-r, r), In(-r, r), In(-r, r)}; }
  /// A bound, its neighbours, or something near it; of either sign.
  double Around(double bound) {
    const double near[] = {std::nextafter(bound, 0), bound, std::nextafter(bound, 1),
                           In(0.5, 2) * bound};
    return near[Below(4)] * (Flip() ? 1 : -1);
  }
  double Any() {
    const double any[] = {0.0,
                          -0.0,
                          1.0,
                          1e-300,
                          HUGE_VAL,
                          -1e200,
                          -HUGE_VAL,
                          NAN,
                          Around(1e-6),
                          In(-9, 9),
                          std::ldexp(In(-1, 1), Below(2100) - 1050)};
    return any[Below(11)];
  }

 private:
  std::function<std::uint64_t()> bits_;
  std::uint64_t drawn_ = 0;
};

struct Law {
  const char* name;
  bool (*holds)(Trial&);
};
extern const std::vector<Law> kValueLaws;
extern const std::vector<Law> kQueryLaws;

/// Do all numbers of two records differ by no more? One that is none is like another.
template <class Record>
bool Close(const Record& a, const Record& b, double tolerance = 0.0) {
  double x[sizeof a / sizeof(double)], y[sizeof a / sizeof(double)];
  std::memcpy(x, &a, sizeof a);
  std::memcpy(y, &b, sizeof b);
  for (std::size_t i = 0; i < sizeof a / sizeof(double); ++i) {
    const bool same = x[i] == y[i] || (std::isnan(x[i]) && std::isnan(y[i]));
    if (!same && !(std::abs(x[i] - y[i]) <= tolerance)) return false;
  }
  return true;
}

inline VECTF Plus(const VECTF& a, double t, const VECTF& b) {
  return {a.x + t * b.x, a.y + t * b.y, a.z + t * b.z};
}

}  // namespace laws
