// CGAL's constrained Delaunay triangulation. Timed: insert_constraints over points
// and pairs of indices, which sorts the points along a curve first and is CGAL's
// quick way in, and the walk over the faces that marks those inside the polygon.
#include <CGAL/Constrained_Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Triangulation_face_base_with_info_2.h>

#include <cmath>
#include <utility>

#include "triangulators.h"

namespace bench {
namespace {

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using Point = Kernel::Point_2;
constexpr int kUnknown = -1;  // else the number of contours around a face
using FaceInfo = CGAL::Triangulation_face_base_with_info_2<int, Kernel>;
using FaceBase = CGAL::Constrained_triangulation_face_base_2<Kernel, FaceInfo>;
using VertexBase = CGAL::Triangulation_vertex_base_2<Kernel>;
using Structure = CGAL::Triangulation_data_structure_2<VertexBase, FaceBase>;
using Triangulation = CGAL::Constrained_Delaunay_triangulation_2<Kernel, Structure>;
using Face = Triangulation::Face_handle;

struct Input {
  std::vector<Point> points;
  std::vector<std::pair<std::size_t, std::size_t>> edges;
};

void AddContour(Input& input, const Xyz& contour) {
  const std::size_t first = input.points.size();
  const std::size_t n = VertexCount(contour);
  for (std::size_t i = 0; i < n; ++i) {
    input.points.emplace_back(contour[3 * i], contour[3 * i + 1]);
    input.edges.emplace_back(first + i, first + (i + 1) % n);
  }
}

// The faces that are reached without crossing a constraint lie equally deep; those
// behind one are left for the next round.
void MarkFrom(Triangulation& made, Face start, int depth, std::vector<Face>& behind) {
  std::vector<Face> open{start};
  while (!open.empty()) {
    const Face face = open.back();
    open.pop_back();
    if (face->info() != kUnknown) continue;
    face->info() = depth;
    for (int i = 0; i < 3; ++i) {
      const Face neighbor = face->neighbor(i);
      if (neighbor->info() != kUnknown) continue;
      (made.is_constrained({face, i}) ? behind : open).push_back(neighbor);
    }
  }
}

void MarkDomain(Triangulation& made) {
  for (const Face face : made.all_face_handles()) face->info() = kUnknown;
  std::vector<Face> border{made.infinite_face()};
  for (int depth = 0; !border.empty(); ++depth) {
    std::vector<Face> behind;
    for (const Face face : border) {
      if (face->info() == kUnknown) MarkFrom(made, face, depth, behind);
    }
    border = std::move(behind);
  }
}

class CgalJob : public Job {
 public:
  explicit CgalJob(const TriangulationWork& work) {
    for (const Polygon& polygon : work.polygons) {
      Input& input = inputs_.emplace_back();
      AddContour(input, polygon.outer);
      for (const Xyz& hole : polygon.holes) AddContour(input, hole);
    }
  }

  double Area() override {
    double sum = 0;
    for (Triangulation& made : made_) {
      for (const Face face : made.finite_face_handles()) {
        if (face->info() % 2 == 1) sum += made.triangle(face).area();
      }
    }
    return sum;
  }

 protected:
  void Prepare() override { made_.clear(); }

  void Run() override {
    made_.resize(inputs_.size());
    for (std::size_t i = 0; i < inputs_.size(); ++i) {
      const Input& input = inputs_[i];
      made_[i].insert_constraints(input.points.begin(), input.points.end(), input.edges.begin(),
                                  input.edges.end());
      MarkDomain(made_[i]);
    }
  }

 private:
  std::vector<Input> inputs_;
  std::vector<Triangulation> made_;
};

}  // namespace

std::unique_ptr<Job> CgalTriangulation(const TriangulationWork& work) {
  return std::make_unique<CgalJob>(work);
}

}  // namespace bench
