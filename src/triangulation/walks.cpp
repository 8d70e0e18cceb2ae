// Joining rings where they touch (walks.h).
#include "triangulation/walks.h"

#include <algorithm>

namespace VORNEX {

// Counter-clockwise from straight right; no two arms have one direction.
bool WalkJoiner::IsBefore(const Arm& a, const Arm& b) noexcept {
  const auto isLower = [](GridPoint d) { return d.gy < 0 || (d.gy == 0 && d.gx < 0); };
  if (isLower(a.direction) != isLower(b.direction)) return isLower(b.direction);
  return zelvan::Cross({0, 0}, a.direction, b.direction) > 0;
}

// The wedge to the left of an edge that arrives ends at the next edge clockwise, which leaves.
void WalkJoiner::JoinAt(std::span<const std::uint32_t> touching, std::span<SweepVertex> vertices) {
  arms_.clear();
  for (const std::uint32_t v : touching) {
    const auto [p, prev, next, interval] = vertices[v];
    const GridPoint from = vertices[prev].point;
    const GridPoint to = vertices[next].point;
    arms_.push_back({{from.gx - p.gx, from.gy - p.gy}, v, false});
    arms_.push_back({{to.gx - p.gx, to.gy - p.gy}, next, true});
  }
  std::sort(arms_.begin(), arms_.end(), IsBefore);
  const Arm* clockwise = &arms_.back();
  for (const Arm& arm : arms_) {
    if (!arm.leaves) {
      vertices[arm.vertex].next = clockwise->vertex;
      vertices[clockwise->vertex].prev = arm.vertex;
    }
    clockwise = &arm;
  }
}

}  // namespace VORNEX
