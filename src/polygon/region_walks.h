// The boundary walks of a region's polygons, as the triangulation wants them: where rings
// touch, each wedge of the polygon has a vertex of its own, and a walk goes from one ring on to
// the next.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "polygon/area_builder.h"
#include "polygon/flat_region.h"

namespace zelvan {

/// An area in grid form, its first contour the outer walk, and for each of its vertices, contour
/// by contour from its head, its place and the region's point that it is.
struct PolygonWalks {
  AreaBuilder area;
  std::vector<GridPoint> places;
  std::vector<std::uint32_t> points;
};

/// Throws std::bad_alloc, raises ERR::NOMEM.
[[nodiscard]] PolygonWalks WalksOf(const FlatRegion& region, std::size_t polygon);

}  // namespace zelvan
