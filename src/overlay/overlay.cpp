// The stages of the overlay engine (overlay.h).
#include "overlay/overlay.h"

#include <zelvan/error.h>

#include "overlay/bending.h"
#include "overlay/rings.h"
#include "overlay/sweep.h"

namespace zelvan::overlay {

namespace {

FlatRegion OverlayPieces(EdgeSet&& pieces, const Selection& selection) {
  Sweep sweep(pieces, selection, Sweep::Search::kNothing);
  sweep.Run();
  if (!sweep.IsExact()) ERR::Raise(ERR::FAIL);
  return RegionWithin(sweep.TheBoundary());
}

}  // namespace

FlatRegion Overlay(EdgeSet&& edges, const Selection& selection) {
  edges.SortVertices();
  EdgeSet pieces;
  {
    Sweep sweep(edges, selection, Sweep::Search::kPixels);
    sweep.Run();
    if (sweep.IsExact()) return RegionWithin(sweep.TheBoundary());
    pieces = SplitEdges(edges, sweep);
  }
  return OverlayPieces(std::move(pieces), selection);
}

}  // namespace zelvan::overlay
