#include "take_up.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "output.h"

namespace tool {
namespace {

using zelvan::FillRule;
using zelvan::Grid;

// A ring as the library has it.
Ring Snapped(const Ring& ring, double step) {
  Ring snapped = ring;
  for (Point& p : snapped) {
    p = {std::floor(p.x / step + 0.5) * step, std::floor(p.y / step + 0.5) * step};
  }
  return snapped;
}

double Length(const Ring& ring) {
  double length = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Point& next = ring[(i + 1) % ring.size()];
    length += std::hypot(next.x - ring[i].x, next.y - ring[i].y);
  }
  return length;
}

// A contour on the grid: its area is 0 for a spike, but for a bow-tie too.
struct GridRing {
  double area;
  bool vanishes;
};

GridRing LookAt(const Ring& ring, const Grid& grid) {
  const double area = std::abs(SignedArea(Snapped(ring, grid.Step())));
  return {area, area == 0 && Region({ring}, FillRule::EvenOdd, grid).IsEmpty()};
}

}  // namespace

Taken TakeUp(const Polygon& polygon, const Grid& grid, const Options& options, Judge& judge) {
  Taken taken;
  if (!IsFinite(polygon)) {
    taken.failure = std::string(kNotUsable) + ": a coordinate is not finite";
    return taken;
  }
  const GridRing outer = LookAt(polygon.outer, grid);
  double area = outer.area;
  double length = Length(polygon.outer);
  for (std::size_t i = 0; i < polygon.holes.size(); ++i) {
    const GridRing hole = LookAt(polygon.holes[i], grid);
    area -= hole.area;
    length += Length(polygon.holes[i]);
    if (hole.vanishes) taken.vanished.push_back(i);
  }
  taken.region = Region(RingsOf(polygon), FillRule::EvenOdd, grid);
  const double difference = std::abs(taken.region.Area() - area);
  if (difference > 0) {
    const bool differs = difference > length * grid.Step();
    const bool plain = options.repair && differs;  // whatever the reason
    const std::string why = plain ? "contours cross" : judge.WhyInvalid(polygon, differs);
    taken.mended = !why.empty() && options.repair;
    if (!why.empty() && !options.repair) taken.failure = std::string(kNotUsable) + ": " + why;
  }
  if (taken.mended && options.fill != FillRule::EvenOdd) {
    taken.region = Region(RingsOf(polygon), options.fill, grid);
  }
  if (taken.failure.empty() && taken.region.IsEmpty()) {
    taken.failure = outer.vanishes ? kNoArea : kNothingLeft;
  }
  if (!taken.failure.empty()) taken.region = Region();
  return taken;
}

Grid GridFor(const std::vector<const Polygon*>& polygons, const Options& options) {
  constexpr double far = std::numeric_limits<double>::infinity();
  zelvan::Box box{{far, far}, {-far, -far}};
  for (const Polygon* polygon : polygons) {
    if (!IsFinite(*polygon)) continue;
    for (const Ring& ring : RingsOf(*polygon)) {
      for (const Point& p : ring) {
        box.min = {std::min(box.min.x, p.x), std::min(box.min.y, p.y)};
        box.max = {std::max(box.max.x, p.x), std::max(box.max.y, p.y)};
      }
    }
  }
  if (box.min.x > box.max.x) return {};
  if (options.step == 0) return Grid::Covering(box);
  const auto origin = [&](double low, double high) {
    return (std::floor((low / 2 + high / 2) / options.step) - 524288) * options.step;
  };
  const Grid grid({origin(box.min.x, box.max.x), origin(box.min.y, box.max.y)}, options.step);
  try {
    static_cast<void>(Region({{box.min, box.max}}, FillRule::EvenOdd, grid));
  } catch (const std::invalid_argument&) {
    throw std::invalid_argument("--grid: the polygons extend over more than 2^20 steps of " +
                                Shortest(options.step));
  }
  return grid;
}

}  // namespace tool
