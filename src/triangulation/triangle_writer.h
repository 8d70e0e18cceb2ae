// Where the triangles of a sweep go: into the area's array, and into the mesh.
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
  /// @param vertices  of the area; their meshEdge is written
  /// @param mesh      null when no mesh is wanted
  /// @param numbering where the area's vertices stand in the mesh
  TriangleWriter(zelvan::Area& area, std::span<SweepVertex> vertices, TriangleMesh* mesh,
                 AreaNumbering numbering)
      : area_(area), vertices_(vertices), mesh_(mesh), numbering_(numbering) {
    // Of the edges of all triangles each contour edge counts once, each diagonal twice.
    diagonals_.reserve((3 * std::size_t{area.triangleCount} - vertices.size()) / 2);
  }

  /// A new diagonal by its name. Throws std::bad_alloc.
  [[nodiscard]] std::uint32_t AddDiagonal() {
    diagonals_.push_back(kNone);
    return static_cast<std::uint32_t>(vertices_.size() + diagonals_.size() - 1);
  }

  /// Adds a triangle by its corners, counter-clockwise, and its edges, the first one
  /// between the first two corners. @return false when the area's array is full
  [[nodiscard]] bool Add(const Corner& p, const Corner& q, const Corner& r,
                         const std::array<std::uint32_t, 3>& edge) {
    if (count_ == area_.triangleCount) return false;
    area_.triangles[count_++] = {p.node, q.node, r.node};
    if (mesh_ != nullptr) {
      const std::uint32_t pq = NumberOf(edge[0], p.vertex, q.vertex);
      const std::uint32_t qr = NumberOf(edge[1], q.vertex, r.vertex);
      const std::uint32_t rp = NumberOf(edge[2], r.vertex, p.vertex);
      mesh_->AppendFace({{pq, rp, qr}});
    }
    return true;
  }

  /// Triangles added so far.
  [[nodiscard]] std::uint32_t count() const noexcept { return count_; }

 private:
  // The number of an edge in the mesh, given at its first appearance.
  [[nodiscard]] std::uint32_t NumberOf(std::uint32_t edge, std::uint32_t from, std::uint32_t to) {
    const bool onContour = edge < vertices_.size();
    std::uint32_t& number =
        onContour ? vertices_[edge].meshEdge : diagonals_[edge - vertices_.size()];
    if (number == kNone) number = mesh_->AddEdge(numbering_[from], numbering_[to], onContour);
    return number;
  }

  zelvan::Area& area_;
  std::span<SweepVertex> vertices_;
  TriangleMesh* mesh_;
  AreaNumbering numbering_;
  std::vector<std::uint32_t> diagonals_;  // their numbers in the mesh, or kNone
  std::uint32_t count_ = 0;
};

}  // namespace VORNEX
