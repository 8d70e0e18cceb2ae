// GEOS's constrained Delaunay triangulation of polygons that it has already got.
// Timed: GEOSConstrainedDelaunayTriangulation_r.
#include "geos_geometry.h"
#include "triangulators.h"

namespace bench {
namespace {

class GeosJob : public Job {
 public:
  explicit GeosJob(const TriangulationWork& work) {
    for (const Polygon& polygon : work.polygons) polygons_.push_back(GeosPolygon(polygon));
  }

  double Area() override {
    double sum = 0;
    for (const GeosGeometry& made : made_) sum += GeosAreaOf(made);
    return sum;
  }

 protected:
  void Prepare() override { made_.clear(); }

  void Run() override {
    for (const GeosGeometry& polygon : polygons_) {
      made_.push_back(Checked(GEOSConstrainedDelaunayTriangulation_r(Geos(), polygon.get())));
    }
  }

 private:
  std::vector<GeosGeometry> polygons_;
  std::vector<GeosGeometry> made_;
};

}  // namespace

std::unique_ptr<Job> GeosTriangulation(const TriangulationWork& work) {
  return std::make_unique<GeosJob>(work);
}

}  // namespace bench
