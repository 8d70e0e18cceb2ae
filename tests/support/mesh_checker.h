// The judge of triangulations, however they were made and in whatever form they come. It shares
// no predicate with the engines: it knows the contours, and tests what must hold of any right
// answer.
//
// Why it suffices: triangles that all run counter-clockwise, meet along each diagonal
// from its two sides and use each contour edge once cover every point as often as the
// contours wind around it. For contours that do not cross that is once inside, never
// outside. Edges that are all Delaunay, equal cases decided by a rule, leave one answer.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "polygon/flat_region.h"
#include "polygon/shape.h"
#include "triangulation/insertion_order.h"

namespace zelvan {
class Region;  // of the public header, which has a Side of its own
}

namespace zelvan::test {

/// What the mesh queries answer, for a whole shape.
struct FlatMesh {
  std::vector<GridPoint> points;                   ///< vertex i
  std::vector<std::uint32_t> contourSizes;         ///< contours in table order
  std::vector<std::array<std::int32_t, 3>> edges;  ///< vertex, vertex, 0 contour or 2 diagonal
  std::vector<std::array<std::int32_t, 3>> faces;  ///< edge numbers
};

/// The mesh of a shape as the queries give it.
[[nodiscard]] FlatMesh Flatten(const Shape& shape);

/// What is wrong with triangles, or nothing. Of one area: n + 2h - 2 of its own vertices,
/// strictly counter-clockwise, contour edges used once in their direction, diagonals once in
/// each, exact area.
[[nodiscard]] std::string CheckTriangles(const Area& area);
/// Of a mesh: the same, vertices on one point going by the lowest number, and edges and faces as
/// plain scans over the triangles number them.
[[nodiscard]] std::string CheckMesh(const FlatMesh& mesh);
/// Of a shape: both.
[[nodiscard]] std::string CheckMesh(const Shape& shape);
/// Of a region, through the public header, plain and Delaunay: the same, with neighbours that
/// name each other, every vertex in use, and every edge legal.
[[nodiscard]] std::string CheckMeshes(const zelvan::Region& region);
/// The same below any interface, with coordinates of up to 31 bits.
[[nodiscard]] std::string CheckMeshes(const FlatRegion& region);

/// What became of a ring of areas that were cut in both ways, each on its own: by the sweep, and by
/// insertion under the given orders. All ways that succeed give the same triangles; a way that
/// fails leaves nothing behind; and where the areas are sound, or the sweep finds them so, every
/// way succeeds.
struct Cuts {
  bool swept;
  bool inserted;      ///< under every order
  std::string wrong;  ///< or nothing
};
[[nodiscard]] Cuts CutInAllWays(Area* ring, bool sound,
                                const std::vector<VORNEX::InsertionOrder>& orders = {{.seed = 1}});

/// The sign of the determinant of the lifted points: positive when d lies inside the circle
/// through a, b, c, counter-clockwise.
[[nodiscard]] int InCircle(GridPoint a, GridPoint b, GridPoint c, GridPoint d);

}  // namespace zelvan::test
