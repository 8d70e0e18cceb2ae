// The tests' polygons: rings of grid points, their way into and out of the records that the
// engines work on, and one generator for all programs.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "polygon/area.h"
#include "polygon/flat_region.h"
#include "polygon/shape.h"
#include "support/random.h"

namespace zelvan::test {

/// A point of [0, size]^2.
inline GridPoint PointIn(Random& random, std::int32_t size) {
  const std::int32_t x = random.Below(size + 1);
  return {x, random.Below(size + 1)};
}

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

/// The region that these rings bound by the even-odd rule, on a grid with their steps.
[[nodiscard]] FlatRegion FlatRegionOf(const Rings& rings);

/// A family makes one operand on a grid of `size` steps.
struct Family {
  const char* name;
  Rings (*make)(Random& random, std::int32_t size);
};
extern const std::vector<Family> kFamilies;

/// Up to n rings of three and more points that cross, repeat and turn back on
/// themselves and on each other, and on `other`, in any direction. No two neighbours are equal.
[[nodiscard]] Rings Mess(Random& random, std::int32_t size, std::int32_t n, const Rings& other);
/// A simple polygon of at most n vertices: random points, untangled.
[[nodiscard]] Ring SimplePolygon(Random& random, std::int32_t size, std::int32_t n);
/// A star around the middle of [0, size]^2 with random radii.
[[nodiscard]] Ring Star(Random& random, std::int32_t size, std::int32_t n);

/// Polygons of any size n, on any part of the grid: upward teeth or cuts from above, a narrow band
/// to and fro, a chain on a few rows, a raster of holes.
[[nodiscard]] std::vector<Rings> LargePolygons(Random& random, std::int32_t n);

}  // namespace zelvan::test
