// Clipper 6, on integers below 2^30, where it needs no wide ones; all contours at once.
#include <cmath>
#include <memory>
#include <polyclipping/clipper.hpp>

#include "boolean.h"

namespace {

using bench::Xyz;
using ClipperLib::Path;
using ClipperLib::Paths;

/// Integers for the coordinates of all contours.
class Scale {
 public:
  explicit Scale(const bench::Work& work) {
    double largest = 0.0;
    const auto look = [&largest](const Xyz& contour) {
      for (const double c : contour) largest = std::fmax(largest, std::fabs(c));
    };
    look(work.main);
    for (const Xyz& other : work.others) look(other);
    factor_ = std::exp2(29.0 - std::ceil(std::log2(largest)));
  }

  Path In(const Xyz& contour) const {
    Path path;
    for (std::size_t i = 0; i < contour.size(); i += 3) {
      path.emplace_back(std::llround(contour[i] * factor_), std::llround(contour[i + 1] * factor_));
    }
    // Clipper fills what winds around once or more.
    if (!ClipperLib::Orientation(path)) ClipperLib::ReversePath(path);
    return path;
  }

  double AreaOut(double area) const { return area / (factor_ * factor_); }

 private:
  double factor_;
};

bench::Job MakeJob(const bench::Work& work) {
  const Scale scale(work);
  struct Data {
    Path main;
    Paths others;
    Paths result;
  };
  const auto data = std::make_shared<Data>();
  data->main = scale.In(work.main);
  for (const Xyz& other : work.others) data->others.push_back(scale.In(other));
  const bool unites = work.operation == bench::Operation::kUnite;
  bench::Job job;
  job.prepare = [data](std::size_t) { data->result.clear(); };
  job.work = [data, unites](std::size_t) {
    ClipperLib::Clipper clipper;
    clipper.AddPath(data->main, ClipperLib::ptSubject, true);
    clipper.AddPaths(data->others, ClipperLib::ptClip, true);
    bench::Require(clipper.Execute(unites ? ClipperLib::ctUnion : ClipperLib::ctDifference,
                                   data->result, ClipperLib::pftNonZero, ClipperLib::pftNonZero),
                   "Clipper failed");
  };
  job.area = [data, scale](std::size_t) {
    double area = 0.0;
    for (const Path& path : data->result) area += ClipperLib::Area(path);
    return scale.AreaOut(area);
  };
  return job;
}

}  // namespace

int main(int argc, char** argv) {
  return bench::RunBooleans(argc, argv, "Clipper", MakeJob);
}
