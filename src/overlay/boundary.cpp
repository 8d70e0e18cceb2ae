// Joining pieces around a place (boundary.h).
#include "overlay/boundary.h"

namespace zelvan::overlay {

void Boundary::Connect(GridPoint p, std::span<const std::uint32_t> left,
                       std::span<const std::uint32_t> right, bool insideBelow) {
  // Counter-clockwise from right below p.
  around_.assign(right.begin(), right.end());
  around_.insert(around_.end(), left.rbegin(), left.rend());
  const std::size_t count = around_.size();
  for (std::size_t i = insideBelow ? 1 : 0; i < count; i += 2) {
    const std::uint32_t leaving = around_[i];
    const std::uint32_t arriving = around_[i + 1 < count ? i + 1 : 0];
    Follow(p, arriving, leaving, count > 2);
  }
}

}  // namespace zelvan::overlay
