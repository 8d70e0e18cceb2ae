// Hulls and the boxes around them (convex_hull.h).
#include "polygon/convex_hull.h"

#include <algorithm>
#include <limits>

#include "polygon/nearest_double.h"

namespace zelvan {

namespace {

// The chain of the hull that the last of ascending, or descending, points belongs to.
void Extend(std::vector<GridPoint>& hull, std::size_t first, GridPoint p) {
  while (hull.size() > first + 1 && Cross(hull[hull.size() - 2], hull.back(), p) <= 0) {
    hull.pop_back();
  }
  hull.push_back(p);
}

// How far q lies beyond p along an edge, times the edge's length.
std::int64_t Along(GridPoint a, GridPoint b, GridPoint p, GridPoint q) noexcept {
  return std::int64_t{b.gx - a.gx} * (q.gx - p.gx) + std::int64_t{b.gy - a.gy} * (q.gy - p.gy);
}

// The extreme corners of a hull along an edge and across it, which go round as the edge does.
class Calipers {
 public:
  explicit Calipers(std::span<const GridPoint> hull) noexcept : hull_(hull) {}

  struct Extent {
    double back;    // from the edge's start, in edges
    double ahead;   // the same
    double across;  // the same
    double area;    // in squared steps
  };

  [[nodiscard]] Extent At(std::size_t edge) noexcept {
    const GridPoint a = hull_[edge];
    const GridPoint b = hull_[Next(edge)];
    ahead_ = std::max(ahead_, edge + 1);
    while (Along(a, b, Corner(ahead_), Corner(ahead_ + 1)) > 0) ++ahead_;
    top_ = std::max(top_, ahead_);
    while (Cross(a, b, Corner(top_ + 1)) > Cross(a, b, Corner(top_))) ++top_;
    back_ = std::max(back_, top_);
    while (Along(a, b, Corner(back_), Corner(back_ + 1)) < 0) ++back_;
    const double length = NearestDouble(Along(a, b, a, b));
    const double back = NearestDouble(Along(a, b, a, Corner(back_)));
    const double ahead = NearestDouble(Along(a, b, a, Corner(ahead_)));
    const double across = NearestDouble(Cross(a, b, Corner(top_)));
    return {back / length, ahead / length, across / length, (ahead - back) / length * across};
  }

 private:
  [[nodiscard]] std::size_t Next(std::size_t i) const noexcept {
    return i + 1 < hull_.size() ? i + 1 : 0;
  }
  [[nodiscard]] GridPoint Corner(std::size_t i) const noexcept { return hull_[i % hull_.size()]; }

  std::span<const GridPoint> hull_;
  std::size_t ahead_ = 0;
  std::size_t top_ = 0;
  std::size_t back_ = 0;
};

}  // namespace

std::vector<GridPoint> HullOf(const FlatRegion& region) {
  std::vector<GridPoint> points;
  for (std::size_t i = 0; i < region.Polygons(); ++i) {
    const auto outer = region.Ring(region.polygonOffsets[i]);
    points.insert(points.end(), outer.begin(), outer.end());
  }
  std::sort(points.begin(), points.end());
  points.erase(std::unique(points.begin(), points.end()), points.end());
  std::vector<GridPoint> hull;
  for (const GridPoint p : points) Extend(hull, 0, p);
  const std::size_t rightmost = hull.size() - 1;
  for (std::size_t i = points.size() - 1; i-- > 0;) Extend(hull, rightmost, points[i]);
  hull.pop_back();  // the first one again
  return hull;
}

std::array<WorldPoint, 4> LeastBoxAround(std::span<const GridPoint> hull,
                                         const Placement& place) noexcept {
  Calipers calipers(hull);
  Calipers::Extent least{0.0, 0.0, 0.0, std::numeric_limits<double>::infinity()};
  std::size_t edge = 0;
  for (std::size_t i = 0; i < hull.size(); ++i) {
    const Calipers::Extent extent = calipers.At(i);
    if (extent.area >= least.area) continue;
    least = extent;
    edge = i;
  }
  const WorldPoint a = place(hull[edge]);
  const WorldPoint b = place(hull[edge + 1 < hull.size() ? edge + 1 : 0]);
  const double x = b.x - a.x;
  const double y = b.y - a.y;
  const auto corner = [&](double along, double across) {
    return WorldPoint{a.x + (along * x - across * y), a.y + (along * y + across * x)};
  };
  return {corner(least.back, 0.0), corner(least.ahead, 0.0), corner(least.ahead, least.across),
          corner(least.back, least.across)};
}

}  // namespace zelvan
