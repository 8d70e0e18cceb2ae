// Flat regions (flat_region.h).
#include "polygon/flat_region.h"

namespace zelvan {

std::int64_t TwiceArea(const FlatRegion& region) noexcept {
  std::int64_t sum = 0;
  for (std::size_t i = 0; i < region.Rings(); ++i) {
    GridPoint p = region.Ring(i).back();
    for (const GridPoint q : region.Ring(i)) {
      sum += std::int64_t{p.gx} * q.gy - std::int64_t{q.gx} * p.gy;
      p = q;
    }
  }
  return sum;
}

}  // namespace zelvan
