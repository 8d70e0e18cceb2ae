// The library as a host sees it: the flat functions, spoken in rings and meshes.
// There is one workspace, so these are plain functions.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "geometry.h"
#include "mesh.h"
#include "scale.h"

namespace tool {

// Whether the library sees area in a contour, as it is given and as the grid has it, in
// the library's units; by the tolerance of its validation.
bool SeesArea(const Ring& exact, const Ring& on_grid);

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
  std::string failure;                // empty when the mesh is there
  std::vector<std::size_t> vanished;  // holes without area on the grid, left out
};

// Why nothing comes of a polygon.
inline constexpr const char* kNotUsable = "not usable";
inline constexpr const char* kNoArea = "no area on the grid";
inline constexpr const char* kNothingLeft = "its holes leave nothing of it";

// From a polygon to its triangles: the outer contour as main, its holes
// subtracted, cut, read back.
Cut TriangulatePolygon(const Polygon& polygon, const Scale& scale);

}  // namespace tool
