// Where the triangles of an area's sweep go: into the area's array, and into the mesh.
//
// What holds here: each triangle comes with its three edges by name, so the mesh gets
// its edges in the order of their first appearance without a search. Vertices on one
// grid point share a number there; two edges by name can then be one edge of the mesh,
// so an edge with such a vertex is looked up by its numbers.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "polygon/records.h"
#include "triangulation/mesh.h"
#include "triangulation/sweep_records.h"

namespace VORNEX {

class TriangleWriter {
 public:
  /// @param triangles  receives the triangles of the area, all of them
  /// @param nodes      of the area's vertices
  /// @param mesh       null when no mesh is wanted
  /// @param numbering  where the area's vertices stand in the mesh
  TriangleWriter(std::span<zelvan::Triangle> triangles, std::span<VertexNode* const> nodes,
                 TriangleMesh* mesh, AreaNumbering numbering)
      : nodes_(nodes),
        edgeCount_(static_cast<std::uint32_t>(nodes.size())),
        triangles_(triangles),
        mesh_(mesh),
        numbering_(numbering) {
    // Of the edges of all triangles each contour edge counts once, each diagonal twice.
    if (mesh_ == nullptr) return;
    numbers_.reserve((3 * triangles.size() + nodes.size()) / 2);
    numbers_.resize(nodes.size(), kNone);
  }

  /// A new diagonal by its name. Throws std::bad_alloc.
  [[nodiscard]] std::uint32_t AddDiagonal() {
    if (mesh_ != nullptr) numbers_.push_back(kNone);
    return edgeCount_++;
  }

  /// Adds a triangle by its corners, counter-clockwise, and its edges, the first one
  /// between the first two corners. @return false if the array is full
  [[nodiscard]] bool Add(const Corner& p, const Corner& q, const Corner& r,
                         const std::array<std::uint32_t, 3>& edge) {
    if (IsComplete()) return false;
    triangles_[count_++] = {nodes_[p.vertex], nodes_[q.vertex], nodes_[r.vertex]};
    if (mesh_ != nullptr) {
      const std::uint32_t pq = NumberOf(edge[0], p.vertex, q.vertex);
      const std::uint32_t qr = NumberOf(edge[1], q.vertex, r.vertex);
      const std::uint32_t rp = NumberOf(edge[2], r.vertex, p.vertex);
      mesh_->AppendFace({{pq, rp, qr}});
    }
    return true;
  }

  /// Have all triangles of the area been added?
  [[nodiscard]] bool IsComplete() const noexcept { return count_ == triangles_.size(); }

 private:
  // The number of an edge in the mesh, given at its first appearance.
  [[nodiscard]] std::uint32_t NumberOf(std::uint32_t edge, std::uint32_t from, std::uint32_t to) {
    std::uint32_t& number = numbers_[edge];
    if (number == kNone) {
      number = mesh_->AddEdge(numbering_[from], numbering_[to], edge < nodes_.size());
    }
    return number;
  }

  std::span<VertexNode* const> nodes_;
  std::uint32_t edgeCount_;
  std::span<zelvan::Triangle> triangles_;
  TriangleMesh* mesh_;
  AreaNumbering numbering_;
  std::vector<std::uint32_t> numbers_;  // in the mesh, of the edges by name; kNone at first
  std::size_t count_ = 0;
};

}  // namespace VORNEX
