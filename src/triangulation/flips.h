// The constrained Delaunay triangulation of a polygon, by flips (Lawson 1977).
//
// An edge between two triangles is legal where the far corner of one lies outside the circle
// through the corners of the other (in_circle.h), or on it, if then the edge starts or ends
// at the lowest of the four corners, of equally low ones the leftmost. Every other edge is
// replaced by the second diagonal of the quadrilateral of its two triangles. Contour edges
// stay as they are.
//
// Why it can. The quadrilateral of an edge that is not legal is strictly convex, for its far
// corner lies on the circle or inside, strictly beyond the edge. So triangles stay strictly
// counter-clockwise.
//
// Why it ends, and why the result is unique. Lift every vertex to the height x^2 + y^2, less a
// quantity that is infinitely small, the larger the lower and further left the vertex is,
// each infinitely larger than the next (Edelsbrunner and Muecke 1990). Legal means that
// the lifted surface is convex along the edge: on a circle the quantities decide, and of
// four corners the lowest pulls hardest.
//
//  - Each flip lowers the surface over the quadrilateral. An edge that was flipped away lies
//    above the surface from then on and never returns. Of n vertices no more than n (n - 1) / 2
//    pairs can be edges, so there are no more flips. Inputs are known that need that order
//    of them; starts with short edges (fronts.h) need one or two a vertex.
//  - When all edges are legal the surface is convex along every segment inside the polygon, so
//    over every triangle inside the polygon: it lies nowhere above the triangle on the lifted
//    corners, and nowhere above the surface of any other triangulation (Lee and Lin 1986). So
//    two of that kind have one surface; and no four lifted corners lie in one plane, so a
//    surface has one set of triangles.
//
// So the set of triangles depends on the polygon alone. Vertices that share a place are no
// corners of one quadrilateral, so the rule for equal cases never asks for their numbers.
// Corners on one circle end up as a fan from the lowest of them.
//
// The order is fixed as well: each triangle starts at its lowest number, and triangles
// ascend by their corners.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "polygon/grid.h"

namespace VORNEX {

/// Triangles in flat arrays. Side 3 t + k goes from corner k of triangle t to the next one;
/// corners and twins stand at the numbers of sides.
struct Sides {
  std::span<std::uint32_t> corners;  ///< counter-clockwise; numbers of points
  std::span<std::uint32_t> twins;    ///< the same side seen from across; kNone on a contour
};

[[nodiscard]] constexpr std::uint32_t NextSide(std::uint32_t side) noexcept {
  return side % 3 == 2 ? side - 2 : side + 1;
}
[[nodiscard]] constexpr std::uint32_t LastSide(std::uint32_t side) noexcept {
  return side % 3 == 0 ? side + 2 : side - 1;
}

/// Keeps its arrays from one polygon to the next.
class Flips {
 public:
  /// Makes the constrained Delaunay triangulation of any triangulation of a polygon.
  /// @param points  by the numbers of the corners
  /// @return the number of flips. Throws std::bad_alloc, with a triangulation still.
  std::uint64_t Run(const zelvan::GridPoint* points, Sides sides);

 private:
  std::vector<std::uint32_t> waiting_;  // sides to be looked at (again)
  std::vector<std::uint8_t> waits_;     // of each side: does it wait?
};

/// Puts the triangles of a polygon into the order above. Keeps its arrays, too.
class Arrangement {
 public:
  /// @param first   the number of the polygon's first point; `end` is that of the next polygon's
  /// @param linked  are the twins kept, each as some side of its triangle? Else they are lost.
  /// @param spare   as long as `sides`; may be the array of the twins if these are to be lost
  /// Throws std::bad_alloc, with the triangles where they were.
  void Run(Sides sides, std::uint32_t first, std::uint32_t end, bool linked,
           std::span<std::uint32_t> spare);

 private:
  std::vector<std::uint32_t> places_;  // of each point: where its triangles begin, then end
  std::vector<std::uint32_t> order_;   // the first side of each triangle, as they come
  std::vector<std::uint32_t> numbers_;
};

}  // namespace VORNEX
