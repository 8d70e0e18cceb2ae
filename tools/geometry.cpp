#include "geometry.h"

#include <algorithm>
#include <cmath>

namespace tool {
namespace {

// Twice the signed area of a triangle.
double Cross(const Point& o, const Point& p, const Point& q) {
  return (p.x - o.x) * (q.y - o.y) - (p.y - o.y) * (q.x - o.x);
}

}  // namespace

void Box::Add(const Point& p) {
  low = {std::min(low.x, p.x), std::min(low.y, p.y)};
  high = {std::max(high.x, p.x), std::max(high.y, p.y)};
}

void Box::Add(const Ring& ring) {
  for (const Point& p : ring) Add(p);
}

std::string Feature::Label() const {
  std::string label = "feature " + std::to_string(number);
  if (!name.empty()) label += " (" + name + ")";
  return label;
}

// Relative to the first point, so that a small ring far from the origin keeps
// its digits.
double SignedArea(const Ring& ring) {
  double twice = 0;
  for (std::size_t i = 1; i + 1 < ring.size(); ++i) {
    twice += Cross(ring.front(), ring[i], ring[i + 1]);
  }
  return twice / 2;
}

double Area(const Polygon& polygon) {
  if (!IsFinite(polygon)) return 0;
  double area = std::abs(SignedArea(polygon.outer));
  for (const Ring& hole : polygon.holes) area -= std::abs(SignedArea(hole));
  return std::abs(area);  // a hole around the outline counts by the even-odd rule
}

bool HasArea(const Ring& ring, double tolerance) {
  const auto on_line = [&](const Point& o, const Point& p, const Point& q) {
    return std::abs(Cross(o, p, q)) <= tolerance;
  };
  Ring left;
  for (const Point& p : ring) {
    while (left.size() > 1 && on_line(left[left.size() - 2], left.back(), p)) left.pop_back();
    left.push_back(p);
  }
  std::size_t first = 0;
  while (left.size() - first > 2) {
    if (on_line(left[left.size() - 2], left.back(), left[first])) {
      left.pop_back();
    } else if (on_line(left.back(), left[first], left[first + 1])) {
      ++first;
    } else {
      return true;
    }
  }
  return false;
}

Ring OnGrid(const Ring& ring, const Box& box) {
  const auto step = [](double v, double low, double high) {
    if (!(low < high)) return 0.0;
    return std::floor((v / 2 - low / 2) / (high / 2 - low / 2) * kGridSteps + 0.5);
  };
  Ring steps;
  for (const Point& p : ring) {
    steps.push_back({step(p.x, box.low.x, box.high.x), step(p.y, box.low.y, box.high.y)});
  }
  return steps;
}

Ring FromGrid(const Ring& steps, const Box& box) {
  const auto place = [](double step, double low, double high) {
    return std::lerp(low, high, step / kGridSteps);
  };
  Ring ring;
  for (const Point& p : steps) {
    ring.push_back({place(p.x, box.low.x, box.high.x), place(p.y, box.low.y, box.high.y)});
  }
  return ring;
}

std::size_t CountPoints(const Polygon& polygon) {
  std::size_t count = polygon.outer.size();
  for (const Ring& hole : polygon.holes) count += hole.size();
  return count;
}

bool IsFinite(const Polygon& polygon) {
  const auto finite = [](const Ring& ring) {
    return std::all_of(ring.begin(), ring.end(),
                       [](const Point& p) { return std::isfinite(p.x) && std::isfinite(p.y); });
  };
  return finite(polygon.outer) && std::all_of(polygon.holes.begin(), polygon.holes.end(), finite);
}

}  // namespace tool
