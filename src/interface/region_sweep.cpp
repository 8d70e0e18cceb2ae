// The sweep under every region (region_sweep.h).
#include "interface/region_sweep.h"

#include <limits>

#include "interface/region_refusal.h"

namespace zelvan {

void RegionSweep::AddFirst(const FlatRegion& region) {
  for (std::size_t i = 0; i < region.Rings(); ++i) AddFirst(region.Ring(i));
}

void RegionSweep::AddSecond(const FlatRegion& region) {
  for (std::size_t i = 0; i < region.Rings(); ++i) AddSecond(region.Ring(i));
}

FlatRegion RegionSweep::Run(overlay::Operation operation, FillRule first, FillRule second) {
  FlatRegion region = overlay_.Run({operation, first, second});
  Require(region.points.size() <= std::numeric_limits<std::int32_t>::max(), ZELVAN_TOO_LARGE);
  return region;
}

}  // namespace zelvan
