// One area from rings of points: a set of contours for the engines.
#pragma once

#include <span>

#include "polygon/area.h"
#include "polygon/flat_region.h"
#include "polygon/records.h"

namespace zelvan {

class AreaBuilder {
 public:
  /// Raises ERR::NOMEM, as Add does.
  AreaBuilder() : area_(NewArea()), end_(&area_.first->contours) {}

  /// Adds a contour in grid form, its head at the ring's first point; points that equal the one
  /// before them are left out. @return null, nothing added, where less than three are left
  Contour* Add(std::span<const GridPoint> ring);

  /// Adds all rings of a region.
  void Add(const FlatRegion& region);

  /// The area, which stays the builder's; null while there is no contour.
  [[nodiscard]] Area* get() const noexcept {
    return area_.first->contours != nullptr ? area_.first : nullptr;
  }

 private:
  OwnedRing area_;
  Contour** end_;
};

}  // namespace zelvan
