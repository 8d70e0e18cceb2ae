// Which rings bound an area, by the plain definition over all pairs: the oracle for
// what must be triangulated and what need not be.
#pragma once

#include "support/regions.h"

namespace zelvan::test {

/// No two edges cross or overlap; where a vertex lies inside an edge, both its edges
/// leave to the outer side; where vertices coincide, their inner angles are disjoint.
/// The nesting of the rings is taken for granted.
[[nodiscard]] bool BoundsAnArea(const Region& region);

/// The same, and no vertex touches another vertex or edge.
[[nodiscard]] bool IsSimple(const Region& region);

}  // namespace zelvan::test
