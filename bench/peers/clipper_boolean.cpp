// Clipper 6. Timed: AddPath for each contour and one Execute, which takes all of
// them at once and answers in paths. Its coordinates are integers: the doubles are
// scaled before, by a power of two, to the largest range of its quick arithmetic.
#include <algorithm>
#include <cmath>
#include <polyclipping/clipper.hpp>
#include <stdexcept>

#include "combiners.h"

namespace bench {
namespace {

using namespace ClipperLib;

double ScaleOf(const std::vector<Xyz>& contours) {
  double largest = 0;
  for (const Xyz& contour : contours) {
    for (double coordinate : contour) largest = std::max(largest, std::abs(coordinate));
  }
  return std::exp2(std::floor(std::log2(0x3FFFFFFF / largest)));
}

Path PathOf(const Xyz& contour, double scale) {
  Path path;
  for (std::size_t i = 0; i < contour.size(); i += 3) {
    path.emplace_back(std::llround(scale * contour[i]), std::llround(scale * contour[i + 1]));
  }
  // All one way round, so that overlaps add up under the nonzero rule.
  if (!Orientation(path)) ReversePath(path);
  return path;
}

class ClipperJob : public Job {
 public:
  explicit ClipperJob(const BooleanWork& work)
      : type_(work.operation == Operation::kUnion ? ctUnion : ctDifference),
        scale_(ScaleOf(work.contours)) {
    for (const Xyz& contour : work.contours) paths_.push_back(PathOf(contour, scale_));
  }

  double Area() override {
    double sum = 0;
    for (const Path& path : answer_) sum += ClipperLib::Area(path);
    return sum / scale_ / scale_;
  }

 protected:
  void Prepare() override { answer_.clear(); }

  void Run() override {
    Clipper clipper;
    for (std::size_t i = 0; i < paths_.size(); ++i) {
      clipper.AddPath(paths_[i], i == 0 ? ptSubject : ptClip, true);
    }
    if (!clipper.Execute(type_, answer_, pftNonZero, pftNonZero)) {
      throw std::runtime_error("Clipper reports an error");
    }
  }

 private:
  ClipType type_;
  double scale_;
  Paths paths_;
  Paths answer_;
};

}  // namespace

std::unique_ptr<Job> ClipperBoolean(const BooleanWork& work) {
  return std::make_unique<ClipperJob>(work);
}

}  // namespace bench
