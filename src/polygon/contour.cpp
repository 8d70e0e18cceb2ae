// Vertex rings (contour.h).
#include "polygon/contour.h"

#include <utility>

#include "polygon/area.h"

namespace zelvan {

OwnedContour NewContour(std::uint32_t n) {
  auto contour = std::make_unique<Contour>();
  contour->block = std::make_unique<VertexNode[]>(n);
  VertexNode* const block = contour->head = contour->block.get();
  for (std::uint32_t i = 0; i < n; ++i) {
    block[i].next = &block[i + 1 < n ? i + 1 : 0];
    block[i].prev = &block[i > 0 ? i - 1 : n - 1];
  }
  contour->count = n;
  return contour;
}

OwnedContour NewContour(std::span<const GridPoint> points) {
  OwnedContour contour = NewContour(static_cast<std::uint32_t>(points.size()));
  VertexNode* v = contour->head;
  for (const GridPoint p : points) v++->grid = p;
  FitBox(contour.get());
  return contour;
}

void FitBox(Contour* contour) noexcept {
  contour->gridBox = {contour->head->grid, contour->head->grid};
  ForEachVertex(contour, [=](const VertexNode* v) { GrowBox(contour->gridBox, v->grid); });
}

void LinkBefore(VertexNode* place, VertexNode* vertex) noexcept {
  vertex->next = place;
  vertex->prev = place->prev;
  place->prev->next = vertex;
  place->prev = vertex;
}

void RemoveVertex(Contour* contour, VertexNode* vertex) noexcept {
  vertex->prev->next = vertex->next;
  vertex->next->prev = vertex->prev;
  --contour->count;
}

void ReverseContour(Contour* contour) noexcept {
  VertexNode* vertex = contour->head;
  do {
    std::swap(vertex->next, vertex->prev);
    vertex = vertex->prev;
  } while (vertex != contour->head);
  contour->flags ^= CONTOUR_CCW;
}

std::int64_t TwiceArea(const VertexNode* head) noexcept {
  std::int64_t sum = 0;
  const VertexNode* v = head;
  do {
    const GridPoint p = v->prev->grid;
    sum += std::int64_t{p.gy + v->grid.gy} * (p.gx - v->grid.gx);
    v = v->next;
  } while (v != head);
  return sum;
}

}  // namespace zelvan
