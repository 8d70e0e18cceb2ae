// An independent judge of triangulations. It shares no predicate with the engine:
// it knows the contours and the answer, and tests what must hold of any right one.
//
// Why it suffices: triangles that all run counter-clockwise, meet along each diagonal
// from its two sides and use each contour edge once cover every point as often as the
// contours wind around it. For contours that do not cross that is once inside, never
// outside.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "polygon/records.h"
#include "support/regions.h"

namespace zelvan::test {

/// What the mesh queries answer, for a whole shape.
struct FlatMesh {
  std::vector<GridPoint> points;                   ///< vertex i
  std::vector<std::uint32_t> contourSizes;         ///< contours in table order
  std::vector<std::array<std::int32_t, 3>> edges;  ///< vertex, vertex, 0 contour or 2 diagonal
  std::vector<std::array<std::int32_t, 3>> faces;  ///< edge numbers
};

/// From the triangles of one area: n + 2h - 2 of them, strictly counter-clockwise,
/// contour edges used once in their direction, diagonals once in each, exact area.
/// @return what is wrong, or nothing
[[nodiscard]] std::string CheckTriangles(const Area& area);

/// From the mesh alone: the same, with faces clockwise, Euler's formula, and edges
/// numbered in the order of first appearance.
[[nodiscard]] std::string CheckMesh(const FlatMesh& mesh);

/// As CheckMesh, and each edge and face with the number and the order of corners that
/// plain scans over the triangles of all areas give.
[[nodiscard]] std::string CheckMesh(const Shape& shape);

/// The mesh of a shape as the queries give it.
[[nodiscard]] FlatMesh Flatten(const Shape& shape);

/// The read-out of a host: 3 doubles per vertex, brought back to the grid of the box
/// [boxMin, boxMax], contour sizes, 3 integers per edge and per face.
[[nodiscard]] FlatMesh FromReadOut(const std::vector<double>& xyz,
                                   const std::vector<std::uint32_t>& contourSizes,
                                   const std::vector<std::int32_t>& edges,
                                   const std::vector<std::int32_t>& faces, WorldPoint boxMin,
                                   WorldPoint boxMax);

/// The same over the box of the vertices themselves.
[[nodiscard]] FlatMesh FromReadOut(const std::vector<double>& xyz,
                                   const std::vector<std::uint32_t>& contourSizes,
                                   const std::vector<std::int32_t>& edges,
                                   const std::vector<std::int32_t>& faces);

/// The triangles of a shape as a sorted list of sorted corner numbers (entries of the
/// vertex table by identity): equal for equal sets.
[[nodiscard]] std::vector<std::array<std::uint32_t, 3>> TriangleSet(const Shape& shape);

}  // namespace zelvan::test
