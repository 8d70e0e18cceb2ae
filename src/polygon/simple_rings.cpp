// Simple rings (simple_rings.h).
#include "polygon/simple_rings.h"

#include <algorithm>

namespace zelvan::detail {

std::vector<std::int32_t> RepeatedPlaces(Walk& walk) {
  const auto at = [&](std::uint32_t i) { return walk.points[i]; };
  std::vector<std::uint32_t>& order = walk.mayTouch;
  std::sort(order.begin(), order.end(),
            [&](std::uint32_t i, std::uint32_t j) { return at(i) < at(j); });
  std::vector<std::int32_t> place;
  std::int32_t last = -1;
  for (std::size_t k = 1; k < order.size(); ++k) {
    if (at(order[k - 1]) != at(order[k])) continue;
    if (place.empty()) place.assign(walk.points.size(), -1);
    if (place[order[k - 1]] < 0) place[order[k - 1]] = ++last;
    place[order[k]] = last;
  }
  return place;
}

void Normalise(std::vector<GridPoint>& ring) {
  const std::size_t n = ring.size();
  if (n < 3) return;
  const GridPoint first = ring.front();
  GridPoint before = ring.back();
  std::size_t kept = 0;
  for (std::size_t i = 0; i < n; ++i) {
    const GridPoint p = ring[i];
    const bool isCorner = Cross(before, p, i + 1 < n ? ring[i + 1] : first) != 0;
    before = p;
    if (isCorner) ring[kept++] = p;
  }
  ring.resize(kept);
  std::rotate(ring.begin(), std::min_element(ring.begin(), ring.end()), ring.end());
}

}  // namespace zelvan::detail
