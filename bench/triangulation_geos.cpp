// The constrained Delaunay triangulation of GEOS.
#include "geos_geometry.h"
#include "triangulation.h"

namespace {

bench::Job MakeJob(const bench::Scene& scene) {
  const auto polygons = std::make_shared<std::vector<bench::Geometry>>();
  for (const bench::Polygon& polygon : scene) polygons->push_back(bench::GeometryOf(polygon));
  const auto triangles = std::make_shared<bench::Geometry>();
  bench::Job job;
  job.parts = scene.size();
  job.prepare = [triangles](std::size_t) { triangles->reset(); };
  job.work = [triangles, polygons](std::size_t part) {
    triangles->reset(
        GEOSConstrainedDelaunayTriangulation_r(bench::Geos(), (*polygons)[part].get()));
    bench::Require(*triangles != nullptr, "GEOS failed");
  };
  job.area = [triangles](std::size_t) { return bench::Area(*triangles); };
  return job;
}

}  // namespace

int main(int argc, char** argv) {
  return bench::RunTriangulation(argc, argv, {bench::JobRow("GEOS", MakeJob)});
}
