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

// The outer contour counter-clockwise, the holes clockwise.
std::vector<Ring> Oriented(const Polygon& polygon) {
  std::vector<Ring> rings = RingsOf(polygon);
  for (std::size_t i = 0; i < rings.size(); ++i) {
    if ((SignedArea(rings[i]) > 0) != (i == 0)) std::reverse(rings[i].begin(), rings[i].end());
  }
  return rings;
}

double Length(const Ring& ring) {
  double length = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Point& next = ring[(i + 1) % ring.size()];
    length += std::hypot(next.x - ring[i].x, next.y - ring[i].y);
  }
  return length;
}

// Is a region nowhere wider than two steps of its grid?
bool IsThin(const Region& region) {
  const std::vector<Polygon> polygons = region.Polygons();
  return std::all_of(polygons.begin(), polygons.end(), [&](const Polygon& polygon) {
    return Area(polygon) <= Length(polygon.outer) * region.Grid().Step();
  });
}

// Do contours cross, or holes lie outside or in each other? Contours may touch. The area of
// the even-odd region tells of most polygons: rounding moves no edge by more than a step. What
// it leaves open is seen on the finest grid: where some part is covered twice, or less than not
// at all, the rules differ; what crosses because points went to the grid is thin.
bool Overlaps(const Polygon& polygon, const Region& region, double step) {
  double area = std::abs(SignedArea(Snapped(polygon.outer, step)));
  double length = Length(polygon.outer);
  for (const Ring& hole : polygon.holes) {
    area -= std::abs(SignedArea(Snapped(hole, step)));
    length += Length(hole);
  }
  const double difference = std::abs(region.Area() - area);
  if (difference == 0 || difference > length * step) return difference != 0;
  const std::vector<Ring> rings = Oriented(polygon);
  const Grid grid = Grid::Covering(rings);
  return !IsThin(Region(rings, FillRule::EvenOdd, grid) ^ Region(rings, FillRule::Positive, grid));
}

bool Vanishes(const Ring& ring, const Grid& grid) {
  return Region({ring}, FillRule::EvenOdd, grid).IsEmpty();
}

}  // namespace

Taken TakeUp(const Polygon& polygon, const Grid& grid, const Options& options, Judge& judge) {
  Taken taken;
  if (!IsFinite(polygon)) {
    taken.failure = std::string(kNotUsable) + ": a coordinate is not finite or too large";
    return taken;
  }
  const Region region(RingsOf(polygon), FillRule::EvenOdd, grid);
  taken.mended = Overlaps(polygon, region, grid.Step());
  if (taken.mended && !options.repair) {
    taken.failure = std::string(kNotUsable) + ": " + judge.WhyInvalid(polygon);
    return taken;
  }
  const bool refill = taken.mended && options.fill != FillRule::EvenOdd;
  taken.region = refill ? Region(RingsOf(polygon), options.fill, grid) : region;
  if (taken.region.IsEmpty()) {
    taken.failure = Vanishes(polygon.outer, grid) ? kNoArea : kNothingLeft;
  }
  if (taken.region.HoleCount() == polygon.holes.size()) return taken;
  for (std::size_t i = 0; i < polygon.holes.size(); ++i) {
    if (Vanishes(polygon.holes[i], grid)) taken.vanished.push_back(i);
  }
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
