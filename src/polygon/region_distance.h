// How far the boundary of a region is from points and from other boundaries: a search through
// trees of boxes that leaves out what is too far away (branch and bound: Roussopoulos, Kelley and
// Vincent 1995).
//
// What holds here: squares of distances are compared, as DistanceToEdge makes them in strict IEEE
// doubles, and edges by their numbers where these are equal. What is left out is farther than
// rounding could tell: so the answer is that of a look at everything, on every machine.
#pragma once

#include <cstdint>

#include "polygon/edge_tree.h"
#include "polygon/error_free.h"
#include "polygon/placement.h"

namespace zelvan {

/// The nearest place of an edge, and the square of its distance.
struct EdgeDistance {
  double squared;
  WorldPoint place;
};

/// Of the point p and the edge from a to b. Where differences of coordinates have 53 bits, the
/// square is off by less than 2^-49 of itself, and is 0 only where p lies on the edge.
[[nodiscard]] inline EdgeDistance DistanceToEdge(WorldPoint a, WorldPoint b,
                                                 WorldPoint p) noexcept {
  const WorldPoint u{b.x - a.x, b.y - a.y};
  const WorldPoint w{p.x - a.x, p.y - a.y};
  const double along = u.x * w.x + u.y * w.y;
  const double length = u.x * u.x + u.y * u.y;
  if (along <= 0.0) return {w.x * w.x + w.y * w.y, a};
  if (along >= length) {
    const WorldPoint v{p.x - b.x, p.y - b.y};
    return {v.x * v.x + v.y * v.y, b};
  }
  const TwoSumResult left = TwoProduct(u.x, w.y);
  const TwoSumResult right = TwoProduct(u.y, w.x);
  const double across = (left.value - right.value) + (left.error - right.error);
  const double t = along / length;
  return {across * across / length, {a.x + t * u.x, a.y + t * u.y}};
}

/// A region's edges, where they lie, and their tree.
struct TreeInPlane {
  const EdgeTree& tree;
  Placement place;
};

struct NearestEdge {
  EdgeDistance distance;
  std::uint32_t edge;
};

/// The edge of a region that is nearest to a point. Coordinates must be 0, or between 2^-400 and
/// 2^400.
[[nodiscard]] NearestEdge FindNearest(const TreeInPlane& region, WorldPoint p) noexcept;

struct NearestPair {
  double squared;
  WorldPoint first;   ///< place of the first region
  WorldPoint second;  ///< place of the other
};

/// The nearest places of two boundaries that share no point; among equally near ones those of the
/// first edge of a, then of b. Bounds as above. Throws std::bad_alloc.
[[nodiscard]] NearestPair FindNearestPair(const TreeInPlane& a, const TreeInPlane& b);

/// The same of two edges.
[[nodiscard]] NearestPair DistanceOfEdges(WorldPoint a0, WorldPoint a1, WorldPoint b0,
                                          WorldPoint b1) noexcept;

}  // namespace zelvan
