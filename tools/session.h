// The library as a host sees it: the flat functions, spoken in rings and meshes.
// There is one workspace, so these are plain functions.
#pragma once

#include <string>

#include "geometry.h"
#include "mesh.h"
#include "scale.h"

namespace tool {

// Each answers whether the library took it.
bool SetMain(const Ring& ring, const Scale& scale);
bool QueueContour(const Ring& ring, const Scale& scale);
bool UniteQueued();
bool SubtractQueued();
bool CutMain();

// The main polygon, with the triangles of the last CutMain when asked for.
// Throws std::runtime_error when the library does not give it.
Mesh ReadMain(const Scale& scale, bool triangles);

struct Cut {
  Mesh mesh;
  std::string failure;  // empty when the mesh is there
};

// From a polygon to its triangles: the outer contour as main, its holes
// subtracted, cut, read back.
Cut TriangulatePolygon(const Polygon& polygon, const Scale& scale);

}  // namespace tool
