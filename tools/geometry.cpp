#include "geometry.h"

#include <algorithm>
#include <cmath>

namespace tool {

std::string Feature::Label() const {
  std::string label = "feature " + std::to_string(number);
  if (!name.empty()) label += " (" + name + ")";
  return label;
}

std::vector<Ring> RingsOf(const Polygon& polygon) {
  std::vector<Ring> rings{polygon.outer};
  rings.insert(rings.end(), polygon.holes.begin(), polygon.holes.end());
  return rings;
}

// Relative to the first point, so that a small ring far from the origin keeps its digits.
double SignedArea(const Ring& ring) {
  double twice = 0;
  for (std::size_t i = 1; i + 1 < ring.size(); ++i) {
    const Point& o = ring.front();
    twice += (ring[i].x - o.x) * (ring[i + 1].y - o.y) - (ring[i].y - o.y) * (ring[i + 1].x - o.x);
  }
  return twice / 2;
}

double Area(const Polygon& polygon) {
  double area = std::abs(SignedArea(polygon.outer));
  for (const Ring& hole : polygon.holes) area -= std::abs(SignedArea(hole));
  return area;
}

std::size_t CountPoints(const Polygon& polygon) {
  std::size_t count = polygon.outer.size();
  for (const Ring& hole : polygon.holes) count += hole.size();
  return count;
}

bool IsFinite(const Polygon& polygon) {
  constexpr double kFarthest = 0x1p498;  // a grid reaches over all that is no farther
  const auto finite = [](const Ring& ring) {
    return std::all_of(ring.begin(), ring.end(), [](const Point& p) {
      return std::abs(p.x) <= kFarthest && std::abs(p.y) <= kFarthest;
    });
  };
  return finite(polygon.outer) && std::all_of(polygon.holes.begin(), polygon.holes.end(), finite);
}

}  // namespace tool
