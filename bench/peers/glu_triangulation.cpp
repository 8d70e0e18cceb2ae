// GLU's tessellator. Timed: the life of one tessellator, with its normal given, odd
// winding, and an edge flag callback, which is what makes it answer in triangles
// alone; the answer is the corners' addresses.
#include <GL/glu.h>

#include <cmath>
#include <deque>
#include <stdexcept>

#include "triangulators.h"

namespace bench {
namespace {

struct Answer {
  std::vector<const double*> corners;
  std::deque<Xyz> crossings;  // vertices that GLU adds
  bool failed = false;
};

void TakeVertex(void* vertex, void* answer) {
  static_cast<Answer*>(answer)->corners.push_back(static_cast<const double*>(vertex));
}

void TakeEdgeFlag(GLboolean, void*) {}

void TakeCrossing(const GLdouble at[3], void* [4], const GLfloat[4], void** out, void* answer) {
  auto& crossings = static_cast<Answer*>(answer)->crossings;
  crossings.push_back({at[0], at[1], at[2]});
  *out = crossings.back().data();
}

void TakeError(GLenum, void* answer) {
  static_cast<Answer*>(answer)->failed = true;
}

template <class Function>
void Register(GLUtesselator* tessellator, GLenum event, Function function) {
  gluTessCallback(tessellator, event, reinterpret_cast<_GLUfuncptr>(function));
}

void AddContour(GLUtesselator* tessellator, Xyz& contour) {
  gluTessBeginContour(tessellator);
  for (std::size_t i = 0; i < contour.size(); i += 3) {
    gluTessVertex(tessellator, contour.data() + i, contour.data() + i);
  }
  gluTessEndContour(tessellator);
}

void Tessellate(Polygon& polygon, Answer& answer) {
  GLUtesselator* tessellator = gluNewTess();
  Register(tessellator, GLU_TESS_VERTEX_DATA, TakeVertex);
  Register(tessellator, GLU_TESS_EDGE_FLAG_DATA, TakeEdgeFlag);
  Register(tessellator, GLU_TESS_COMBINE_DATA, TakeCrossing);
  Register(tessellator, GLU_TESS_ERROR_DATA, TakeError);
  gluTessProperty(tessellator, GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_ODD);
  gluTessNormal(tessellator, 0, 0, 1);
  gluTessBeginPolygon(tessellator, &answer);
  AddContour(tessellator, polygon.outer);
  for (Xyz& hole : polygon.holes) AddContour(tessellator, hole);
  gluTessEndPolygon(tessellator);
  gluDeleteTess(tessellator);
}

class GluJob : public Job {
 public:
  explicit GluJob(const TriangulationWork& work) : polygons_(work.polygons) {}

  double Area() override {
    double sum = 0;
    for (std::size_t i = 0; i + 2 < answer_.corners.size(); i += 3) {
      const double* a = answer_.corners[i];
      const double* b = answer_.corners[i + 1];
      const double* c = answer_.corners[i + 2];
      sum += std::abs((b[0] - a[0]) * (c[1] - a[1]) - (c[0] - a[0]) * (b[1] - a[1])) / 2;
    }
    return sum;
  }

 protected:
  void Prepare() override { answer_ = {}; }

  void Run() override {
    for (Polygon& polygon : polygons_) Tessellate(polygon, answer_);
    if (answer_.failed) throw std::runtime_error("GLU reports an error");
  }

 private:
  std::vector<Polygon> polygons_;
  Answer answer_;
};

}  // namespace

std::unique_ptr<Job> GluTriangulation(const TriangulationWork& work) {
  return std::make_unique<GluJob>(work);
}

}  // namespace bench
