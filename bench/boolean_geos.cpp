// The overlay of GEOS, on pairs of contours.
#include "boolean.h"
#include "geos_geometry.h"

namespace {

bench::Job MakeJob(const bench::Work& work) {
  struct Data {
    bench::Geometry main;
    bench::Geometry other;
    bench::Geometry result;
  };
  const auto data = std::make_shared<Data>();
  data->main = bench::GeometryOf({work.main});
  data->other = bench::GeometryOf({work.others[0]});
  const auto operation =
      work.operation == bench::Operation::kUnite ? GEOSUnion_r : GEOSDifference_r;
  bench::Job job;
  job.prepare = [data](std::size_t) { data->result.reset(); };
  job.work = [data, operation](std::size_t) {
    data->result.reset(operation(bench::Geos(), data->main.get(), data->other.get()));
    bench::Require(data->result != nullptr, "GEOS failed");
  };
  job.area = [data](std::size_t) { return bench::Area(data->result); };
  return job;
}

}  // namespace

int main(int argc, char** argv) {
  return bench::RunBooleans(
      argc, argv, "GEOS", MakeJob,
      {"coasts united, few crossings", "coasts subtracted, few crossings",
       "coasts united, many crossings", "coasts subtracted, many crossings", "stars united"});
}
