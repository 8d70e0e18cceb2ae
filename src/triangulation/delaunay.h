// The constrained Delaunay triangulation of an area, by flips (Lawson 1977).
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
//  - When all edges are legal the surface is convex along every segment inside the area, so
//    over every triangle inside the area: it lies nowhere above the triangle on the lifted
//    corners, and nowhere above the surface of any other triangulation (Lee and Lin 1986). So
//    two of that kind have one surface; and no four lifted corners lie in one plane, so a
//    surface has one set of triangles.
//
// So the set of triangles depends on the area alone. Vertices that share a place are no
// corners of one quadrilateral, so the rule for equal cases never asks for their numbers.
// Corners on one circle end up as a fan from the lowest of them.
//
// The order is fixed as well: each triangle starts at its lowest number, and triangles
// ascend by their corners.
#pragma once

#include <cstdint>
#include <span>

#include "triangulation/flat_triangles.h"

namespace VORNEX {

/// As MakeDelaunay, but with the triangles where the flips left them.
/// @return the number of flips
std::uint64_t FlipToDelaunay(std::span<const zelvan::GridPoint> places, FlatTriangles& triangles);

/// Puts triangles and their corners into the order above, for n vertices. Throws
/// std::bad_alloc, the triangles themselves unchanged.
void ArrangeByCorners(std::size_t n, FlatTriangles& triangles);

}  // namespace VORNEX
