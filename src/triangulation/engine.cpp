// Setting up one area, chaining the stages, and the output (engine.h).
#include "triangulation/engine.h"

#include <zelvan/error.h>

#include <new>
#include <numeric>
#include <span>
#include <utility>

#include "polygon/contour.h"

namespace VORNEX {

namespace {

template <class T>
std::unique_ptr<T[]> NewArray(std::size_t n) {
  std::unique_ptr<T[]> array(new (std::nothrow) T[n]{});
  if (array == nullptr) ERR::Raise(ERR::NOMEM);
  return array;
}

}  // namespace

void TRIAGLOBS::EmitTriangle(VertexNode* a, VertexNode* b, VertexNode* c) {
  if (emitted >= area->triangleCount) ERR::Raise(ERR::FAIL);
  if (zelvan::Cross(a->grid, b->grid, c->grid) <= 0) ERR::Raise(ERR::FAIL);
  area->triangles[emitted++] = {a, b, c};
}

void TRIAGLOBS::Run(Area* target, const InsertionOrder& insertionOrder) {
  area = target;
  try {
    Prepare(insertionOrder);
    BuildTrapezoids();
    reflexStack = NewArray<VertexNode*>(std::size_t{vertexCount} + 1);
    Monotonate();
    TriangulateMonotones();
    if (emitted != area->triangleCount) ERR::Raise(ERR::FAIL);
  } catch (...) {
    area->triangles.reset();
    area->triangleCount = 0;
    throw;
  }
}

void TRIAGLOBS::Prepare(const InsertionOrder& insertionOrder) {
  vertexCount = 0;
  std::uint32_t contours = 0;
  for (const zelvan::Contour* c = area->contours; c != nullptr; c = c->next) {
    vertexCount += c->count;
    ++contours;
  }
  // Each split adds a diagonal, of which n + 3h - 3 fit into an area with h holes.
  monotoneLimit = vertexCount + 3 * contours;
  monotones = NewArray<ChainNode*>(monotoneLimit);
  order = NewArray<VertexNode*>(vertexCount);

  std::uint32_t walked = 0;
  for (const zelvan::Contour* c = area->contours; c != nullptr; c = c->next) AddRing(c, walked);
  if (walked != vertexCount || walked < 3) ERR::Raise(ERR::FAIL);
  area->triangles.reset();
  area->triangleCount = walked + 2 * contours - 4;
  area->triangles = NewArray<zelvan::Triangle>(area->triangleCount);
  ArrangeOrder(insertionOrder);
}

// One TriVertex per vertex and one ring of nodes per contour. The first node of the
// outer contour starts the list of rings; the diagonals bring the holes into it.
void TRIAGLOBS::AddRing(const zelvan::Contour* contour, std::uint32_t& walked) {
  ChainNode* first = nullptr;
  VertexNode* v = contour->head;
  do {
    if (walked >= vertexCount) ERR::Raise(ERR::FAIL);
    ChainNode* node = chainPool.Take();
    TriVertex* record = vertexPool.Take();
    v->triVertex = record;
    if (first == nullptr) first = node->prev = node;
    node->vertex = v;
    node->next = first;
    node->prev = first->prev;
    first->prev = node->prev->next = node;
    record->chainNext[0] = v->next;
    record->chainPos[0] = node;
    record->slotCount = 1;
    order[walked++] = v;
    v = v->next;
  } while (v != contour->head);
  if (contour == area->contours) monotones[0] = first;
}

void TRIAGLOBS::ArrangeOrder(const InsertionOrder& insertionOrder) {
  std::unique_ptr<std::uint32_t[]> drawn;
  std::span<const std::uint32_t> positions = insertionOrder.positions;
  if (positions.empty()) {
    drawn = NewArray<std::uint32_t>(vertexCount);
    const std::span<std::uint32_t> all(drawn.get(), vertexCount);
    std::iota(all.begin(), all.end(), 0u);
    ShuffleOrder(all, insertionOrder.seed);
    const auto scratch = NewArray<std::uint32_t>(vertexCount);
    SortRounds(all, {scratch.get(), vertexCount});
    positions = all;
  }
  if (positions.size() != vertexCount) ERR::Raise(ERR::FAIL);
  auto arranged = NewArray<VertexNode*>(vertexCount);
  for (std::uint32_t i = 0; i < vertexCount; ++i) {
    if (positions[i] >= vertexCount) ERR::Raise(ERR::FAIL);
    arranged[i] = order[positions[i]];
  }
  order = std::move(arranged);
}

}  // namespace VORNEX
