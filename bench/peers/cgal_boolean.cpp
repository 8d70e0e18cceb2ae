// CGAL's polygon sets with exact predicates and exact constructions. Timed: a join
// or difference of the sets of two contours, which were made before.
#include <CGAL/Exact_predicates_exact_constructions_kernel.h>
#include <CGAL/Polygon_set_2.h>

#include <cmath>
#include <iterator>

#include "../areas.h"
#include "combiners.h"

namespace bench {
namespace {

using Kernel = CGAL::Exact_predicates_exact_constructions_kernel;
using Set = CGAL::Polygon_set_2<Kernel>;
using Ring = CGAL::Polygon_2<Kernel>;
using Region = CGAL::Polygon_with_holes_2<Kernel>;

Ring RingOf(const Xyz& contour) {
  Ring ring;
  for (std::size_t i = 0; i < contour.size(); i += 3) {
    ring.push_back({contour[i], contour[i + 1]});
  }
  if (TwiceArea(contour) < 0) ring.reverse_orientation();
  return ring;
}

// In doubles: exact sums of exact crossings would take longer than the operation.
double TwiceAreaOf(const Ring& ring) {
  Xyz contour;
  for (const auto& p : ring) Add(contour, CGAL::to_double(p.x()), CGAL::to_double(p.y()));
  return std::abs(TwiceArea(contour));
}

class CgalJob : public Job {
 public:
  explicit CgalJob(const BooleanWork& work)
      : operation_(work.operation),
        first_(RingOf(work.contours[0])),
        other_(RingOf(work.contours[1])) {}

  double Area() override {
    std::vector<Region> regions;
    answer_.polygons_with_holes(std::back_inserter(regions));
    double twice = 0;
    for (const Region& region : regions) {
      twice += TwiceAreaOf(region.outer_boundary());
      for (const Ring& hole : region.holes()) twice -= TwiceAreaOf(hole);
    }
    return twice / 2;
  }

 protected:
  void Prepare() override { answer_ = first_; }

  void Run() override {
    if (operation_ == Operation::kUnion) {
      answer_.join(other_);
    } else {
      answer_.difference(other_);
    }
  }

 private:
  Operation operation_;
  Set first_, other_, answer_;
};

}  // namespace

std::unique_ptr<Job> CgalBoolean(const BooleanWork& work) {
  return std::make_unique<CgalJob>(work);
}

}  // namespace bench
