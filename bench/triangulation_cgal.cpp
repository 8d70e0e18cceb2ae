// CGAL's constrained Delaunay triangulation, filled by its range of constraints, which
// sorts the points in space first, and the marking of the faces inside.
#include <CGAL/Constrained_Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Triangulation_face_base_with_info_2.h>

#include <list>
#include <memory>
#include <utility>

#include "triangulation.h"

namespace {

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using FaceBase = CGAL::Triangulation_face_base_with_info_2<int, Kernel>;
using Data = CGAL::Triangulation_data_structure_2<
    CGAL::Triangulation_vertex_base_2<Kernel>,
    CGAL::Constrained_triangulation_face_base_2<Kernel, FaceBase>>;
using Triangulation =
    CGAL::Constrained_Delaunay_triangulation_2<Kernel, Data, CGAL::No_constraint_intersection_tag>;

struct Input {
  std::vector<Kernel::Point_2> points;
  std::vector<std::pair<std::size_t, std::size_t>> edges;
};

Input InputOf(const bench::Polygon& polygon) {
  Input input;
  for (const bench::Xyz& contour : polygon) {
    const std::size_t first = input.points.size();
    const std::size_t size = contour.size() / 3;
    for (std::size_t i = 0; i < size; ++i) {
      input.points.emplace_back(contour[3 * i], contour[3 * i + 1]);
      input.edges.emplace_back(first + i, first + (i + 1) % size);
    }
  }
  return input;
}

/// Numbers each face by the constraints between it and the outside: odd is inside.
void MarkDepths(Triangulation& cdt) {
  for (auto face : cdt.all_face_handles()) face->info() = -1;
  std::list<Triangulation::Face_handle> waiting{cdt.infinite_face()};
  cdt.infinite_face()->info() = 0;
  while (!waiting.empty()) {
    const auto face = waiting.front();
    waiting.pop_front();
    for (int i = 0; i < 3; ++i) {
      const auto next = face->neighbor(i);
      if (next->info() >= 0) continue;
      const bool border = face->is_constrained(i);
      next->info() = face->info() + (border ? 1 : 0);
      border ? waiting.push_back(next) : waiting.push_front(next);
    }
  }
}

bench::Job MakeJob(const bench::Scene& scene) {
  const auto inputs = std::make_shared<std::vector<Input>>();
  for (const bench::Polygon& polygon : scene) inputs->push_back(InputOf(polygon));
  const auto cdt = std::make_shared<std::unique_ptr<Triangulation>>();
  bench::Job job;
  job.parts = scene.size();
  job.prepare = [cdt](std::size_t) { cdt->reset(); };
  job.work = [cdt, inputs](std::size_t part) {
    const Input& input = (*inputs)[part];
    *cdt = std::make_unique<Triangulation>();
    (*cdt)->insert_constraints(input.points.begin(), input.points.end(), input.edges.begin(),
                               input.edges.end());
    MarkDepths(**cdt);
  };
  job.area = [cdt](std::size_t) {
    double area = 0.0;
    for (auto face : (*cdt)->finite_face_handles()) {
      if (face->info() % 2 == 1) area += (*cdt)->triangle(face).area();
    }
    return area;
  };
  return job;
}

}  // namespace

int main(int argc, char** argv) {
  return bench::RunTriangulation(argc, argv, {bench::JobRow("CGAL", MakeJob)});
}
