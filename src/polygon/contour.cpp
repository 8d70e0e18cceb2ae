// Vertex rings (contour.h).
#include "polygon/contour.h"

#include <zelvan/error.h>

#include <new>
#include <utility>

namespace zelvan {

namespace {

VertexNode* NewLinkedVertex() noexcept {
  VertexNode* vertex = new (std::nothrow) VertexNode{};
  if (vertex != nullptr) vertex->next = vertex->prev = vertex;
  return vertex;
}

Contour* NewContourOf(VertexNode* head) noexcept {
  Contour* contour = new (std::nothrow) Contour{};
  if (contour != nullptr) contour->head = head;
  return contour;
}

void GrowBox(WorldBox& box, double x, double y) noexcept {
  if (x < box.min.x) box.min.x = x;
  if (y < box.min.y) box.min.y = y;
  if (x > box.max.x) box.max.x = x;
  if (y > box.max.y) box.max.y = y;
}

void FreeVertex(VertexNode* vertex) noexcept {
  if ((vertex->flags & VERTEX_LENT) == 0) delete vertex;
}

void Append(Contour* contour, VertexNode* vertex) noexcept {
  LinkBefore(contour->head, vertex);
  ++contour->count;
}

}  // namespace

VertexNode* NewVertex(double x, double y) noexcept {
  VertexNode* vertex = NewLinkedVertex();
  if (vertex != nullptr) vertex->world = {x, y};
  return vertex;
}

Contour* NewContour(double x, double y) {
  VertexNode* head = NewVertex(x, y);
  if (head == nullptr) throw std::bad_alloc();
  Contour* contour = NewContourOf(head);
  if (contour == nullptr) {
    delete head;
    throw std::bad_alloc();
  }
  contour->worldBox = {{x, y}, {x, y}};
  return contour;
}

void AppendVertex(Contour*& contour, double x, double y) {
  if (contour == nullptr) {
    contour = NewContour(x, y);
    contour->count = 1;
    return;
  }
  VertexNode* vertex = NewVertex(x, y);
  if (vertex == nullptr) {
    FreeContour(contour);
    throw std::bad_alloc();
  }
  Append(contour, vertex);
  GrowBox(contour->worldBox, x, y);
}

VertexNode* NewVertex(GridPoint point) {
  VertexNode* vertex = NewLinkedVertex();
  if (vertex == nullptr) ERR::Raise(ERR::NOMEM);
  vertex->grid = point;
  return vertex;
}

Contour* NewContour(GridPoint point) {
  VertexNode* head = NewVertex(point);
  Contour* contour = NewContourOf(head);
  if (contour == nullptr) {
    delete head;
    ERR::Raise(ERR::NOMEM);
  }
  contour->count = 1;
  contour->gridBox = {point, point};
  return contour;
}

void AppendVertex(Contour*& contour, GridPoint point) {
  if (contour == nullptr) {
    contour = NewContour(point);
    return;
  }
  Append(contour, NewVertex(point));
  GrowBox(contour->gridBox, point);
}

void LinkBefore(VertexNode* place, VertexNode* vertex) noexcept {
  vertex->next = place;
  vertex->prev = place->prev;
  place->prev->next = vertex;
  place->prev = vertex;
}

Contour* NewContourInBlock(std::uint32_t n) noexcept {
  std::unique_ptr<VertexNode[]> block(new (std::nothrow) VertexNode[n]{});
  if (block == nullptr) return nullptr;
  Contour* contour = NewContourOf(block.get());
  if (contour == nullptr) return nullptr;
  for (std::uint32_t i = 0; i < n; ++i) {
    block[i].next = &block[i + 1 < n ? i + 1 : 0];
    block[i].prev = &block[i > 0 ? i - 1 : n - 1];
  }
  contour->count = contour->blockSize = n;
  contour->block = std::move(block);
  return contour;
}

void RemoveVertex(Contour* contour, VertexNode* vertex) noexcept {
  vertex->prev->next = vertex->next;
  vertex->next->prev = vertex->prev;
  --contour->count;
  if (contour->block == nullptr) FreeVertex(vertex);
}

void FreeContour(Contour*& contour) noexcept {
  if (contour == nullptr) return;
  if (contour->block == nullptr) {
    VertexNode* vertex = contour->head->next;
    while (vertex != contour->head) {
      VertexNode* next = vertex->next;
      FreeVertex(vertex);
      vertex = next;
    }
    FreeVertex(contour->head);
  }
  delete contour;
  contour = nullptr;
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
