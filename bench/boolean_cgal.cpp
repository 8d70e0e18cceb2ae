// CGAL's sets of general polygons with linear edges, exact in what they test and construct.
#include <CGAL/Exact_predicates_exact_constructions_kernel.h>
#include <CGAL/Polygon_set_2.h>

#include <list>
#include <memory>

#include "boolean.h"

namespace {

using Kernel = CGAL::Exact_predicates_exact_constructions_kernel;
using Polygon = CGAL::Polygon_2<Kernel>;
using PolygonWithHoles = CGAL::Polygon_with_holes_2<Kernel>;
using PolygonSet = CGAL::Polygon_set_2<Kernel>;

Polygon PolygonOf(const bench::Xyz& contour) {
  Polygon polygon;
  for (std::size_t i = 0; i < contour.size(); i += 3) {
    polygon.push_back({contour[i], contour[i + 1]});
  }
  if (bench::DoubleArea(contour) < 0) polygon.reverse_orientation();
  return polygon;
}

double Area(const Polygon& polygon) {
  bench::Xyz contour;
  for (const auto& p : polygon) bench::Add(contour, CGAL::to_double(p.x()), CGAL::to_double(p.y()));
  return std::fabs(bench::DoubleArea(contour)) / 2;
}

double Area(const PolygonSet& set) {
  std::list<PolygonWithHoles> polygons;
  set.polygons_with_holes(std::back_inserter(polygons));
  double area = 0.0;
  for (const PolygonWithHoles& polygon : polygons) {
    area += Area(polygon.outer_boundary());
    for (const Polygon& hole : polygon.holes()) area -= Area(hole);
  }
  return area;
}

bench::Job MakeJob(const bench::Work& work) {
  struct Data {
    Polygon main;
    Polygon other;
    std::unique_ptr<PolygonSet> result;
  };
  const auto data = std::make_shared<Data>();
  data->main = PolygonOf(work.main);
  data->other = PolygonOf(work.others[0]);
  const bool unites = work.operation == bench::Operation::kUnite;
  bench::Job job;
  job.prepare = [data](std::size_t) { data->result.reset(); };
  job.work = [data, unites](std::size_t) {
    data->result = std::make_unique<PolygonSet>(data->main);
    unites ? data->result->join(data->other) : data->result->difference(data->other);
  };
  job.area = [data](std::size_t) { return Area(*data->result); };
  return job;
}

}  // namespace

int main(int argc, char** argv) {
  return bench::RunBooleans(argc, argv, "CGAL", MakeJob, {"stars united"});
}
