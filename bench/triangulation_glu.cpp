// GLU's tessellator, asked for separate triangles by a callback for edge flags.
#include <GL/glu.h>

#include <memory>

#include "triangulation.h"

namespace {

using Callback = void (*)();
using bench::Require;

struct Triangles {
  std::vector<const double*> corners;
  std::vector<std::unique_ptr<double[]>> added;  // vertices where edges cross
  bool failed = false;
};

void TakeVertex(void* vertex, void* triangles) {
  static_cast<Triangles*>(triangles)->corners.push_back(static_cast<const double*>(vertex));
}

void IgnoreEdgeFlag(GLboolean) {}

void AddVertex(const double* at, void* const*, const float*, void** out, void* triangles) {
  auto& added = static_cast<Triangles*>(triangles)->added;
  added.push_back(std::make_unique<double[]>(3));
  std::copy(at, at + 3, added.back().get());
  *out = added.back().get();
}

void Fail(GLenum, void* triangles) {
  static_cast<Triangles*>(triangles)->failed = true;
}

template <class Function>
void SetCallback(GLUtesselator* tessellator, GLenum which, Function function) {
  gluTessCallback(tessellator, which, reinterpret_cast<Callback>(function));
}

void Tessellate(const bench::Polygon& polygon, Triangles& triangles) {
  GLUtesselator* tessellator = gluNewTess();
  SetCallback(tessellator, GLU_TESS_VERTEX_DATA, TakeVertex);
  SetCallback(tessellator, GLU_TESS_EDGE_FLAG, IgnoreEdgeFlag);
  SetCallback(tessellator, GLU_TESS_COMBINE_DATA, AddVertex);
  SetCallback(tessellator, GLU_TESS_ERROR_DATA, Fail);
  gluTessNormal(tessellator, 0, 0, 1);
  gluTessBeginPolygon(tessellator, &triangles);
  for (const bench::Xyz& contour : polygon) {
    gluTessBeginContour(tessellator);
    for (std::size_t i = 0; i < contour.size(); i += 3) {
      auto* point = const_cast<double*>(&contour[i]);  // read only, both times
      gluTessVertex(tessellator, point, point);
    }
    gluTessEndContour(tessellator);
  }
  gluTessEndPolygon(tessellator);
  gluDeleteTess(tessellator);
}

bench::Job MakeJob(const bench::Scene& scene) {
  const auto triangles = std::make_shared<Triangles>();
  bench::Job job;
  job.parts = scene.size();
  job.prepare = [triangles](std::size_t) { *triangles = {}; };
  job.work = [triangles, &scene](std::size_t part) {
    Tessellate(scene[part], *triangles);
    Require(!triangles->failed, "the tessellator failed");
  };
  job.area = [triangles](std::size_t) {
    double area = 0.0;
    const auto& corners = triangles->corners;
    for (std::size_t i = 0; i + 2 < corners.size(); i += 3) {
      bench::Xyz triangle;
      for (std::size_t k = 0; k < 3; ++k)
        bench::Add(triangle, corners[i + k][0], corners[i + k][1]);
      area += std::fabs(bench::DoubleArea(triangle)) / 2;
    }
    return area;
  };
  return job;
}

}  // namespace

int main(int argc, char** argv) {
  return bench::RunTriangulation(argc, argv, {bench::JobRow("GLU", MakeJob)});
}
