// An exact oracle for the engines of Booleans, of regions and of layers that shares nothing with
// them.
//
// Snap rounding by brute force: the crossings of all pairs of edges as fractions, every edge, or
// every one that must be bent, routed through all hot pixels that it meets; then the winding
// numbers of both sides of every grid edge by casting a ray; then faces, by following their
// boundaries. Quadratic and cubic loops: for a few dozen edges. Any closed rings are taken, by any
// fill rule; coordinates of [-2^30, 2^30). Where 64 bits may not do, Boost's numbers of 128 bits
// do, which throw where they would overflow.
#pragma once

#include <zelvan/fill_rule.h>

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <vector>

#include "polygon/flat_region.h"
#include "support/polygons.h"

namespace oracle {

using zelvan::test::Areas;
using zelvan::test::Ring;
using zelvan::test::Rings;

struct Point {
  std::int64_t x;
  std::int64_t y;
  Point(std::int64_t px, std::int64_t py) : x(px), y(py) {}
  Point(zelvan::GridPoint p) : x(p.gx), y(p.gy) {}
  auto operator<=>(const Point&) const = default;
};

/// A grid edge, directed: the region lies to the left of from -> to.
struct DirectedEdge {
  Point from;
  Point to;
  auto operator<=>(const DirectedEdge&) const = default;
};
using Boundary = std::vector<DirectedEdge>;  // sorted

/// The winding numbers of a point, or their change across an edge, in each operand or layer.
inline constexpr std::size_t kMostLayers = 12;
using Numbers = std::array<int, kMostLayers>;

using Rule = zelvan::FillRule;
using Rules = std::array<Rule, 2>;

/// An edge of the snapped arrangement, from < to, with the winding numbers of the
/// points just left and just right of it.
struct Edge {
  Point from;
  Point to;
  Numbers step;     // from the right to the left
  unsigned copies;  // edges of all operands that lie on it
  Numbers left;
  Numbers right;
};

struct Arrangement {
  std::vector<Point> hot;  // sorted
  std::vector<Edge> edges;
  std::size_t crossings = 0;  // pairs of edges that cross in their interiors
  std::size_t cancelled = 0;  // edges that an operand has more than once
  std::size_t bent = 0;       // edges that lead through all hot pixels that they meet
};

/// Which edges lead through the centres of all hot pixels that they meet.
///
/// kAll: each.
///
/// kNeeded: those of the least set that holds each edge with a crossing on it that is no grid
/// point, and each edge that passes, off its centre, a hot pixel that an edge of the set meets. All
/// others are split only where they pass through a centre. Here edges that run on each other are
/// first cut at each other's ends; pieces with the same ends are one edge, which is not there where
/// it changes no winding number. Hot pixels are those of the ends of what is left, and of its
/// crossings.
enum class Bends { kAll, kNeeded };

Arrangement Snap(const Rings& a, const Rings& b, Bends bends = Bends::kAll);

/// The same of up to kMostLayers operands.
Arrangement Snap(const std::vector<Rings>& layers, Bends bends);

/// Do no two edges of the arrangement meet but in common ends?
bool MeetAtEndsOnly(const Arrangement& arrangement);

/// Boundary of the region of an operation: 0 union, 1 intersection, 2 difference,
/// 3 symmetric difference.
Boundary BoundaryOf(const Arrangement& arrangement, int op, Rules rules = {});

/// The region of such a boundary, in its one order (polygon/flat_region.h). Some points stay also
/// where they are no corners.
zelvan::FlatRegion RegionOf(const Boundary& boundary, const std::set<Point>& stay = {});

/// What just some layers cover, by these; points at which three edges meet or more stay.
using Parts = std::map<std::vector<std::uint32_t>, zelvan::FlatRegion>;
Parts PartsOf(const Arrangement& arrangement);

/// The edges of all rings, cut at the hot pixels that lie on them.
Boundary Cut(const Areas& areas, const std::vector<Point>& hot);

}  // namespace oracle
