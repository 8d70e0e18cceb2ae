// Rings of areas: making, appending and freeing them, and the placing of a
// contour as a new area or as a hole.
#pragma once

#include "polygon/records.h"

namespace zelvan {

/// An empty area linked to itself. Raises ERR::NOMEM.
[[nodiscard]] Area* NewArea();

/// Links `area` at the end of the ring that `ring` names by its first area; into
/// an empty ring it becomes the first. A null area is ignored.
void AppendArea(Area*& ring, Area* area) noexcept;

/// Frees every area of the ring and sets the reference to null.
void FreeAreas(Area*& ring) noexcept;

/// Takes over a contour in grid form: a counter-clockwise one becomes the outer
/// boundary of a new area at the end of the ring, a clockwise one a hole, right
/// behind the outer boundary of the innermost area that contains it (the first
/// such area where they do not nest). Raises ERR::FAIL when no area contains the
/// hole, ERR::NOMEM when there is no memory; the contour then stays the caller's.
void PlaceContour(Area*& ring, Contour* contour);

/// The box of all outer boundaries of a ring in grid form; kNoBox for a null ring.
[[nodiscard]] GridBox BoxOfRing(const Area* ring) noexcept;

/// A ring of areas that is freed unless it is handed on.
class OwnedRing {
 public:
  OwnedRing() = default;
  explicit OwnedRing(Area* ring) noexcept : first(ring) {}
  OwnedRing(OwnedRing&& other) noexcept : first(other.release()) {}
  OwnedRing& operator=(OwnedRing&&) = delete;
  ~OwnedRing() { FreeAreas(first); }

  [[nodiscard]] Area* release() noexcept {
    Area* ring = first;
    first = nullptr;
    return ring;
  }

  Area* first = nullptr;
};

/// Calls visit(area) for each area of a ring, in ring order.
template <class Visit>
void ForEachArea(Area* ring, Visit visit) {
  if (ring == nullptr) return;
  Area* area = ring;
  do {
    visit(area);
    area = area->next;
  } while (area != ring);
}

template <class Visit>
void ForEachArea(const Area* ring, Visit visit) {
  ForEachArea(const_cast<Area*>(ring), [&](const Area* area) { visit(area); });
}

/// Calls visit(contour) for each contour of each area, in ring and list order.
template <class Ring, class Visit>
void ForEachContour(Ring* ring, Visit visit) {
  ForEachArea(ring, [&](auto* area) {
    for (auto* contour = area->contours; contour != nullptr; contour = contour->next) {
      visit(contour);
    }
  });
}

/// Calls visit(vertex) for each vertex of a ring of vertices, from its head.
template <class Visit>
void ForEachVertex(const Contour* contour, Visit visit) {
  VertexNode* vertex = contour->head;
  do {
    visit(vertex);
    vertex = vertex->next;
  } while (vertex != contour->head);
}

}  // namespace zelvan
