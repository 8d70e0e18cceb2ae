// Result assembly: from labelled edges to the areas of the result.
//
// Each operation takes some labelled edges, each in one direction, such that the
// result lies to the left. Around every pixel the taken edges alternate between
// arriving and leaving, so turning clockwise from an arriving edge over the
// result's side leads to the edge that goes on: a traced contour is one boundary
// walk of one face of the result. Counter-clockwise walks become areas, clockwise
// ones the holes of the innermost area around them.
//
// A trace uses up one edge per step and stops at a used one. Simplifying a contour removes a
// vertex or moves on, and ends with a look at the head, whose removal can bring two equal
// points together.
#pragma once

#include "boolean/hole_placement.h"
#include "boolean/labels.h"
#include "polygon/area.h"
#include "polygon/contour.h"

namespace zelvan {

/// Adds to the result what operation `op` takes of one labelled contour.
/// Raises ERR::NOMEM.
void CollectContour(Contour* contour, OwnedRing& result, PendingHoles& pendingHoles, BoolOp op);

/// Removes vertices that equal their predecessor or lie on a line with their
/// neighbours, tips of spikes included. Leaves no two equal neighbours.
void SimplifyContour(Contour* contour) noexcept;

/// Simplifies a contour, then sets its count, box and orientation.
/// @return false when fewer than 3 vertices or no area are left
bool FinishContour(Contour* contour) noexcept;

}  // namespace zelvan
