// Sums and products of doubles without error, as a rounded result and what rounding took.
// Strict IEEE doubles are all they need, no fused operations.
#pragma once

namespace zelvan {

/// An exact value as an unevaluated sum: the rounded result and its error.
struct TwoSumResult {
  double value;
  double error;
};

/// a + b (Knuth 1969).
[[nodiscard]] inline TwoSumResult TwoSum(double a, double b) noexcept {
  const double sum = a + b;
  const double bVirtual = sum - a;
  const double aVirtual = sum - bVirtual;
  return {sum, (a - aVirtual) + (b - bVirtual)};
}

/// a as a sum of two halves of 26 bits (Dekker 1971).
[[nodiscard]] inline TwoSumResult Split(double a) noexcept {
  constexpr double splitter = 134217729.0;  // 2^27 + 1
  const double c = splitter * a;
  const double high = c - (c - a);
  return {high, a - high};
}

/// a b (Dekker 1971).
[[nodiscard]] inline TwoSumResult TwoProduct(double a, double b) noexcept {
  const double product = a * b;
  const TwoSumResult x = Split(a);
  const TwoSumResult y = Split(b);
  const double rest = ((product - x.value * y.value) - x.error * y.value) - x.value * y.error;
  return {product, x.error * y.error - rest};
}

}  // namespace zelvan
