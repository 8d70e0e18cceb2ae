// Operand copies (operand.h).
#include "boolean/operand.h"

#include "boolean/labels.h"
#include "polygon/area.h"

namespace zelvan {

OwnedContour CopyContour(const Contour* contour) {
  OwnedContour copy = NewContour(contour->count);
  VertexNode* twin = copy->head;
  ForEachVertex(contour, [&](const VertexNode* v) {
    twin->grid = v->grid;
    twin = twin->next;
  });
  copy->flags = contour->flags;
  copy->gridBox = contour->gridBox;
  return copy;
}

// The contours keep their order: a copy that placed each hole anew would turn
// the order round at every call.
Area* CopyAreas(const Area* ring) {
  OwnedRing copies;
  ForEachArea(ring, [&](const Area* area) {
    OwnedRing copy(NewArea());
    Contour** end = &copy.first->contours;
    for (const Contour* c = area->contours; c != nullptr; c = c->next) {
      *end = CopyContour(c).release();
      end = &(*end)->next;
    }
    AppendArea(copies.first, copy.release());
  });
  return copies.release();
}

void MarkOperand(Area* ring, bool isFirst) noexcept {
  const std::uint32_t mark = LABEL_UNKNOWN | (isFirst ? FROM_FIRST : 0);
  ForEachContour(ring, [&](Contour* contour) {
    contour->flags = (contour->flags & ~ENGINE_BITS) | CONTOUR_UNLABELLED;
    ForEachVertex(contour, [&](VertexNode* v) {
      v->flags = (v->flags & ~ENGINE_BITS) | mark;
      v->crossPrev = v->crossNext = nullptr;
    });
  });
}

std::size_t CountVertices(const Area* ring) noexcept {
  std::size_t count = 0;
  ForEachContour(ring, [&](const Contour* contour) { count += contour->count; });
  return count;
}

}  // namespace zelvan
