// Rings of areas (area.h).
#include "polygon/area.h"

#include <zelvan/error.h>

#include <new>

#include "polygon/containment.h"
#include "polygon/contour.h"
#include "polygon/grid_box.h"
#include "polygon/shape.h"

namespace zelvan {

namespace {

// The innermost area whose outer contour contains `hole`, the first one among
// those that do not nest; null when there is none.
Area* InnermostAround(Area* ring, const Contour* hole) noexcept {
  Area* candidate = nullptr;
  ForEachArea(ring, [&](Area* area) {
    if (ContourInside(hole, area->contours) &&
        (candidate == nullptr || ContourInside(area->contours, candidate->contours))) {
      candidate = area;
    }
  });
  return candidate;
}

}  // namespace

Area* NewArea() {
  Area* area = new (std::nothrow) Area{};
  if (area == nullptr) ERR::Raise(ERR::NOMEM);
  area->next = area->prev = area;
  return area;
}

void AppendArea(Area*& ring, Area* area) noexcept {
  if (area == nullptr) return;
  if (ring == nullptr) {
    ring = area;
    return;
  }
  area->next = ring;
  area->prev = ring->prev;
  ring->prev->next = area;
  ring->prev = area;
}

void FreeAreas(Area*& ring) noexcept {
  if (ring == nullptr) return;
  ring->prev->next = nullptr;
  while (ring != nullptr) {
    Area* next = ring->next;
    delete ring;
    ring = next;
  }
}

void PlaceContour(Area*& ring, Contour* contour) {
  if ((contour->flags & CONTOUR_CCW) != 0) {
    Area* area = NewArea();
    area->contours = contour;
    AppendArea(ring, area);
    return;
  }
  Area* area = InnermostAround(ring, contour);
  if (area == nullptr) ERR::Raise(ERR::FAIL);
  contour->next = area->contours->next;
  area->contours->next = contour;
}

GridBox BoxOfRing(const Area* ring) noexcept {
  GridBox box = kNoBox;
  ForEachArea(ring, [&](const Area* area) { GrowBox(box, area->contours->gridBox); });
  return box;
}

Area::~Area() {
  while (contours != nullptr) {
    const OwnedContour first(contours);
    contours = first->next;
  }
}

Shape::~Shape() {
  FreeAreas(areas);
}

}  // namespace zelvan
