// From edges to what a drawer draws, by one sweep or two.
//
// If no two edges cross off the grid, what the first sweep drew stands. Else the edges are split
// where they must go through hot pixels, and the pieces, which meet at ends alone, go through a
// second sweep.
#pragma once

#include "overlay/bending.h"
#include "overlay/sweep.h"

namespace zelvan::overlay {

/// Uses the edges up. Throws std::bad_alloc.
template <class Drawer>
void Draw(EdgeSet& edges, Sweep<Drawer>& sweep, Drawer& drawer, Bending& bending) {
  edges.SortVertices();
  sweep.Run(edges, drawer, Search::kPixels);
  if (sweep.IsExact()) return;
  bending.Split(edges, sweep);
  sweep.Run(edges, drawer, Search::kNothing);
}

}  // namespace zelvan::overlay
