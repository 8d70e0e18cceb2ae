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
  const std::int32_t ip = VertexIndex(p);
  const std::int32_t iq = VertexIndex(q);
  const std::int32_t ir = VertexIndex(r);
  const std::uint32_t pq = FindOrAddEdge(ip, iq, AreNeighbours(p, q));
  const std::uint32_t qr = FindOrAddEdge(iq, ir, AreNeighbours(q, r));
  const std::uint32_t rp = FindOrAddEdge(ir, ip, AreNeighbours(r, p));
  if (zelvan::Cross(p->grid, q->grid, r->grid) > 0) {
    faces_.push_back({{pq, rp, qr}});
  } else {
    faces_.push_back({{pq, qr, rp}});
  }
}

// The slot of the edge, or the free one where it belongs.
std::size_t TriangleMesh::SlotFor(std::int32_t i, std::int32_t j) const noexcept {
  const auto [low, high] = std::minmax(i, j);
  const std::size_t mask = slots_.size() - 1;
  auto s = static_cast<std::size_t>(
      zelvan::MixPair(static_cast<std::uint32_t>(low), static_cast<std::uint32_t>(high)));
  for (s &= mask; slots_[s] != kFree; s = (s + 1) & mask) {
    const MeshEdge& e = edges_[slots_[s]];
    if ((e.first == i && e.second == j) || (e.first == j && e.second == i)) break;
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
  // Each diagonal belongs to two triangles, each contour edge to one.
  mesh.Reserve((3 * triangles + vertices) / 2, triangles);
  zelvan::ForEachArea(ring, [&](const zelvan::Area* area) {
    for (std::uint32_t i = 0; i < area->triangleCount; ++i) {
      const zelvan::Triangle& t = area->triangles[i];
      mesh.AddTriangle(t.a, t.b, t.c);
    }
  });
  mesh.ReleaseIndex();
}

}  // namespace VORNEX
