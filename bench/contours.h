// Contours of n vertices for the benchmarks, as (x, y, z) triples in the order in
// which the flat interface takes them. Every run makes the same ones.
#pragma once

#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace bench {

using Xyz = std::vector<double>;

inline void Add(Xyz& contour, double x, double y) {
  contour.insert(contour.end(), {x, y, 0.0});
}

/// A uniform double of [low, high) from raw generator bits.
inline double Between(std::mt19937_64& bits, double low, double high) {
  return low + (high - low) * static_cast<double>(bits() >> 11) * 0x1p-53;
}

inline void AddPolar(Xyz& contour, double radius, double angle) {
  Add(contour, radius * std::cos(angle), radius * std::sin(angle));
}

/// Radii apart so far that a million spikes stay apart on the grid.
inline Xyz Star(int n) {
  std::mt19937_64 bits(1);
  Xyz contour;
  for (int i = 0; i < n; ++i) {
    AddPolar(contour, 1e6 * Between(bits, 0.7, 1.0), 6.283185307179586 * i / n);
  }
  return contour;
}

inline Xyz Circle(int n) {
  Xyz contour;
  for (int i = 0; i < n; ++i) AddPolar(contour, 1e6, 6.283185307179586 * i / n);
  return contour;
}

/// Vertical teeth of one length on a spine.
inline Xyz Comb(int n) {
  Xyz contour;
  for (int i = 0; i < n - 2; ++i) Add(contour, 2.0 * i, i % 2 == 0 ? 0.0 : 1e6);
  Add(contour, 2.0 * n, -1e5);
  Add(contour, 0.0, -1e5);
  return contour;
}

/// A band rolled up, out along one side and back along the other.
inline Xyz Spiral(int n) {
  Xyz contour;
  const int half = n / 2;
  const double step = 0.15 * std::sqrt(1000.0 / n);
  for (int i = 0; i < half; ++i) AddPolar(contour, 10 + 2 * step * i, step * i);
  for (int i = half; i-- > 0;) AddPolar(contour, 15 + 2 * step * i, step * i);
  return contour;
}

/// A shore, noise of falling size laid over itself, closed far out at sea. It is
/// monotone in x, so that it never crosses itself.
inline Xyz Coast(int n) {
  std::mt19937_64 bits(2);
  std::vector<double> height(static_cast<std::size_t>(n), 0.0);
  double noise = 2e5;
  for (std::size_t period = height.size(); period > 0; period /= 2, noise *= 0.6) {
    double from = 0.0;
    double to = Between(bits, -noise, noise);
    for (std::size_t i = 0; i < height.size(); ++i) {
      if (i % period == 0) {
        from = to;
        to = Between(bits, -noise, noise);
      }
      const double t = static_cast<double>(i % period) / static_cast<double>(period);
      height[i] += from + (to - from) * t;
    }
  }
  Xyz contour;
  for (int i = 0; i < n - 2; ++i) Add(contour, 2e6 * i / n, height[static_cast<std::size_t>(i)]);
  Add(contour, 2e6, -3e6);
  Add(contour, 0.0, -3e6);
  return contour;
}

}  // namespace bench
