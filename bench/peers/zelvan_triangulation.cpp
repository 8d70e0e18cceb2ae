// The library's own rows: SetMainContour alone, Triangulate alone, and the whole road
// from points to arrays that were read out.
#include <zelvan/zelvan.h>

#include <cmath>

#include "../allocation.h"
#include "../areas.h"
#include "flat_calls.h"
#include "triangulators.h"

namespace bench {
namespace {

struct Buffers {
  std::vector<double> vertices;
  std::vector<int> edges;
  std::vector<int> faces;
};

void ReadOut(Buffers& buffers) {
  int vertexCount = 0, edgeCount = 0, faceCount = 0;
  Require(GetCounts(&vertexCount, &edgeCount, &faceCount));
  buffers.vertices.resize(3 * static_cast<std::size_t>(vertexCount));
  buffers.edges.resize(3 * static_cast<std::size_t>(edgeCount));
  buffers.faces.resize(3 * static_cast<std::size_t>(faceCount));
  Require(GetVertices(buffers.vertices.data()));
  Require(GetEdges(buffers.edges.data()));
  Require(GetFaces(buffers.faces.data()));
}

double TriangleArea(const Buffers& buffers, const int* face) {
  const auto edge = [&](int e) { return buffers.edges.data() + 3 * face[e]; };
  const auto point = [&](int v) { return buffers.vertices.data() + 3 * v; };
  const int* first = edge(0);
  const int* second = edge(1);
  const bool shared = second[0] == first[0] || second[0] == first[1];
  const double* a = point(first[0]);
  const double* b = point(first[1]);
  const double* c = point(second[shared ? 1 : 0]);
  return std::abs((b[0] - a[0]) * (c[1] - a[1]) - (c[0] - a[0]) * (b[1] - a[1])) / 2;
}

double MeshArea(const Buffers& buffers) {
  double sum = 0;
  for (std::size_t f = 0; f < buffers.faces.size(); f += 3) {
    sum += TriangleArea(buffers, buffers.faces.data() + f);
  }
  return sum;
}

double MainPolygonArea(Buffers& buffers) {
  Require(Triangulate());
  ReadOut(buffers);
  return MeshArea(buffers);
}

void SetPolygon(const Polygon& polygon) {
  Set(polygon.outer);
  if (polygon.holes.empty()) return;
  for (const Xyz& hole : polygon.holes) Queue(hole);
  Require(Substruct());
}

// Goes through the polygons; what `Timed` does with each is what counts.
class ZelvanJob : public Job {
 public:
  explicit ZelvanJob(const TriangulationWork& work) : work_(work) {}

  double Milliseconds() override {
    double total = 0;
    for (const Polygon& polygon : work_.polygons) {
      Untimed(polygon);
      const double start = CpuMilliseconds();
      Timed(polygon);
      total += CpuMilliseconds() - start;
    }
    return total;
  }

  double Area() override {
    double sum = 0;
    for (const Polygon& polygon : work_.polygons) {
      if (work_.polygons.size() > 1) {  // else it is still there
        Untimed(polygon);
        Timed(polygon);
      }
      sum += MainPolygonArea(buffers_);
    }
    return sum;
  }

 protected:
  virtual void Untimed(const Polygon&) {}
  virtual void Timed(const Polygon& polygon) = 0;
  void Run() override {}

  const TriangulationWork& work_;
  Buffers buffers_;
};

class SetMainContourJob : public ZelvanJob {
 public:
  using ZelvanJob::ZelvanJob;
  double Area() override {
    double sum = ZelvanJob::Area();
    for (const Polygon& polygon : work_.polygons) {
      sum += AreaOf({polygon}) - AreaOf({{polygon.outer, {}}});  // its holes were not set
    }
    return sum;
  }

 protected:
  void Timed(const Polygon& polygon) override { Set(polygon.outer); }
};

class TriangulateJob : public ZelvanJob {
 public:
  explicit TriangulateJob(const TriangulationWork& work) : ZelvanJob(work) {
    if (work.polygons.size() > 1) return;
    if (work.parts.empty()) {
      SetPolygon(work.polygons[0]);
      return;
    }
    Set(work.parts[0]);
    for (std::size_t i = 1; i < work.parts.size(); ++i) Queue(work.parts[i]);
    Require(Union());
  }

 protected:
  void Untimed(const Polygon& polygon) override {
    if (work_.polygons.size() > 1) SetPolygon(polygon);
  }
  void Timed(const Polygon&) override { Require(Triangulate()); }
};

class AllJob : public ZelvanJob {
 public:
  using ZelvanJob::ZelvanJob;

  // The library's own memory, from an empty workspace: the host's arrays, which have
  // their sizes from the runs before, are not in it.
  std::size_t PeakBytes() override {
    SetMainContour(0, nullptr);
    const PeakCounter counter;
    for (const Polygon& polygon : work_.polygons) Timed(polygon);
    return counter.Bytes();
  }

 protected:
  void Timed(const Polygon& polygon) override {
    SetPolygon(polygon);
    Require(Triangulate());
    ReadOut(buffers_);
  }
};

}  // namespace

std::unique_ptr<Job> ZelvanSetMainContour(const TriangulationWork& work) {
  return std::make_unique<SetMainContourJob>(work);
}

std::unique_ptr<Job> ZelvanTriangulate(const TriangulationWork& work) {
  return std::make_unique<TriangulateJob>(work);
}

std::unique_ptr<Job> ZelvanAll(const TriangulationWork& work) {
  return std::make_unique<AllJob>(work);
}

}  // namespace bench
