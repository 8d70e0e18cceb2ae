// The engine below the flat interface: all contours at once, in one sweep.
#include <algorithm>
#include <cmath>
#include <memory>

#include "bench/boolean.h"
#include "boolean/boolean.h"
#include "polygon/area.h"
#include "polygon/contour.h"
#include "polygon/grid_mapping.h"

namespace {

using bench::Xyz;

// One step for both axes, which covers all contours.
class Grid {
 public:
  explicit Grid(const bench::Work& work) {
    double extent = 0.0;
    const auto look = [&](const Xyz& contour) {
      for (const double c : contour) extent = std::fmax(extent, std::fabs(c));
    };
    look(work.main);
    for (const Xyz& other : work.others) look(other);
    step_ = 2 * extent / (zelvan::GRID_MAX - 1);
  }

  [[nodiscard]] zelvan::GridPoint In(const double* xyz) const {
    return {static_cast<std::int32_t>(std::lround(xyz[0] / step_)),
            static_cast<std::int32_t>(std::lround(xyz[1] / step_))};
  }
  [[nodiscard]] double step() const { return step_; }

 private:
  double step_;
};

// A contour as an area of its own, counter-clockwise.
void AddRing(zelvan::OwnedRing& ring, const Grid& grid, const Xyz& contour) {
  zelvan::Contour* made = nullptr;
  for (std::size_t i = 0; i < contour.size(); i += 3) {
    zelvan::AppendVertex(made, grid.In(&contour[i]));
  }
  made->flags |= zelvan::CONTOUR_CCW;
  if (zelvan::TwiceArea(made->head) < 0) {
    zelvan::ReverseContour(made);
    made->flags |= zelvan::CONTOUR_CCW;
  }
  zelvan::Area* area = zelvan::NewArea();
  area->contours = made;
  zelvan::AppendArea(ring.first, area);
}

bench::Job MakeJob(const bench::Work& work) {
  struct Data {
    zelvan::OwnedRing main;
    zelvan::OwnedRing others;
    zelvan::OwnedRing result;
  };
  const Grid grid(work);
  const auto data = std::make_shared<Data>();
  AddRing(data->main, grid, work.main);
  for (const Xyz& other : work.others) AddRing(data->others, grid, other);
  const auto operation =
      work.operation == bench::Operation::kUnite ? zelvan::UNION : zelvan::SUBTRACT;
  bench::Job job;
  job.prepare = [data](std::size_t) { zelvan::FreeAreas(data->result.first); };
  job.work = [data, operation](std::size_t) {
    const zelvan::RingSet a{data->main.first, zelvan::FillRule::NonZero};
    const zelvan::RingSet b{data->others.first, zelvan::FillRule::NonZero};
    bench::Require(zelvan::CombineRings(a, b, data->result.first, operation) == ERR::OK,
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
