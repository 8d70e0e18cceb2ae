// The entry of the triangulation engine.
//
// Areas are cut by a sweep (area_sweep.h). If the sweep meets a contradiction, the
// trapezoidation by edge insertion (engine.h) cuts the area from the start and has the last
// word.
#pragma once

#include "polygon/records.h"

namespace zelvan {

/// Triangulates every area of a shape, and replaces the shape's mesh: n + 2h - 2 triangles of
/// the area's own n vertices, all strictly counter-clockwise, for an area with h holes. The
/// set of triangles depends on the area alone.
///
/// Contours may touch, themselves or each other, at a vertex or at a vertex inside an
/// edge, wherever the touch leaves no neck of zero width inside the area. Contours
/// that cross, and necks of zero width, are failures.
/// @return false, with the mesh as it was, if the shape has no areas, if an area cannot be
///         triangulated, and if memory runs out. Then the areas before the failing one have
///         their triangles, and the failing one has none.
[[nodiscard]] bool Triangulate(Shape& shape);

}  // namespace zelvan
