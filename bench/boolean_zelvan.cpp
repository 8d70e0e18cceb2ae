// The flat interface: contours set and queued, and one Union or Substruct; and that
// operation alone.
#include "boolean.h"
#include "flat.h"
#include "heap_peak.h"

namespace {

void SetAll(const bench::Work& work) {
  bench::Set(work.main);
  for (const bench::Xyz& other : work.others) bench::Queue(other);
}

void Operate(const bench::Work& work) {
  const bool unites = work.operation == bench::Operation::kUnite;
  bench::Require((unites ? Union() : Substruct()) == 1, "the operation failed");
}

bench::Job MakeAllCalls(const bench::Work& work) {
  bench::Job job;
  job.prepare = [](std::size_t) { bench::Clear(); };
  job.work = [&work](std::size_t) {
    SetAll(work);
    Operate(work);
  };
  job.area = [](std::size_t) { return bench::MainArea(); };
  job.peakBytes = [run = job.work] {
    bench::Clear();
    return bench::PeakBytes([run] { run(0); });
  };
  return job;
}

bench::Job MakeOperation(const bench::Work& work) {
  bench::Job job;
  job.prepare = [&work](std::size_t) { SetAll(work); };
  job.work = [&work](std::size_t) { Operate(work); };
  job.area = [](std::size_t) { return bench::MainArea(); };
  return job;
}

}  // namespace

int main(int argc, char** argv) {
  const int failed = bench::RunBooleans(argc, argv, "all calls", MakeAllCalls);
  return bench::RunBooleans(argc, argv, "operation", MakeOperation) + failed;
}
