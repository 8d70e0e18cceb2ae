// Triangulating an area by one sweep over its vertices from the highest to the lowest.
//
// The trapezoids into which the horizontal lines through the vertices cut an area, the
// diagonals between the top and the bottom vertex of each, and the rings between these
// diagonals depend on the area alone. Seidel's insertion (engine.h) finds them edge by
// edge; the sweep meets the same trapezoids from top to bottom and never stores one, so
// both give the same triangles. The sweep gives up where the input contradicts its order;
// the insertion then says what to make of it.
//
// What holds between two vertices:
//  - The intervals of the sweep line inside the area stand in an IntervalList. Each knows
//    its two edges and what is not cut yet above it: chains (chains.h), which end in the last
//    vertex that it met, the top vertex of the trapezoid that is open there, and give the
//    triangles of the insertion. (Regions are swept with fronts, too; fronts.h.)
//  - An edge whose upper end was met and whose lower end was not names its interval.
//
// A vertex closes the trapezoid of each interval that it meets. The step from the last
// vertex to the new one is an edge of the interval when both are ends of it, and else a
// diagonal. Of the edges that the vertex has, those above end there and close the rings
// opposite to them; those below start rings of their own:
//
//    above  below   the vertex
//      1      1     goes on along one side of its interval
//      0      2     opens an interval (convex) or splits one (reflex): only these two
//                   kinds are searched for
//      2      0     ends an interval (convex) or merges two neighbours (reflex)
//
// Contradictions are: a vertex outside the area that lies inside an interval, or the other
// way round; a vertex beyond an edge of the neighbouring interval, or edges that lie on each
// other; merged intervals that are no neighbours; a corner of a ring that is not convex
// where it must be. When none is met, the triangles are counter-clockwise, so at every height the
// edges of each interval stand in their order, and the gaps between intervals were tested at both
// ends: no two edges cross. A vertex on an edge lies on its outer side; so contact from outside is
// no contradiction. Of the vertices on one point those that end something come before those that
// start something, in the order of the kinds below.
//
// Why it ends. Each vertex is met once; each link of a chain is pushed once and cut off at most
// once; a search goes down a tree. A front that is split is walked, no farther than twice the
// shorter part (fronts.h).
#pragma once

#include <cstdint>

#include "polygon/key_sort.h"
#include "polygon/records.h"
#include "triangulation/mesh.h"

namespace VORNEX {

/// Work done, for tests that hold it against a bound.
struct SweepCounts {
  std::uint64_t intervals = 0;  ///< looked at by searches
  std::uint64_t links = 0;      ///< of chains, looked at for cutting
};

struct SweepSettings {
  TriangleMesh* mesh = nullptr;  ///< null: none; to be dropped where the sweep does not succeed
  AreaNumbering numbering = {};  ///< where the area's vertices stand in the mesh
  const zelvan::KeyOrder* order = nullptr;  ///< of the area's vertices, where it is known
  SweepCounts* counts = nullptr;
};

/// Triangulates one area in grid form into its `triangles`, and adds them to a mesh.
/// Triangles come in the order in which the sweep cuts them: at each vertex those of the
/// rings that it closes or whose chains it continues, on the interval's left edge before
/// its right edge, each ring in the direction of its contour.
/// @return false, with the area left without triangles, on a contradiction.
/// Throws std::bad_alloc, the area left without triangles.
[[nodiscard]] bool TriangulateBySweep(zelvan::Area& area, const SweepSettings& settings = {});

}  // namespace VORNEX
