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
  const std::int32_t i = VertexIndex(p);
  const std::int32_t j = VertexIndex(q);
  const std::int32_t k = VertexIndex(r);
  const std::uint32_t pq = FindOrAddEdge(i, j, AreNeighbours(p, q));
  const std::uint32_t qr = FindOrAddEdge(j, k, AreNeighbours(q, r));
  const std::uint32_t rp = FindOrAddEdge(k, i, AreNeighbours(r, p));
  const bool isClockwise = zelvan::Cross(p->grid, q->grid, r->grid) <= 0;
  AppendFace(isClockwise ? MeshFace{{pq, qr, rp}} : MeshFace{{pq, rp, qr}});
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
  for (const std::uint32_t e : indexed_) slots_[SlotFor(edges_[e].first, edges_[e].second)] = e;
}

std::uint32_t TriangleMesh::FindOrAddEdge(std::int32_t i, std::int32_t j, bool onContour) {
  if (slots_.size() < 2 * (indexed_.size() + 1)) Rehash(2 * (indexed_.size() + 1));
  std::uint32_t& slot = slots_[SlotFor(i, j)];
  if (slot == kFree) {
    const auto number = static_cast<std::uint32_t>(edges_.size());
    indexed_.push_back(number);
    edges_.push_back({i, j, onContour});
    slot = number;
  }
  return slot;
}

void TriangleMesh::Reserve(std::size_t edges, std::size_t faces) {
  edges_.reserve(edges_.size() + edges);
  faces_.reserve(faces_.size() + faces);
}

void TriangleMesh::Truncate(std::size_t edges, std::size_t faces) noexcept {
  edges_.resize(edges);
  faces_.resize(faces);
  while (!indexed_.empty() && indexed_.back() >= edges) indexed_.pop_back();
  slots_.clear();
}

void TriangleMesh::ReleaseIndex() noexcept {
  indexed_ = {};
  slots_ = {};
}

void FillMesh(TriangleMesh& mesh, const zelvan::Area& area) {
  for (std::uint32_t i = 0; i < area.triangleCount; ++i) {
    const zelvan::Triangle& t = area.triangles[i];
    mesh.AddTriangle(t.a, t.b, t.c);
  }
}

}  // namespace VORNEX
