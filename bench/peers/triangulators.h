// The triangulators that are compared, one file for each. What is timed starts from
// arrays of coordinates in the peer's own types and ends with all triangles made.
#pragma once

#include <memory>
#include <vector>

#include "../job.h"

namespace bench {

/// Polygons that are triangulated one after the other.
struct TriangulationWork {
  std::vector<Polygon> polygons;
  /// Contours whose union is the one polygon, where that is the quicker way to it.
  std::vector<Xyz> parts;
};

std::unique_ptr<Job> ZelvanSetMainContour(const TriangulationWork& work);
std::unique_ptr<Job> ZelvanTriangulate(const TriangulationWork& work);
std::unique_ptr<Job> ZelvanAll(const TriangulationWork& work);
std::unique_ptr<Job> CgalTriangulation(const TriangulationWork& work);
std::unique_ptr<Job> GeosTriangulation(const TriangulationWork& work);
std::unique_ptr<Job> GluTriangulation(const TriangulationWork& work);
std::unique_ptr<Job> EarcutTriangulation(const TriangulationWork& work);

}  // namespace bench
