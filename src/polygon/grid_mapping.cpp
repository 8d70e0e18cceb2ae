// The grid mapping (grid_mapping.h).
#include "polygon/grid_mapping.h"

#include <cmath>
#include <limits>

#include "polygon/area.h"
#include "polygon/contour.h"
#include "polygon/shape.h"

namespace zelvan {

namespace {

constexpr double kStepsAcross = 1048575.0;
constexpr double kOneStep = 9.536752259018191e-07;  // the double nearest to 1 / 1048575

std::int32_t SnapCoordinate(double v, double lo, double hi) noexcept {
  const double steps = (v - lo) / (hi - lo) * kStepsAcross + 0.5;
  // Values of the box stay inside; the bounds keep the conversion, which drops the
  // fraction, defined for every other value, a box without extent included.
  if (!(steps >= 1.0)) return -GRID_OFFSET;
  if (steps >= kStepsAcross) return GRID_MAX - GRID_OFFSET;
  return static_cast<std::int32_t>(steps) - GRID_OFFSET;
}

double UnsnapCoordinate(std::int32_t g, double lo, double hi) noexcept {
  return (hi - lo) * static_cast<double>(g + GRID_OFFSET) * kOneStep + lo;
}

// Frees the contours of an area that collapse, but for the outer one.
// @return whether the outer contour is still a polygon
bool SnapArea(Area* area, WorldPoint boxMin, WorldPoint boxMax) noexcept {
  if (!SnapContour(area->contours, boxMin, boxMax)) return false;
  Contour** link = &area->contours->next;
  while (*link != nullptr) {
    if (SnapContour(*link, boxMin, boxMax)) {
      link = &(*link)->next;
    } else {
      const OwnedContour collapsed(*link);
      *link = collapsed->next;
    }
  }
  return true;
}

}  // namespace

GridPoint Snap(WorldPoint p, WorldPoint boxMin, WorldPoint boxMax) noexcept {
  return {SnapCoordinate(p.x, boxMin.x, boxMax.x), SnapCoordinate(p.y, boxMin.y, boxMax.y)};
}

WorldPoint Unsnap(GridPoint p, WorldPoint boxMin, WorldPoint boxMax) noexcept {
  return {UnsnapCoordinate(p.gx, boxMin.x, boxMax.x), UnsnapCoordinate(p.gy, boxMin.y, boxMax.y)};
}

bool SnapContour(Contour* contour, WorldPoint boxMin, WorldPoint boxMax) noexcept {
  constexpr GridPoint lowest{-GRID_OFFSET, -GRID_OFFSET};
  constexpr GridPoint highest{GRID_MAX - GRID_OFFSET, GRID_MAX - GRID_OFFSET};
  contour->gridBox = {highest, lowest};
  VertexNode* const head = contour->head;
  VertexNode* v = head;
  do {
    VertexNode* const next = v->next;
    const GridPoint point = Snap(v->world, boxMin, boxMax);
    GrowBox(contour->gridBox, point);
    if (v != head && v->prev->grid == point) {
      RemoveVertex(contour, v);
    } else {
      v->grid = point;
    }
    v = next;
  } while (v != head);
  if (head->prev != head && head->prev->grid == head->grid) {
    RemoveVertex(contour, head->prev);
  }
  return contour->count >= 3;
}

void SnapRing(Area*& ring, WorldPoint boxMin, WorldPoint boxMax) noexcept {
  if (ring == nullptr) return;
  Area* const last = ring->prev;
  Area* area = ring;
  for (bool more = true; more;) {
    Area* const next = area->next;
    more = area != last;
    if (!SnapArea(area, boxMin, boxMax)) {
      area->prev->next = next;
      next->prev = area->prev;
      if (ring == area) ring = next == area ? nullptr : next;
      delete area;
    }
    area = next;
  }
}

void SnapShape(Shape& shape, WorldPoint boxMin, WorldPoint boxMax) noexcept {
  SnapRing(shape.areas, boxMin, boxMax);
}

void UnsnapContour(Contour* contour, WorldPoint boxMin, WorldPoint boxMax) noexcept {
  ForEachVertex(contour, [&](VertexNode* v) {
    const GridPoint point = v->grid;
    v->world = Unsnap(point, boxMin, boxMax);
  });
  const GridBox box = contour->gridBox;
  contour->worldBox = {Unsnap(box.min, boxMin, boxMax), Unsnap(box.max, boxMin, boxMax)};
}

void UnsnapRing(Area* ring, WorldPoint boxMin, WorldPoint boxMax) noexcept {
  ForEachContour(ring, [&](Contour* contour) { UnsnapContour(contour, boxMin, boxMax); });
}

}  // namespace zelvan
