// What the parts of the sweep share: the vertices of an area, side by side, and their
// numbers.
//
// A vertex is named by its position, contour by contour from each head, so that the
// neighbours on a contour are neighbours in memory. Edges are named by numbers too: the
// contour edge from vertex v to the next one is edge v, diagonals follow behind them in
// the order in which they are found.
#pragma once

#include <cstdint>

#include "triangulation/predicates.h"

namespace VORNEX {

/// No vertex, edge, interval or link.
inline constexpr std::uint32_t kNone = ~std::uint32_t{0};

struct SweepVertex {
  GridPoint point;
  std::uint32_t prev;  ///< on the contour
  std::uint32_t next;
  std::uint32_t interval;  ///< the interval that the vertex's edge bounds now; else kNone
};

/// A vertex by its number, with a copy of its point: most questions to a vertex are for its
/// point, and the copy spares them a look at far memory.
struct Corner {
  GridPoint point;
  std::uint32_t vertex;
};

}  // namespace VORNEX
