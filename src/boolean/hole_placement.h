// Placing the holes of a result: each goes behind the outer boundary of the
// innermost area around it.
#pragma once

#include <cstddef>
#include <vector>

#include "polygon/area.h"
#include "polygon/contour.h"

namespace zelvan {

/// Finished clockwise contours, oldest first.
using PendingHoles = std::vector<OwnedContour>;

/// Places the holes of a region's faces, newest first. If the region has one area only, they
/// are the holes of that area; else the cheaper of the two ways below finds their areas. Raises
/// ERR::FAIL when an area for one is missing, ERR::NOMEM.
/// @return the pairs of a hole and an area that were tested, for the bound in the tests
std::size_t PlaceHoles(OwnedRing& result, PendingHoles& pendingHoles);

/// Tests each hole against each area: for any contours.
std::size_t PlaceHolesByTests(OwnedRing& result, PendingHoles& pendingHoles);

/// Finds all areas by one sweep: for contours that bound faces of one region, which
/// do not cross and have the region to their left.
std::size_t PlaceHolesBySweep(OwnedRing& result, PendingHoles& pendingHoles);

}  // namespace zelvan
