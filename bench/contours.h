// Contours of n vertices for the benchmarks, as (x, y, z) triples in the order in
// which the flat interface takes them. Every run makes the same ones.
#pragma once

#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
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
inline Xyz Star(int n, std::uint64_t seed = 1) {
  std::mt19937_64 bits(seed);
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
/// monotone in x, so that it never crosses itself. A seed other than 0 replaces its
/// finest noise: the two coasts cross again and again.
inline Xyz Coast(int n, std::uint64_t fineSeed = 0) {
  std::mt19937_64 bits(2);
  std::vector<double> height(static_cast<std::size_t>(n), 0.0);
  double noise = 2e5;
  for (std::size_t period = height.size(); period > 0; period /= 2, noise *= 0.6) {
    if (fineSeed != 0 && period < 16 && period >= 8) bits.seed(fineSeed);
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

inline Xyz Moved(Xyz contour, double dx, double dy) {
  for (std::size_t i = 0; i < contour.size(); i += 3) {
    contour[i] += dx;
    contour[i + 1] += dy;
  }
  return contour;
}

inline Xyz Turned(Xyz contour, double angle) {
  for (std::size_t i = 0; i < contour.size(); i += 3) {
    const double x = contour[i];
    const double y = contour[i + 1];
    contour[i] = x * std::cos(angle) - y * std::sin(angle);
    contour[i + 1] = x * std::sin(angle) + y * std::cos(angle);
  }
  return contour;
}

/// The comb turned by 30 degrees: its tips lie on one slanted line.
inline Xyz TurnedComb(int n) {
  return Turned(Comb(n), 0.5235987755982988);
}

inline Xyz Box(double x0, double y0, double x1, double y1) {
  Xyz contour;
  Add(contour, x0, y0);
  Add(contour, x1, y0);
  Add(contour, x1, y1);
  Add(contour, x0, y1);
  return contour;
}

/// The outer contour, then the holes.
using Polygon = std::vector<Xyz>;

/// A square with k x k square holes.
inline Polygon SquareHoles(int k) {
  Polygon polygon{Box(0, 0, 4.0 * k, 4.0 * k)};
  for (int i = 0; i < k * k; ++i) {
    const double x = 4.0 * (i % k) + 1;
    const double y = 4.0 * (i / k) + 1;
    polygon.push_back(Box(x, y, x + 2, y + 2));
  }
  return polygon;
}

/// k vertical bars, and k horizontal ones across them.
inline std::vector<Xyz> Bars(int k) {
  std::vector<Xyz> bars;
  for (int i = 0; i < k; ++i) bars.push_back(Box(2 * i + 1, 0, 2 * i + 2, 2 * k + 1));
  for (int i = 0; i < k; ++i) bars.push_back(Box(0, 2 * i + 1, 2 * k + 1, 2 * i + 2));
  return bars;
}

/// k x k neighbouring cells with jittered corners. Neighbours give the same vertices
/// on the border that they share, four on each side.
inline std::vector<Xyz> Cells(int k) {
  constexpr int kSide = 4;
  const int line = kSide * k + 1;
  std::mt19937_64 bits(3);
  Xyz lattice;
  for (int i = 0; i < line * line; ++i) {
    const double jitter = 300.0;  // of a lattice 1000 apart
    Add(lattice, 1e3 * (i % line) + Between(bits, -jitter, jitter),
        1e3 * (i / line) + Between(bits, -jitter, jitter));
  }
  std::vector<Xyz> cells;
  for (int cell = 0; cell < k * k; ++cell) {
    Xyz contour;
    int column = kSide * (cell % k);
    int row = kSide * (cell / k);
    for (const auto& [dx, dy] : {std::pair{1, 0}, {0, 1}, {-1, 0}, {0, -1}}) {
      for (int i = 0; i < kSide; ++i) {
        const auto at = static_cast<std::size_t>(3 * (row * line + column));
        Add(contour, lattice[at], lattice[at + 1]);
        column += dx;
        row += dy;
      }
    }
    cells.push_back(contour);
  }
  return cells;
}

/// Twice the area, positive when the contour runs counter-clockwise.
inline double DoubleArea(const Xyz& contour) {
  double sum = 0.0;
  for (std::size_t i = 3; i + 3 < contour.size(); i += 3) {
    const double ax = contour[i] - contour[0];
    const double ay = contour[i + 1] - contour[1];
    const double bx = contour[i + 3] - contour[0];
    const double by = contour[i + 4] - contour[1];
    sum += ax * by - ay * bx;
  }
  return sum;
}

inline double Area(const Polygon& polygon) {
  double area = std::fabs(DoubleArea(polygon[0])) / 2;
  for (std::size_t i = 1; i < polygon.size(); ++i) area -= std::fabs(DoubleArea(polygon[i])) / 2;
  return area;
}

/// By how much the area changes at most when every vertex moves by `steps` steps of
/// the grid of the box of all.
inline double GridTolerance(const std::vector<Xyz>& contours, double steps) {
  double low[2] = {contours[0][0], contours[0][1]};
  double high[2] = {low[0], low[1]};
  double length = 0.0;
  for (const Xyz& contour : contours) {
    const std::size_t size = contour.size();
    for (std::size_t i = 0; i < size; i += 3) {
      for (std::size_t axis = 0; axis < 2; ++axis) {
        low[axis] = std::fmin(low[axis], contour[i + axis]);
        high[axis] = std::fmax(high[axis], contour[i + axis]);
      }
      const std::size_t next = (i + 3) % size;
      length += std::hypot(contour[next] - contour[i], contour[next + 1] - contour[i + 1]);
    }
  }
  return steps * length * std::hypot(high[0] - low[0], high[1] - low[1]) / 1048575;
}

}  // namespace bench
