// What two regions have in common: one sweep over the edges of both (Shamos and Hoey 1976), which
// makes no region and ends as soon as the question is answered.
//
// What holds here:
//  - Edges of one region do not cross, so only edges of different regions do. Where two cross, all
//    four kinds of faces meet: every fact is known, and the sweep ends. So up to its end, edges
//    share single points, of which one is an end, or run on each other.
//  - Regions are the closures of their interiors: two have interior in common where a face lies in
//    both, and one leaves the other where a face lies in it alone. Each face is looked at where it
//    begins.
//  - What lies outside the box of either region has no part, but for edges below the other's box,
//    which tell where that is inside.
// With n edges in the boxes that takes O(n log n) steps, and a look at every edge at worst.
#pragma once

#include "polygon/placement.h"

namespace zelvan {

/// What there is to know; several are joined by |.
enum RelationFact : unsigned {
  kShared = 1,       ///< both have a point
  kOverlapping = 2,  ///< both have an inner point, the same one
  kLeaving = 4       ///< the second has a point that the first has not
};

/// What became known.
struct Relation {
  unsigned facts = 0;
  WorldPoint place{0.0, 0.0};  ///< of both regions where kShared is known, but for one rounding
};

/// Looks until one of the facts `last` is known, or none of them holds. Other facts say
/// nothing, but kShared does where kOverlapping is asked for. Decided exactly, if coordinates are
/// at least 2^-400 or 0. Throws std::bad_alloc.
[[nodiscard]] Relation Relate(const PlacedRegion& a, const PlacedRegion& b, unsigned last);

}  // namespace zelvan
