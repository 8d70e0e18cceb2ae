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

inline Xyz Moved(Xyz xyz, double dx, double dy) {
  for (std::size_t i = 0; i < xyz.size(); i += 3) {
    xyz[i] += dx;
    xyz[i + 1] += dy;
  }
  return xyz;
}

inline Xyz Turned(Xyz xyz, double angle) {
  for (std::size_t i = 0; i < xyz.size(); i += 3) {
    const double x = xyz[i];
    const double y = xyz[i + 1];
    xyz[i] = x * std::cos(angle) - y * std::sin(angle);
    xyz[i + 1] = x * std::sin(angle) + y * std::cos(angle);
  }
  return xyz;
}

inline Xyz Box(double x0, double y0, double x1, double y1) {
  Xyz xyz;
  Add(xyz, x0, y0);
  Add(xyz, x1, y0);
  Add(xyz, x1, y1);
  Add(xyz, x0, y1);
  return xyz;
}

/// The comb turned by 30 degrees: its tips stay on one line, which is on no axis.
inline Xyz SlantedComb(int n) {
  return Turned(Comb(n), 0.5235987755982988);
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
inline Xyz SeededCoast(int n, std::uint64_t seed) {
  std::mt19937_64 bits(seed);
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

inline Xyz Coast(int n) {
  return SeededCoast(n, 2);
}

/// Holes in k rows of k in the square of side 2 k + 1, one unit wide and apart.
inline std::vector<Xyz> Holes(int k) {
  std::vector<Xyz> holes;
  for (int i = 0; i < k * k; ++i) {
    const double x = 2.0 * (i % k) + 1;
    const double y = 2.0 * (i / k) + 1;
    holes.push_back(Box(x, y, x + 1, y + 1));
  }
  return holes;
}

/// k bars and k across them: united, they leave (k - 1) x (k - 1) holes.
inline std::vector<Xyz> Bars(int k) {
  std::vector<Xyz> bars;
  for (int i = 0; i < k; ++i) bars.push_back(Box(2.0 * i, 0, 2.0 * i + 1, 2.0 * k - 1));
  for (int i = 0; i < k; ++i) bars.push_back(Box(0, 2.0 * i, 2.0 * k - 1, 2.0 * i + 1));
  return bars;
}

/// columns x rows neighbours that share wavy borders and fill a rectangle. A border
/// has the same points on both sides.
inline std::vector<Xyz> Cells(int columns, int rows) {
  constexpr int kParts = 6;  // of a border between two corners
  const int width = columns * kParts;
  const int height = rows * kParts;
  std::mt19937_64 bits(3);
  std::vector<double> lattice;  // of which the points on borders are used
  for (int y = 0; y <= height; ++y) {
    for (int x = 0; x <= width; ++x) {
      const double dx = Between(bits, -0.4, 0.4);
      const double dy = Between(bits, -0.4, 0.4);
      lattice.push_back(100 * (x + (x == 0 || x == width ? 0.0 : dx)));
      lattice.push_back(100 * (y + (y == 0 || y == height ? 0.0 : dy)));
    }
  }
  std::vector<Xyz> cells;
  for (int cell = 0; cell < columns * rows; ++cell) {
    int x = cell % columns * kParts;
    int y = cell / columns * kParts;
    Xyz contour;
    for (int step = 0; step < 4 * kParts; ++step) {
      const auto at = 2 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width + 1) +
                           static_cast<std::size_t>(x));
      Add(contour, lattice[at], lattice[at + 1]);
      const int side = step / kParts;
      x += side == 0 ? 1 : side == 2 ? -1 : 0;
      y += side == 1 ? 1 : side == 3 ? -1 : 0;
    }
    cells.push_back(contour);
  }
  return cells;
}

}  // namespace bench
