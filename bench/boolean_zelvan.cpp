// The flat interface: contours set and queued, and one Union or Substruct.
#include "boolean.h"
#include "flat.h"
#include "heap_peak.h"

namespace {

bench::Job MakeJob(const bench::Work& work) {
  bench::Job job;
  job.prepare = [](std::size_t) { bench::Clear(); };
  job.work = [&work](std::size_t) {
    bench::Set(work.main);
    for (const bench::Xyz& other : work.others) bench::Queue(other);
    const bool unites = work.operation == bench::Operation::kUnite;
    bench::Require((unites ? Union() : Substruct()) == 1, "the operation failed");
  };
  job.area = [](std::size_t) { return bench::MainArea(); };
  job.peakBytes = [run = job.work] {
    bench::Clear();
    return bench::PeakBytes([run] { run(0); });
  };
  return job;
}

}  // namespace

int main(int argc, char** argv) {
  return bench::RunBooleans(argc, argv, "Zelvan", MakeJob);
}
