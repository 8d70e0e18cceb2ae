// The sites of a ring (ring_sides.h).
#include "offset/ring_sides.h"

namespace zelvan::offset {

void RingSides::Build(std::span<const GridPoint> ring, double distance) {
  ring_ = ring;
  sides_.clear();
  sides_.reserve(ring.size());
  for (std::size_t i = 0; i < ring.size(); ++i) {
    sides_.push_back(RightSideOf(ring[i], ring[Following(i)], distance));
  }
  isGoneAround_.resize(ring.size());
  isAllAround_ = true;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const std::size_t next = Following(i);
    const bool turnsLeft = zelvan::Cross(ring[i], ring[next], ring[Following(next)]) > 0;
    const bool goesAround = GoesAround(sides_[i], sides_[next], turnsLeft);
    isGoneAround_[i] = goesAround ? 1 : 0;
    isAllAround_ = isAllAround_ && goesAround;
  }
}

}  // namespace zelvan::offset
