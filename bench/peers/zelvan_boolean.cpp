// The library's own rows, through the flat functions.
#include <zelvan/zelvan.h>

#include <cmath>

#include "../allocation.h"
#include "../areas.h"
#include "combiners.h"
#include "flat_calls.h"

namespace bench {
namespace {

// Holes run against their outer contours.
double MainPolygonArea() {
  int vertexCount = 0, edgeCount = 0, faceCount = 0;
  GetCounts(&vertexCount, &edgeCount, &faceCount);
  Xyz vertices(3 * static_cast<std::size_t>(vertexCount));
  Require(GetVertices(vertices.data()));
  double twice = 0;
  auto from = vertices.begin();
  for (int contour = 0; contour < GetContourCount(); ++contour) {
    const auto to = from + 3 * GetContourSize(contour);
    twice += TwiceArea({from, to});
    from = to;
  }
  return std::abs(twice) / 2;
}

class ZelvanJob : public Job {
 public:
  explicit ZelvanJob(const BooleanWork& work) : work_(work) {}

  double Area() override { return MainPolygonArea(); }

  // All that the library holds, from an empty workspace.
  std::size_t PeakBytes() override {
    SetMainContour(0, nullptr);
    const PeakCounter counter;
    Give();
    Operate();
    return counter.Bytes();
  }

 protected:
  void Give() {
    Set(work_.contours[0]);
    for (std::size_t i = 1; i < work_.contours.size(); ++i) Queue(work_.contours[i]);
  }
  void Operate() { Require(work_.operation == Operation::kUnion ? Union() : Substruct()); }

 private:
  const BooleanWork& work_;
};

class OperationJob : public ZelvanJob {
 public:
  using ZelvanJob::ZelvanJob;

 protected:
  void Prepare() override { Give(); }
  void Run() override { Operate(); }
};

class CallsJob : public ZelvanJob {
 public:
  using ZelvanJob::ZelvanJob;
  std::size_t PeakBytes() override { return 0; }

 protected:
  void Run() override {
    Give();
    Operate();
  }
};

}  // namespace

std::unique_ptr<Job> ZelvanOperation(const BooleanWork& work) {
  return std::make_unique<OperationJob>(work);
}

std::unique_ptr<Job> ZelvanCalls(const BooleanWork& work) {
  return std::make_unique<CallsJob>(work);
}

}  // namespace bench
