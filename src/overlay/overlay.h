// The overlay engine: regions from rings, by fill rules and operations (docs/ARCHITECTURE.md).
//
// Edges go through one sweep. If no two of them crossed off the grid, what the sweep drew is
// the region's boundary. Else the edges are split where they must go through hot pixels, and
// the pieces, which meet at ends alone, go through a second sweep.
#pragma once

#include "overlay/edges.h"
#include "overlay/selection.h"
#include "polygon/flat_region.h"

namespace zelvan::overlay {

/// The region of the places that a selection holds. Uses the edges up. Throws std::bad_alloc;
/// raises ERR::FAIL if pieces cross, which is a contradiction.
[[nodiscard]] FlatRegion Overlay(EdgeSet&& edges, const Selection& selection);

}  // namespace zelvan::overlay
