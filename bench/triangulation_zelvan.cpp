// The flat interface: the whole road from points to arrays read out, with its peak of
// memory, SetMainContour alone (with SetHole for the holes), and Triangulate with its mesh alone.
#include <memory>

#include "flat.h"
#include "heap_peak.h"
#include "triangulation.h"

namespace {

using bench::Job;
using bench::Mesh;
using bench::Polygon;
using bench::Require;
using bench::Scene;

void SetContours(const Polygon& polygon) {
  bench::Set(polygon[0]);
  for (std::size_t i = 1; i < polygon.size(); ++i) bench::Queue(polygon[i]);
}

void SetPolygon(const Polygon& polygon) {
  SetContours(polygon);
  if (polygon.size() > 1) Require(Substruct() == 1, "the holes were not subtracted");
}

void Cut() {
  Require(Triangulate() == 1, "Triangulate failed");
}

/// The triangles' area where it is the main polygon's own, else something absurd.
double CheckedArea(const Mesh& mesh) {
  const double area = bench::Area(mesh);
  return std::fabs(area - bench::MainArea()) <= 1e-9 * area ? area : -1e300;
}

Job Road(const Scene& scene) {
  const auto mesh = std::make_shared<Mesh>();
  Job job;
  job.parts = scene.size();
  job.prepare = [](std::size_t) { bench::Clear(); };
  job.work = [mesh, &scene](std::size_t part) {
    SetPolygon(scene[part]);
    Cut();
    bench::ReadOut(*mesh);
  };
  job.area = [mesh](std::size_t) { return CheckedArea(*mesh); };
  if (scene.size() > 1) return job;
  job.peakBytes = [work = job.work, mesh] {
    bench::Clear();
    *mesh = {};
    return bench::PeakBytes([work] { work(0); });
  };
  return job;
}

Job SetAlone(const Scene& scene) {
  Job job;
  job.parts = scene.size();
  job.prepare = [](std::size_t) { bench::Clear(); };
  job.work = [&scene](std::size_t part) { SetContours(scene[part]); };
  job.area = [&scene](std::size_t part) {
    double area = bench::MainArea();
    for (std::size_t i = 1; i < scene[part].size(); ++i) {
      area -= std::fabs(bench::DoubleArea(scene[part][i])) / 2;
    }
    return area;
  };
  return job;
}

Job TriangulateAlone(const Scene& scene) {
  Job job;
  job.parts = scene.size();
  // One polygon is set once: Triangulate starts afresh each time.
  job.prepare = [&scene, set = false](std::size_t part) mutable {
    if (!set || scene.size() > 1) SetPolygon(scene[part]);
    set = true;
  };
  job.work = [](std::size_t) { Cut(); };
  job.area = [](std::size_t) {
    Mesh mesh;
    bench::ReadOut(mesh);
    return CheckedArea(mesh);
  };
  return job;
}

}  // namespace

int main(int argc, char** argv) {
  constexpr double kGridSteps = 0.5;  // a vertex lies within half a step
  return bench::RunTriangulation(argc, argv,
                                 {bench::JobRow("SetMainContour", SetAlone, kGridSteps),
                                  bench::JobRow("whole road", Road, kGridSteps),
                                  bench::JobRow("Triangulate", TriangulateAlone, kGridSteps)});
}
