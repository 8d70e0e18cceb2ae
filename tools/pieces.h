// Pieces of a polygon with holes, each with one simple contour.
//
// The flat interface combines simple contours only. A triangulated polygon is
// taken apart into few of them: from a triangle, grow over an edge as long as
// the corner behind it is new to the piece. Gluing a triangle to one edge of a
// simple polygon by a new corner keeps it simple, so every piece is; together
// they are the polygon, and neighbours share their cuts to the last bit.
#pragma once

#include <vector>

#include "mesh.h"

namespace tool {

std::vector<Ring> SplitIntoPieces(const Mesh& mesh);

}  // namespace tool
