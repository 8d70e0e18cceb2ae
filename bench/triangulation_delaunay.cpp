// The constrained Delaunay triangulation of a region, below any interface. With --angles behind
// the countries' file: how sharp the triangles of the countries are, as they are cut and then.
#include <array>
#include <cstdio>
#include <cstring>
#include <memory>
#include <numbers>

#include "bench/countries.h"
#include "bench/grid.h"
#include "bench/triangulation.h"
#include "boolean/boolean.h"
#include "polygon/flat_region.h"
#include "triangulation/region_triangles.h"

namespace {

using bench::Polygon;
using bench::Xyz;

using Corners = std::array<std::uint32_t, 3>;

// A polygon as a region on a grid of its own.
struct Region {
  explicit Region(const Polygon& polygon)
      : Region(polygon[0], std::vector<Xyz>(polygon.begin() + 1, polygon.end())) {}

  Region(const Xyz& outer, const std::vector<Xyz>& holes) {
    const bench::Grid grid(outer, holes);
    step = grid.step();
    zelvan::OwnedRing first;
    zelvan::OwnedRing others;
    bench::AddRing(first, grid, outer);
    for (const Xyz& hole : holes) bench::AddRing(others, grid, hole);
    const zelvan::RingSet a{first.first, zelvan::FillRule::NonZero};
    const zelvan::RingSet b{others.first, zelvan::FillRule::NonZero};
    zelvan::OwnedRing areas;
    bench::Require(zelvan::CombineRings(a, b, areas.first, zelvan::SUBTRACT) == ERR::OK,
                   "the region was refused");
    flat = zelvan::FlattenWalks(areas.first);
    triangles = static_cast<std::uint32_t>(flat.points.size());
    for (std::size_t p = 0; p < flat.Polygons(); ++p) {
      triangles += 2 * (flat.polygonOffsets[p + 1] - flat.polygonOffsets[p]) - 4;
      zelvan::ForEachTouch(flat, p, [&](auto points) {
        triangles -= 2 * static_cast<std::uint32_t>(points.size() - 1);
      });
    }
  }

  [[nodiscard]] std::vector<Corners> Cut(bool delaunay) const {
    std::vector<Corners> result(triangles);
    if (!result.empty()) zelvan::CutRegion(flat, delaunay, result[0].data(), nullptr);
    return result;
  }

  zelvan::FlatRegion flat;
  std::uint32_t triangles;
  double step;
};

bench::Job MakeJob(const bench::Scene& scene) {
  struct Data {
    std::unique_ptr<Region> region;
    std::vector<Corners> made;
  };
  const auto data = std::make_shared<Data>();
  bench::Job job;
  job.parts = scene.size();
  job.prepare = [data, &scene](std::size_t part) {
    if (data->region == nullptr || scene.size() > 1) {
      data->region = std::make_unique<Region>(scene[part]);
    }
    data->made.clear();
  };
  job.work = [data](std::size_t) { data->made = data->region->Cut(true); };
  job.area = [data](std::size_t) {
    double twice = 0.0;
    const std::vector<zelvan::GridPoint>& p = data->region->flat.points;
    for (const auto& [a, b, c] : data->made) {
      twice += static_cast<double>(zelvan::Cross(p[a], p[b], p[c]));
    }
    return twice / 2 * data->region->step * data->region->step;
  };
  return job;
}

// In degrees.
double SmallestAngle(const std::array<zelvan::GridPoint, 3>& corners) {
  double smallest = 180.0;
  for (std::size_t k = 0; k < 3; ++k) {
    const zelvan::GridPoint a = corners[k];
    const zelvan::GridPoint b = corners[(k + 1) % 3];
    const zelvan::GridPoint c = corners[(k + 2) % 3];
    const auto cross = static_cast<double>(zelvan::Cross(a, b, c));
    const double dot = static_cast<double>(b.gx - a.gx) * (c.gx - a.gx) +
                       static_cast<double>(b.gy - a.gy) * (c.gy - a.gy);
    smallest = std::fmin(smallest, std::atan2(cross, dot) * 180 / std::numbers::pi);
  }
  return smallest;
}

// One line of the table of smallest angles.
void PrintAngles(const char* name, const std::vector<Polygon>& polygons, bool delaunay) {
  std::vector<double> angles;
  for (const Polygon& polygon : polygons) {
    const Region region(polygon);
    const std::vector<zelvan::GridPoint>& p = region.flat.points;
    for (const auto& [a, b, c] : region.Cut(delaunay)) {
      angles.push_back(SmallestAngle({p[a], p[b], p[c]}));
    }
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
  constexpr double kGridSteps = 0.75;  // a vertex lies within half a step along each axis
  if (argc > 2 && std::strcmp(argv[2], "--angles") == 0) return PrintAllAngles(argv[1]);
  return bench::RunTriangulation(argc, argv, {bench::JobRow("Delaunay", MakeJob, kGridSteps)});
}
