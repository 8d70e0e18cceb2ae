// The tests' polygons: rings of grid points, their way into and out of the records that the
// engines work on, and one generator for all programs. Everything is drawn from bits whose
// sequence the standard fixes, so a printed seed gives the same polygon on every machine.
#pragma once

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "polygon/area.h"

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
  /// A point of [0, size]^2.
  GridPoint PointIn(std::int32_t size) {
    const std::int32_t x = Below(size + 1);
    return {x, Below(size + 1)};
  }
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

using Ring = std::vector<GridPoint>;
using Rings = std::vector<Ring>;
using Areas = std::vector<Rings>;  ///< each the outer ring, then its holes

[[nodiscard]] std::int64_t TwiceArea(const Ring& ring);
[[nodiscard]] Rings Flatten(const Areas& areas);
/// "(0,1)(2,1)...", one ring after the other.
[[nodiscard]] std::string Text(const Rings& rings);
[[nodiscard]] Ring Box(std::int32_t x0, std::int32_t y0, std::int32_t x1, std::int32_t y1);
/// One of the eight symmetries of [0, size]^2; rings that it turns round are reversed, heads kept.
[[nodiscard]] Rings Symmetric(Rings rings, unsigned symmetry, std::int32_t size);

/// Stored areas of these contours, their orientation flags set.
[[nodiscard]] OwnedRing RingOf(const Areas& areas);
[[nodiscard]] Areas AreasOf(const Area* ring);
/// A shape in grid form, with its tables.
[[nodiscard]] std::unique_ptr<Shape> ShapeOf(const Areas& areas);

/// A family makes one operand on a grid of `size` steps.
struct Family {
  const char* name;
  Rings (*make)(Random& random, std::int32_t size);
};
extern const std::vector<Family> kFamilies;

/// Up to n rings of three and more points that cross, repeat and turn back on
/// themselves and on each other, and on `other`, in any direction.
[[nodiscard]] Rings Mess(Random& random, std::int32_t size, std::int32_t n, const Rings& other);
/// A simple polygon of at most n vertices: random points, untangled.
[[nodiscard]] Ring SimplePolygon(Random& random, std::int32_t size, std::int32_t n);
/// A star around the middle of [0, size]^2 with random radii.
[[nodiscard]] Ring Star(Random& random, std::int32_t size, std::int32_t n);

/// Polygons of any size n, on any part of the grid: upward teeth or cuts from above, a corridor
/// wound around the origin, a narrow band to and fro, a chain on a few rows, a raster of holes.
[[nodiscard]] std::vector<Rings> LargePolygons(Random& random, std::int32_t n);

}  // namespace zelvan::test
