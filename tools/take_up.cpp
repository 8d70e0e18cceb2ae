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
Ring Snapped(Ring ring, double step) {
  for (Point& p : ring) {
    p = {std::floor(p.x / step + 0.5) * step, std::floor(p.y / step + 0.5) * step};
  }
  return ring;
}

// Rings on the grid, the outer contour counter-clockwise, the holes clockwise.
std::vector<Ring> Oriented(const Polygon& polygon, double step) {
  std::vector<Ring> rings;
  for (const Ring& ring : RingsOf(polygon)) {
    const bool is_outer = rings.empty();
    rings.push_back(Snapped(ring, step));
    if ((SignedArea(rings.back()) > 0) != is_outer) {
      std::reverse(rings.back().begin(), rings.back().end());
    }
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

// Do contours cross, or holes lie outside or in each other? Contours may touch. Where no place
// has a negative winding number, the rings' areas sum to more than that of the even-odd region
// if something is covered twice. A sum alone does not tell: an overlap can make up for another.
// Rounding moves no edge by more than a step; what a difference that small means is seen on
// the finest grid: what crosses because points went to the grid is thin.
bool Overlaps(const Polygon& polygon, const Region& region, const Grid& grid) {
  const std::vector<Ring> rings = Oriented(polygon, grid.Step());
  double difference = -region.Area();
  double length = 0;
  for (const Ring& ring : rings) {
    difference += SignedArea(ring);
    length += Length(ring);
  }
  if (std::abs(difference) > length * grid.Step()) return true;
  if (difference == 0 && Region(rings, FillRule::Negative, grid).IsEmpty()) return false;
  const Grid finest = Grid::Covering(RingsOf(polygon));
  const std::vector<Ring> fine = Oriented(polygon, finest.Step());
  return !IsThin(Region(fine, FillRule::Negative, finest)) ||
         !IsThin(Region(fine, FillRule::EvenOdd, finest) ^
                 Region(fine, FillRule::Positive, finest));
}

// Has a ring no area on the grid? Only one like a needle can lose it.
bool Vanishes(const Ring& ring, const Grid& grid) {
  return std::abs(SignedArea(Snapped(ring, grid.Step()))) <= Length(ring) * grid.Step() &&
         Region({ring}, FillRule::EvenOdd, grid).IsEmpty();
}

}  // namespace

Taken TakeUp(const Polygon& polygon, const Grid& grid, const Options& options, Judge& judge) {
  Taken taken;
  if (!IsFinite(polygon)) {
    taken.failure = std::string(kNotUsable) + ": a coordinate is not finite or too large";
    return taken;
  }
  const Region region(RingsOf(polygon), FillRule::EvenOdd, grid);
  taken.mended = Overlaps(polygon, region, grid);
  if (taken.mended && !options.repair) {
    taken.failure = std::string(kNotUsable) + ": " + judge.WhyInvalid(polygon);
    return taken;
  }
  const bool refill = taken.mended && options.fill != FillRule::EvenOdd;
  taken.region = refill ? Region(RingsOf(polygon), options.fill, grid) : region;
  if (taken.region.IsEmpty()) {
    taken.failure = Vanishes(polygon.outer, grid) ? kNoArea : kNothingLeft;
  }
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
    return (std::ceil((low / 2 + high / 2) / options.step) - std::ldexp(1.0, ZELVAN_GRID_BITS - 1)) * options.step;
  };
  const Grid grid({origin(box.min.x, box.max.x), origin(box.min.y, box.max.y)}, options.step);
  try {
    static_cast<void>(Region({{box.min, box.max}}, FillRule::EvenOdd, grid));
  } catch (const std::invalid_argument&) {
    throw std::invalid_argument("--grid: the polygons extend over 2^31 steps or more of " +
                                Shortest(options.step));
  }
  return grid;
}

}  // namespace tool
