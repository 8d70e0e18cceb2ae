// The engine below the flat interface: all contours at once, in one sweep.
#include <memory>

#include "bench/boolean.h"
#include "bench/grid.h"
#include "boolean/boolean.h"
#include "boolean/operand.h"

namespace {

bench::Job MakeJob(const bench::Work& work) {
  struct Data {
    zelvan::OwnedRing main;
    zelvan::OwnedRing others;
    zelvan::OwnedRing result;
  };
  const bench::Grid grid(work.main, work.others);
  const auto data = std::make_shared<Data>();
  bench::AddRing(data->main, grid, work.main);
  for (const bench::Xyz& other : work.others) bench::AddRing(data->others, grid, other);
  const auto operation =
      work.operation == bench::Operation::kUnite ? zelvan::UNION : zelvan::SUBTRACT;
  bench::Job job;
  job.prepare = [data](std::size_t) { zelvan::FreeAreas(data->result.first); };
  job.work = [data, operation](std::size_t) {
    zelvan::SweepRecords records;  // outlive the copies
    const zelvan::OwnedRing a(zelvan::CopyAreas(data->main.first));
    const zelvan::OwnedRing b(zelvan::CopyAreas(data->others.first));
    bench::Require(zelvan::CombineCopies(a.first, b.first, data->result.first, operation, records,
                                         zelvan::WindingRule::kPositive) == ERR::OK,
                   "the operation failed");
  };
  job.area = [data, step = grid.step()](std::size_t) {
    double twice = 0.0;
    zelvan::ForEachContour(data->result.first, [&](const zelvan::Contour* c) {
      twice += static_cast<double>(zelvan::TwiceArea(c->head));
    });
    return twice / 2 * step * step;
  };
  return job;
}

}  // namespace

int main(int argc, char** argv) {
  return bench::RunBooleans(argc, argv, "one sweep", MakeJob);
}
