// Simple rings (simple_rings.h).
#include "polygon/simple_rings.h"

#include <algorithm>
#include <utility>

namespace zelvan::detail {

std::vector<std::int32_t> RepeatedPlaces(std::vector<WalkPoint>& walk) {
  std::vector<std::uint32_t> order;  // of what may touch, by place
  for (std::uint32_t i = 0; i < walk.size(); ++i) {
    if (std::exchange(walk[i].touches, false)) order.push_back(i);
  }
  const auto at = [&](std::uint32_t i) { return walk[i].point; };
  std::sort(order.begin(), order.end(),
            [&](std::uint32_t i, std::uint32_t j) { return at(i) < at(j); });
  std::vector<std::int32_t> place;
  std::int32_t last = -1;
  for (std::size_t k = 1; k < order.size(); ++k) {
    if (at(order[k - 1]) != at(order[k])) continue;
    if (place.empty()) place.assign(walk.size(), -1);
    if (place[order[k - 1]] < 0) place[order[k - 1]] = ++last;
    place[order[k]] = last;
    walk[order[k - 1]].touches = walk[order[k]].touches = true;
  }
  return place;
}

void Normalise(std::vector<WalkPoint>& ring) {
  const std::size_t n = ring.size();
  if (n < 3) return;
  const GridPoint first = ring.front().point;
  GridPoint before = ring.back().point;
  std::size_t kept = 0;
  for (std::size_t i = 0; i < n; ++i) {
    const WalkPoint p = ring[i];
    const bool isCorner = Cross(before, p.point, i + 1 < n ? ring[i + 1].point : first) != 0;
    before = p.point;
    if (isCorner || p.touches || p.stays) ring[kept++] = p;
  }
  ring.resize(kept);
  const auto least =
      std::min_element(ring.begin(), ring.end(),
                       [](const WalkPoint& a, const WalkPoint& b) { return a.point < b.point; });
  std::rotate(ring.begin(), least, ring.end());
}

}  // namespace zelvan::detail
