// The triangulation result (mesh.h).
#include "triangulation/mesh.h"

#include <algorithm>
#include <cstddef>

#include "polygon/area.h"
#include "polygon/hash.h"

namespace VORNEX {

namespace {

constexpr std::uint32_t kFree = ~std::uint32_t{0};

bool AreNeighbours(const zelvan::VertexNode* p, const zelvan::VertexNode* q) noexcept {
  return p->next == q || q->next == p;
}

}  // namespace

std::int32_t TriangleMesh::VertexIndex(const zelvan::VertexNode* v) const noexcept {
  return table_.Find(v->grid);
}

void TriangleMesh::AddTriangle(const zelvan::VertexNode* p, const zelvan::VertexNode* q,
                               const zelvan::VertexNode* r) {
  AddFace(p, q, r, {VertexIndex(p), VertexIndex(q), VertexIndex(r)});
}

void TriangleMesh::AddNumbered(const zelvan::VertexNode* p, const zelvan::VertexNode* q,
                               const zelvan::VertexNode* r) {
  AddFace(p, q, r, {p->number, q->number, r->number});
}

void TriangleMesh::AddFace(const zelvan::VertexNode* p, const zelvan::VertexNode* q,
                           const zelvan::VertexNode* r, const Corners& number) {
  const std::uint32_t pq = FindOrAddEdge(number.p, number.q, AreNeighbours(p, q));
  const std::uint32_t qr = FindOrAddEdge(number.q, number.r, AreNeighbours(q, r));
  const std::uint32_t rp = FindOrAddEdge(number.r, number.p, AreNeighbours(r, p));
  if (zelvan::Cross(p->grid, q->grid, r->grid) > 0) {
    faces_.push_back({{pq, rp, qr}});
  } else {
    faces_.push_back({{pq, qr, rp}});
  }
}

// The slot of the edge, or the free one where it belongs. The first try keeps edges
// between near numbers near each other; these lie close packed, so the later ones
// take steps of the edge's own (double hashing).
std::size_t TriangleMesh::SlotFor(std::int32_t i, std::int32_t j) const noexcept {
  const auto low = static_cast<std::uint32_t>(std::min(i, j));
  const auto high = static_cast<std::uint32_t>(std::max(i, j));
  const std::size_t mask = slots_.size() - 1;
  std::size_t s = (std::size_t{3} * low + std::size_t{5} * high) & mask;
  std::size_t step = 0;
  while (slots_[s] != kFree) {
    const MeshEdge& e = edges_[slots_[s]];
    if ((e.first == i && e.second == j) || (e.first == j && e.second == i)) break;
    if (step == 0) step = static_cast<std::size_t>(zelvan::MixPair(low, high)) | 1;
    s = (s + step) & mask;
  }
  return s;
}

void TriangleMesh::Rehash(std::size_t capacity) {
  slots_.assign(zelvan::HashSlots(capacity), kFree);
  for (std::size_t k = 0; k < edges_.size(); ++k) {
    slots_[SlotFor(edges_[k].first, edges_[k].second)] = static_cast<std::uint32_t>(k);
  }
}

std::uint32_t TriangleMesh::FindOrAddEdge(std::int32_t i, std::int32_t j, bool onContour) {
  if (slots_.size() < 2 * (edges_.size() + 1))
    Rehash(std::max(edges_.capacity(), edges_.size() + 1));
  std::uint32_t& slot = slots_[SlotFor(i, j)];
  if (slot == kFree) {
    edges_.push_back({i, j, onContour});
    slot = static_cast<std::uint32_t>(edges_.size() - 1);
  }
  return slot;
}

void TriangleMesh::Reserve(std::size_t edges, std::size_t faces) {
  edges_.reserve(edges_.size() + edges);
  faces_.reserve(faces_.size() + faces);
}

void TriangleMesh::ReleaseIndex() noexcept {
  slots_ = {};
}

void FillMesh(TriangleMesh& mesh, const zelvan::Area* ring) {
  std::size_t triangles = 0;
  std::size_t vertices = 0;
  zelvan::ForEachArea(ring, [&](const zelvan::Area* area) { triangles += area->triangleCount; });
  zelvan::ForEachContour(ring, [&](const zelvan::Contour* c) { vertices += c->count; });
  zelvan::ForEachContour(ring, [&](const zelvan::Contour* c) {
    zelvan::ForEachVertex(c, [&](zelvan::VertexNode* v) { v->number = mesh.VertexIndex(v); });
  });
  // Each diagonal belongs to two triangles, each contour edge to one.
  mesh.Reserve((3 * triangles + vertices) / 2, triangles);
  zelvan::ForEachArea(ring, [&](const zelvan::Area* area) {
    for (std::uint32_t i = 0; i < area->triangleCount; ++i) {
      const zelvan::Triangle& t = area->triangles[i];
      mesh.AddNumbered(t.a, t.b, t.c);
    }
  });
  mesh.ReleaseIndex();
}

}  // namespace VORNEX
