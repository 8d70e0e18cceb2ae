// The entries of the triangulation engine.
//
// Areas are cut by a sweep (area_sweep.h). Where the sweep meets a contradiction, the
// trapezoidation by edge insertion (engine.h) takes the area over from the start and has
// the last word.
#pragma once

#include <zelvan/error.h>

#include "polygon/records.h"
#include "triangulation/insertion_order.h"

namespace VORNEX {

/// Triangulates every area of a ring in grid form: n + 2h - 2 triangles of the
/// area's own n vertices, all strictly counter-clockwise, for an area with h holes.
/// The set of triangles depends on the area alone.
///
/// Contours may touch, themselves or each other, at a vertex or at a vertex inside an
/// edge, wherever the touch leaves no neck of zero width inside the area. Contours
/// that cross, and necks of zero width, are failures.
/// @return OK for a null ring and when every area succeeded; else the code of the
///         first failure (FAIL, NOMEM): areas before it keep their triangles, the
///         failing one has none.
[[nodiscard]] ERR::CODE TriangulateAreas(zelvan::Area* ring);

/// The same by edge insertion alone, for tests: the order decides which triangle comes
/// when and with which corner first.
[[nodiscard]] ERR::CODE TriangulateAreas(zelvan::Area* ring, const InsertionOrder& order);

}  // namespace VORNEX

namespace zelvan {

using VORNEX::TriangulateAreas;

/// Triangulates a shape and replaces its mesh.
/// @return false, with the mesh as it was, for a shape without areas, when an area
///         cannot be triangulated, and when memory runs out.
[[nodiscard]] bool Triangulate(Shape& shape);

}  // namespace zelvan
