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

// Rings as the library has them on a grid.
std::vector<Ring> Snapped(std::vector<Ring> rings, const Grid& grid) {
  const double step = grid.Step();
  for (Ring& ring : rings) {
    for (Point& p : ring) {
      p = {std::floor(p.x / step + 0.5) * step, std::floor(p.y / step + 0.5) * step};
    }
  }
  return rings;
}

// The outer contour counter-clockwise, the holes clockwise.
std::vector<Ring> Oriented(std::vector<Ring> rings) {
  for (Ring& ring : rings) {
    if ((SignedArea(ring) > 0) != (&ring == &rings.front())) std::reverse(ring.begin(), ring.end());
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
bool Overlaps(const std::vector<Ring>& given, const std::vector<Ring>& snapped,
              const Region& region, const Grid& grid) {
  const std::vector<Ring> rings = Oriented(snapped);
  double difference = -region.Area();
  double length = 0;
  for (const Ring& ring : rings) {
    difference += SignedArea(ring);
    length += Length(ring);
  }
  if (std::abs(difference) > length * grid.Step()) return true;
  if (difference == 0 && Region(rings, FillRule::Negative, grid).IsEmpty()) return false;
  const Grid finest = Grid::Covering(given);
  const std::vector<Ring> fine = Oriented(Snapped(given, finest));
  return !IsThin(Region(fine, FillRule::Negative, finest)) ||
         !IsThin(Region(fine, FillRule::EvenOdd, finest) ^
                 Region(fine, FillRule::Positive, finest));
}

// Has a ring no area on the grid? Only one like a needle can lose it.
bool Vanishes(const Ring& snapped, const Grid& grid) {
  return std::abs(SignedArea(snapped)) <= Length(snapped) * grid.Step() &&
         Region({snapped}, FillRule::EvenOdd, grid).IsEmpty();
}

Move FarthestMove(const std::vector<Ring>& given, const std::vector<Ring>& snapped) {
  Move farthest;
  for (std::size_t i = 0; i < given.size(); ++i) {
    for (std::size_t k = 0; k < given[i].size(); ++k) {
      const Point& from = given[i][k];
      const Point& to = snapped[i][k];
      const double distance = std::hypot(to.x - from.x, to.y - from.y);
      if (distance > farthest.distance) farthest = {distance, from, to};
    }
  }
  return farthest;
}

bool IsNotable(const AreaChange& change) {
  return std::abs(change.after - change.before) > change.before * kNotable;
}

// Of each ring with area left; of contours that overlap, all together.
std::vector<AreaChange> ChangesOf(const std::vector<Ring>& given, const std::vector<Ring>& snapped,
                                  const Taken& taken, double area) {
  std::vector<AreaChange> changes;
  const auto add = [&](const AreaChange& change) {
    if (IsNotable(change)) changes.push_back(change);
  };
  if (taken.mended) {
    add({0, taken.area, area});
    return changes;
  }
  for (std::size_t i = 0; i < given.size(); ++i) {
    const auto& vanished = taken.vanished;
    if (i > 0 && std::binary_search(vanished.begin(), vanished.end(), i - 1)) continue;
    add({i, std::abs(SignedArea(given[i])), std::abs(SignedArea(snapped[i]))});
  }
  return changes;
}

}  // namespace

double AreaAsWritten(const Polygon& polygon) {
  const std::vector<Ring> given = RingsOf(polygon);
  const Grid finest = Grid::Covering(given);
  const Region region(given, FillRule::EvenOdd, finest);
  return Overlaps(given, Snapped(given, finest), region, finest) ? region.Area() : Area(polygon);
}

Taken TakeUp(const Polygon& polygon, const Grid& grid, const Options& options, Judge& judge) {
  Taken taken;
  taken.area = std::nan("");
  if (!IsFinite(polygon)) {
    taken.failure = std::string(kNotUsable) + ": a coordinate is not finite or too large";
    return taken;
  }
  const std::vector<Ring> given = RingsOf(polygon);
  const std::vector<Ring> snapped = Snapped(given, grid);
  const Region region(given, FillRule::EvenOdd, grid);
  taken.mended = Overlaps(given, snapped, region, grid);
  taken.area = taken.mended || region.IsEmpty() ? AreaAsWritten(polygon) : Area(polygon);
  if (taken.mended && !options.repair) {
    taken.failure =
        std::string(kNotUsable) + ": " + judge.WhyInvalid(polygon) + " (--repair mends it)";
    return taken;
  }
  const bool refill = taken.mended && options.fill != FillRule::EvenOdd;
  taken.region = refill ? Region(given, options.fill, grid) : region;
  for (std::size_t i = 0; i < polygon.holes.size(); ++i) {
    if (Vanishes(snapped[i + 1], grid)) taken.vanished.push_back(i);
  }
  if (taken.region.IsEmpty()) {
    taken.failure = Vanishes(snapped.front(), grid) ? kNoArea : kNothingLeft;
    return taken;
  }
  taken.changes = ChangesOf(given, snapped, taken, region.Area());
  taken.farthest = FarthestMove(given, snapped);
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
  const double half = -Grid().Origin().x;  // of the steps along an axis
  const auto origin = [&](double low, double high) {
    return (std::ceil((low / 2 + high / 2) / options.step) - half) * options.step;
  };
  const Grid grid({origin(box.min.x, box.max.x), origin(box.min.y, box.max.y)}, options.step);
  try {
    static_cast<void>(Region({{box.min, box.max}}, FillRule::EvenOdd, grid));
  } catch (const std::invalid_argument&) {
    throw std::invalid_argument("--grid: what is to share a grid extends over " +
                                Shortest(2 * half) + " steps or more of " + Shortest(options.step));
  }
  return grid;
}

}  // namespace tool
