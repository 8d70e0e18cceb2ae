// Segments that come near each other (nearness.h).
#include "polygon/nearness.h"

#include <algorithm>
#include <cmath>

#include "polygon/input_predicates.h"

namespace zelvan {

namespace {

constexpr double kNear = 1.25;  // a step and the reserve
constexpr double kSteep = 4.0;  // height to width
constexpr double kClose = kNear * (1 + kSteep);

bool IsSteep(WorldPoint a, WorldPoint b) noexcept {
  return std::fabs(b.y - a.y) > kSteep * std::fabs(b.x - a.x);
}

bool IsOutside(double a, double b, double c) noexcept {
  return c < std::min(a, b) - kNear || c > std::max(a, b) + kNear;
}

// True at least where p is near the segment: near its line, and near its box.
bool MayBeNear(WorldPoint a, WorldPoint b, WorldPoint p) noexcept {
  if (IsOutside(a.x, b.x, p.x) || IsOutside(a.y, b.y, p.y)) return false;
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double cross = dx * (p.y - a.y) - dy * (p.x - a.x);
  return !(std::fabs(cross) > kNear * (std::fabs(dx) + std::fabs(dy)));
}

}  // namespace

Nearness::Nearness(const PointList& list, const std::vector<std::uint32_t>& order) : order_(order) {
  points_.reserve(list.size());
  WorldPoint low = Planar(list[0]);
  WorldPoint high = low;
  for (const InputPoint& p : list) {
    low = {std::min(low.x, p.x), std::min(low.y, p.y)};
    high = {std::max(high.x, p.x), std::max(high.y, p.y)};
  }
  const double width = high.x - low.x;
  const double height = high.y - low.y;
  for (const InputPoint& p : list) {
    points_.push_back({(p.x - low.x) / width * GRID_MAX, (p.y - low.y) / height * GRID_MAX});
  }
}

bool Nearness::MayBeNear(std::uint32_t s, std::uint32_t i) const noexcept {
  return zelvan::MayBeNear(points_[s], points_[s + 1], points_[i]);
}

bool Nearness::AnyClose() const noexcept {
  std::size_t work = 2 * order_.size();
  for (std::size_t k = 0; k < order_.size(); ++k) {
    const std::uint32_t i = order_[k];
    const WorldPoint p = points_[i];
    for (std::size_t m = k + 1; m < order_.size(); ++m) {
      const WorldPoint other = points_[order_[m]];
      if (other.x - p.x > kNear) break;
      if (!(std::fabs(other.y - p.y) > kClose) || work-- == 0) return true;
    }
    // Each segment from its end that comes first.
    if (i > 0 && points_[i - 1].x >= p.x && AnyNearSteep(k, i - 1, work)) return true;
    if (i + 1 < points_.size() && points_[i + 1].x >= p.x && AnyNearSteep(k, i, work)) return true;
  }
  return false;
}

// Segment s begins at the vertex of this rank.
bool Nearness::AnyNearSteep(std::size_t rank, std::uint32_t s, std::size_t& work) const noexcept {
  const WorldPoint a = points_[s];
  const WorldPoint b = points_[s + 1];
  if (!IsSteep(a, b)) return false;
  const double left = std::min(a.x, b.x) - kNear;
  const double right = std::max(a.x, b.x) + kNear;
  const auto isNear = [&](std::uint32_t i) { return i != s && i != s + 1 && MayBeNear(s, i); };
  for (std::size_t k = rank; k-- > 0 && !(points_[order_[k]].x < left);) {
    if (isNear(order_[k]) || work-- == 0) return true;
  }
  for (std::size_t k = rank + 1; k < order_.size() && !(points_[order_[k]].x > right); ++k) {
    if (isNear(order_[k]) || work-- == 0) return true;
  }
  return false;
}

}  // namespace zelvan
