// Generated polygons for tests. Every family takes its numbers from one portable
// generator, so a printed seed gives the same polygon on every machine.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "support/random.h"
#include "support/regions.h"

namespace zelvan::test {

/// The tests' random bits, with the draws that the families want.
class Random : public support::Random {
 public:
  using support::Random::Random;

  /// From 0 to n - 1.
  std::int32_t Below(std::int32_t n) {
    return static_cast<std::int32_t>(Bits() % static_cast<std::uint64_t>(n));
  }
  /// From low to high, both included.
  std::int32_t Between(std::int32_t low, std::int32_t high) { return low + Below(high - low + 1); }
  /// A random order of 0 .. n - 1.
  std::vector<std::uint32_t> Permutation(std::size_t n);
};

/// Vertices on a circle of the given radius, in convex position.
[[nodiscard]] Ring Convex(std::int32_t n, std::int32_t radius);
/// Visible from the origin in full, with random radii. Large radii keep it simple.
[[nodiscard]] Ring Star(std::int32_t n, Random& random);
/// Teeth of random length upward from a base, or spikes cut into a block from above.
[[nodiscard]] Ring Comb(std::int32_t teeth, bool cutInto, Random& random);
/// A corridor wound around the origin.
[[nodiscard]] Ring Spiral(std::int32_t n);
/// A narrow band that goes to and fro.
[[nodiscard]] Ring Zigzag(std::int32_t n, Random& random);
/// A staircase skyline with straight-through vertices on its sides.
[[nodiscard]] Ring Rectilinear(std::int32_t n, Random& random);
/// Monotone in x, with all vertices on a few rows.
[[nodiscard]] Ring FewRows(std::int32_t n, Random& random);
/// All four corners of the grid and vertices along its border.
[[nodiscard]] Ring Extremes(std::int32_t n, Random& random);
/// A block with this many small holes in a raster, triangles and squares.
[[nodiscard]] Region WithHoles(std::int32_t holes, Random& random);
/// A block under a ceiling whose teeth touch the block from outside: inside an edge,
/// at a vertex of it, or two tips at one point.
[[nodiscard]] Ring Touching(std::int32_t teeth, Random& random);

struct Family {
  std::string name;
  std::function<Region(Random&)> make;
};

/// All of the above in small random sizes, some turned by about 30 degrees.
[[nodiscard]] const std::vector<Family>& Families();

/// Calls visit(ring) for every counter-clockwise ring of n different points on a grid
/// of side x side points that bounds an area, once per cyclic order, from its lowest
/// leftmost point. With touching, vertices may lie on other edges from outside.
void ForEachSmallRing(std::int32_t side, std::int32_t n, bool touching,
                      const std::function<void(const Ring&)>& visit);

}  // namespace zelvan::test
