// Contours on the grid from lists of points, for the tests of the polygon model.
#pragma once

#include <vector>

#include "polygon/area.h"
#include "polygon/contour.h"

namespace zelvan {

using GridRing = std::vector<GridPoint>;

inline OwnedContour MakeGridContour(const GridRing& ring) {
  Contour* contour = nullptr;
  for (const GridPoint p : ring) AppendVertex(contour, p);
  if (TwiceArea(contour->head) > 0) contour->flags |= CONTOUR_CCW;
  return OwnedContour(contour);
}

inline GridRing PointsOf(const Contour* contour) {
  GridRing ring;
  ForEachVertex(contour, [&](const VertexNode* v) { ring.push_back(v->grid); });
  return ring;
}

}  // namespace zelvan
