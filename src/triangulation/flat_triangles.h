// Triangles as numbers: what a region is cut into, and what turns it into the constrained
// Delaunay triangulation.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "polygon/records.h"

namespace VORNEX {

/// Triangles over numbered vertices. Neighbour k of a triangle lies across the edge from
/// its corner k to corner (k + 1) % 3; -1 on a contour.
struct FlatTriangles {
  std::vector<std::array<std::uint32_t, 3>> corners;  ///< counter-clockwise
  std::vector<std::array<std::int32_t, 3>> neighbours;
};

/// How CutArea draws the diagonals that are left to it.
enum class Cutting : std::uint8_t {
  kTrapezoids,  ///< as Triangulate: the same triangles (chains.h)
  kNearby       ///< from each vertex to what lies above it (fronts.h): the start that
                ///< MakeDelaunay wants, which has to flip far less of it
};

/// Cuts one area in grid form into n + 2h - 2 triangles, for n vertices and h holes. Vertex
/// i is the i-th of the area, contour by contour from its head; vertices that share a grid
/// point stay apart, so neighbours never reach across a touch. The area is left without
/// triangles of its own. Throws std::bad_alloc; raises ERR::FAIL where the area is no region.
[[nodiscard]] FlatTriangles CutArea(zelvan::Area& area, Cutting cutting = Cutting::kTrapezoids);

/// Turns the triangles of an area into its constrained Delaunay triangulation, in place
/// (delaunay.h). `places` are the grid points of the vertices. Throws std::bad_alloc, with
/// `triangles` a right triangulation of the area still.
void MakeDelaunay(std::span<const zelvan::GridPoint> places, FlatTriangles& triangles);

}  // namespace VORNEX
