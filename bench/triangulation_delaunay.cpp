// The constrained Delaunay triangulation of a region that is ready. With --angles behind the
// countries' file: how sharp the triangles of the countries are, as they are cut and then.
#include <zelvan/region.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <numbers>

#include "bench/countries.h"
#include "bench/triangulation.h"

namespace {

using bench::Polygon;
using bench::Xyz;
using Corners = std::array<zelvan::Point, 3>;

zelvan::Ring RingOf(const Xyz& xyz) {
  zelvan::Ring ring;
  for (std::size_t i = 0; i < xyz.size(); i += 3) ring.push_back({xyz[i], xyz[i + 1]});
  return ring;
}

// A polygon as a region, and room for its triangles.
class Subject {
 public:
  explicit Subject(const Polygon& polygon)
      : region_({RingOf(polygon[0])}, zelvan::FillRule::NonZero) {
    std::vector<zelvan::Ring> holes;
    for (std::size_t i = 1; i < polygon.size(); ++i) holes.push_back(RingOf(polygon[i]));
    if (!holes.empty()) {
      region_ = region_ - zelvan::Region(holes, zelvan::FillRule::NonZero, region_.Grid());
    }
    vertices_ = region_.Vertices();
    zelvan_region_counts(region_.Handle(), &counts_);
    triangles_.resize(counts_.triangles);
  }

  void Cut(bool delaunay) {
    const zelvan_status status =
        zelvan_region_triangulate(region_.Handle(), delaunay ? ZELVAN_DELAUNAY : 0, &counts_,
                                  triangles_.empty() ? nullptr : triangles_[0].data(), nullptr);
    bench::Require(status == ZELVAN_OK, "the region was refused");
  }

  template <class Visit>
  void ForEachTriangle(Visit visit) const {
    for (const auto& [a, b, c] : triangles_) visit({vertices_[a], vertices_[b], vertices_[c]});
  }

 private:
  zelvan::Region region_;
  std::vector<zelvan::Point> vertices_;
  zelvan_counts counts_{};
  std::vector<std::array<std::uint32_t, 3>> triangles_;
};

double Cross(const zelvan::Point& a, const zelvan::Point& b, const zelvan::Point& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

bench::Job MakeJob(const bench::Scene& scene) {
  const auto subject = std::make_shared<std::unique_ptr<Subject>>();
  bench::Job job;
  job.parts = scene.size();
  job.prepare = [subject, &scene](std::size_t part) {
    if (*subject == nullptr || scene.size() > 1) *subject = std::make_unique<Subject>(scene[part]);
  };
  job.work = [subject](std::size_t) { (*subject)->Cut(true); };
  job.area = [subject](std::size_t) {
    double twice = 0.0;
    (*subject)->ForEachTriangle([&](const Corners& p) { twice += Cross(p[0], p[1], p[2]); });
    return twice / 2;
  };
  return job;
}

// In degrees.
double SmallestAngle(const Corners& corners) {
  double smallest = 180.0;
  for (std::size_t k = 0; k < 3; ++k) {
    const zelvan::Point a = corners[k];
    const zelvan::Point b = corners[(k + 1) % 3];
    const zelvan::Point c = corners[(k + 2) % 3];
    const double dot = (b.x - a.x) * (c.x - a.x) + (b.y - a.y) * (c.y - a.y);
    smallest = std::fmin(smallest, std::atan2(Cross(a, b, c), dot) * 180 / std::numbers::pi);
  }
  return smallest;
}

// One line of the table of smallest angles.
void PrintAngles(const char* name, const std::vector<Polygon>& polygons, bool delaunay) {
  std::vector<double> angles;
  for (const Polygon& polygon : polygons) {
    Subject subject(polygon);
    subject.Cut(delaunay);
    subject.ForEachTriangle([&](const Corners& p) { angles.push_back(SmallestAngle(p)); });
  }
  std::sort(angles.begin(), angles.end());
  std::printf("| %s |", name);
  for (const double limit : {1.0, 5.0, 10.0, 20.0}) {
    const auto below = std::lower_bound(angles.begin(), angles.end(), limit) - angles.begin();
    std::printf(" %.1f %% |",
                100.0 * static_cast<double>(below) / static_cast<double>(angles.size()));
  }
  std::printf(" %.2f° |\n", angles[angles.size() / 2]);
}

int PrintAllAngles(const char* path) {
  const std::vector<Polygon> polygons = bench::Countries(path);
  std::printf("| smallest angle of a triangle | < 1° | < 5° | < 10° | < 20° | median |\n");
  std::printf("|---|---:|---:|---:|---:|---:|\n");
  PrintAngles("plain", polygons, false);
  PrintAngles("constrained Delaunay", polygons, true);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  constexpr double kGridSteps = 1.5;  // half a step, of a power of two, along each axis
  if (argc > 2 && std::strcmp(argv[2], "--angles") == 0) return PrintAllAngles(argv[1]);
  return bench::RunTriangulation(argc, argv, {bench::JobRow("Delaunay", MakeJob, kGridSteps)});
}
