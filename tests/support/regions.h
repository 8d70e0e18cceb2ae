// Polygons as plain lists of grid points, for tests: regions, their symmetries, and
// the records that the engines work on.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "polygon/records.h"

namespace zelvan::test {

using Ring = std::vector<GridPoint>;

/// One area: the outer ring counter-clockwise, then the holes clockwise.
using Region = std::vector<Ring>;

/// Twice the signed area of a ring, and of a region.
[[nodiscard]] std::int64_t TwiceSigned(const Ring& ring);
[[nodiscard]] std::int64_t TwiceSigned(const Region& region);

/// Symmetry k of the square, 0 <= k < 8, on the whole grid (x -> -1 - x is a mirror);
/// each ring keeps its sense of rotation.
[[nodiscard]] Region Symmetric(const Region& region, int k);

/// The region under x' = a x - b y, y' = b x + a y.
[[nodiscard]] Region Turned(const Region& region, std::int32_t a, std::int32_t b);

/// The rings in order, from their first points, for a failure message.
[[nodiscard]] std::string Describe(const Region& region);

/// A shape of one area per region, in grid form, with its tables.
[[nodiscard]] std::unique_ptr<Shape> MakeShape(const std::vector<Region>& regions);

/// The regions of a shape in grid form.
[[nodiscard]] std::vector<Region> ReadRegions(const Shape& shape);

}  // namespace zelvan::test
