// Operand copies (operand.h).
#include "boolean/operand.h"

#include <zelvan/error.h>

#include <new>

#include "boolean/labels.h"
#include "polygon/area.h"
#include "polygon/contour.h"

namespace zelvan {

namespace {

// The contours keep their order: a copy that placed each hole anew would turn
// the order round at every call.
void CopyContours(const Area* area, Area* copy, bool link) {
  Contour** end = &copy->contours;
  for (const Contour* c = area->contours; c != nullptr; c = c->next) {
    *end = CopyContour(c, link);
    end = &(*end)->next;
  }
}

void CopyTriangles(const Area* area, Area* copy) {
  if (area->triangles == nullptr) return;
  copy->triangles.reset(new (std::nothrow) Triangle[area->triangleCount]);
  if (copy->triangles == nullptr) ERR::Raise(ERR::NOMEM);
  copy->triangleCount = area->triangleCount;
  for (std::uint32_t i = 0; i < area->triangleCount; ++i) {
    const Triangle& t = area->triangles[i];
    copy->triangles[i] = {t.a->copy, t.b->copy, t.c->copy};
  }
}

Area* CopyRing(const Area* ring, bool withTriangles) {
  OwnedRing copy;
  ForEachArea(ring, [&](const Area* area) {
    OwnedRing one(NewArea());
    CopyContours(area, one.first, withTriangles);
    if (withTriangles) CopyTriangles(area, one.first);
    AppendArea(copy.first, one.release());
  });
  return copy.release();
}

}  // namespace

Contour* CopyContour(const Contour* contour, bool link) {
  Contour* copy = NewContourInBlock(contour->count);
  if (copy == nullptr) ERR::Raise(ERR::NOMEM);
  VertexNode* twin = copy->head;
  ForEachVertex(contour, [&](VertexNode* v) {
    twin->grid = v->grid;
    if (link) {
      v->copy = twin;
      twin->copy = v;
    }
    twin = twin->next;
  });
  copy->flags = contour->flags;
  copy->gridBox = contour->gridBox;
  return copy;
}

Area* CopyArea(const Area* area) {
  OwnedRing copy(NewArea());
  CopyContours(area, copy.first, true);
  CopyTriangles(area, copy.first);
  return copy.release();
}

Area* CopyAreas(const Area* ring) {
  return CopyRing(ring, true);
}

Area* CopyOperand(const Area* ring) {
  return CopyRing(ring, false);
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
