// A judge of the meshes of regions, through the public header alone.
#pragma once

#include <zelvan/region.h>

#include <string>

namespace support {

/// What is wrong with a region's meshes, plain and Delaunay, or nothing: sizes, orientation,
/// area, neighbours that name each other across the same edge, contour edges that are the
/// region's, every vertex in use; and circles that hold a vertex across an edge, in integers,
/// for regions on whole numbers below 2^14.
[[nodiscard]] std::string FaultsOfMesh(const zelvan::Region& region);

}  // namespace support
