// Drawing one region (region_drawer.h).
#include "overlay/region_drawer.h"

#include "overlay/exact.h"

namespace zelvan::overlay {

// Gives what leaves p its winding numbers, and pieces where it bounds the region.
void RegionDrawer::Draw(GridPoint p, const ActiveEdge* below,
                        const std::vector<ActiveEdge>& arriving,
                        std::vector<ActiveEdge>& departing) {
  Windings winding;
  std::uint32_t face = kNone;
  if (below != nullptr) {
    winding = below->below + below->step;
    face = below->face;
  }
  const bool insideBelow = selection_.Holds(winding);
  const std::uint32_t faceAbove = arriving.empty() ? face : arriving.back().face;
  leftPieces_.clear();
  rightPieces_.clear();
  const ActiveEdge* bound = nullptr;  // the last that bounds the region, left of p
  for (const ActiveEdge& e : arriving) {
    if (e.piece == kNone) continue;
    bound = &e;
    leftPieces_.push_back(e.piece);
  }
  std::size_t bounds = 0;  // edges that do so right of p
  bool inside = insideBelow;
  ActiveEdge* last = nullptr;
  for (ActiveEdge& e : departing) {
    e.below = winding;
    winding += e.step;
    const bool above = selection_.Holds(winding);
    if (above != inside) {
      ++bounds;
      last = &e;
      e.piece = 0;
    }
    inside = above;
  }
  const bool goesStraightOn =
      bounds == 1 && leftPieces_.size() == 1 && overlay::SideOf(bound->low, p, last->high) == 0;
  inside = insideBelow;
  for (ActiveEdge& e : departing) {
    if (e.piece != kNone) {
      inside = !inside;
      if (goesStraightOn) {
        e.piece = bound->piece;
        if (inside) face = bound->face;
      } else {
        e.piece = boundary_.Add(inside);
        rightPieces_.push_back(e.piece);
        if (inside) face = e.piece;
      }
    }
    e.face = face;
  }
  if (inside && face != faceAbove) boundary_.Unite(face, faceAbove);
  if (!goesStraightOn) boundary_.Connect(p, leftPieces_, rightPieces_, insideBelow);
}

}  // namespace zelvan::overlay
