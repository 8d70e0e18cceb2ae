// An exact oracle for the Boolean engine that shares nothing with it.
//
// Snap rounding by brute force: the crossings of all pairs of edges as fractions,
// every edge routed through all hot pixels that it meets; then the winding numbers
// of both sides of every grid edge by casting a ray. Quadratic and cubic loops: for
// a few dozen edges on a small grid. Any closed rings are taken, by any fill rule.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

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

/// The winding numbers of a point, or their change across an edge, in each operand.
using Numbers = std::array<int, 2>;

enum class Rule { EvenOdd, NonZero, Positive, Negative };
using Rules = std::array<Rule, 2>;

/// An edge of the snapped arrangement, from < to, with the winding numbers of the
/// points just left and just right of it.
struct Edge {
  Point from;
  Point to;
  Numbers step;     // from the right to the left
  unsigned copies;  // edges of both operands that lie on it
  Numbers left;
  Numbers right;
};

struct Arrangement {
  std::vector<Point> hot;  // sorted
  std::vector<Edge> edges;
  std::size_t crossings = 0;  // pairs of edges that cross in their interiors
  std::size_t cancelled = 0;  // edges that an operand has more than once
};

Arrangement Snap(const Rings& a, const Rings& b);

/// Boundary of the region of an operation: 0 union, 1 intersection, 2 difference,
/// 3 symmetric difference.
Boundary BoundaryOf(const Arrangement& arrangement, int op, Rules rules = {});

/// The edges of all rings, cut at the hot pixels that lie on them.
Boundary Cut(const Areas& areas, const std::vector<Point>& hot);

}  // namespace oracle
