// Where the triangles of a sweep go: into the area's array, and into the mesh; or into
// flat triangles.
//
// What holds here: each triangle comes with its three edges by name, so the mesh gets
// its edges in the order of their first appearance without a search. Vertices on one
// grid point share a number there; two edges by name can then be one edge of the mesh,
// so an edge with such a vertex is looked up by its numbers. Flat triangles go by the names
// alone: of the two that name a diagonal, the second finds the side of the first.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "polygon/records.h"
#include "triangulation/flat_triangles.h"
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
      : vertices_(vertices),
        wanted_(area.triangleCount),
        triangles_(area.triangles.get()),
        mesh_(mesh),
        numbering_(numbering) {
    ReserveDiagonals();
  }

  /// @param wanted  triangles of the area
  TriangleWriter(std::span<SweepVertex> vertices, std::uint32_t wanted, FlatTriangles& flat)
      : vertices_(vertices), wanted_(wanted), flat_(&flat) {
    ReserveDiagonals();
    flat.corners.reserve(wanted);
    flat.neighbours.reserve(wanted);
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
    if (count_ == wanted_) return false;
    if (flat_ != nullptr) {
      AddFlat({p.vertex, q.vertex, r.vertex}, edge);
      return true;
    }
    triangles_[count_++] = {p.node, q.node, r.node};
    if (mesh_ != nullptr) {
      const std::uint32_t pq = NumberOf(edge[0], p.vertex, q.vertex);
      const std::uint32_t qr = NumberOf(edge[1], q.vertex, r.vertex);
      const std::uint32_t rp = NumberOf(edge[2], r.vertex, p.vertex);
      mesh_->AppendFace({{pq, rp, qr}});
    }
    return true;
  }

  /// Have all triangles of the area been added?
  [[nodiscard]] bool IsComplete() const noexcept { return count_ == wanted_; }

 private:
  // Of the edges of all triangles each contour edge counts once, each diagonal twice.
  void ReserveDiagonals() { diagonals_.reserve((3 * std::size_t{wanted_} - vertices_.size()) / 2); }

  void AddFlat(const std::array<std::uint32_t, 3>& corners,
               const std::array<std::uint32_t, 3>& edges) {
    std::array<std::int32_t, 3> neighbours{-1, -1, -1};
    for (std::uint32_t k = 0; k < 3; ++k) {
      if (edges[k] < vertices_.size()) continue;
      std::uint32_t& side = diagonals_[edges[k] - vertices_.size()];
      if (side == kNone) {
        side = 3 * count_ + k;
      } else {
        neighbours[k] = static_cast<std::int32_t>(side / 3);
        flat_->neighbours[side / 3][side % 3] = static_cast<std::int32_t>(count_);
      }
    }
    flat_->corners.push_back(corners);
    flat_->neighbours.push_back(neighbours);
    ++count_;
  }

  // The number of an edge in the mesh, given at its first appearance.
  [[nodiscard]] std::uint32_t NumberOf(std::uint32_t edge, std::uint32_t from, std::uint32_t to) {
    const bool onContour = edge < vertices_.size();
    std::uint32_t& number =
        onContour ? vertices_[edge].meshEdge : diagonals_[edge - vertices_.size()];
    if (number == kNone) number = mesh_->AddEdge(numbering_[from], numbering_[to], onContour);
    return number;
  }

  std::span<SweepVertex> vertices_;
  std::uint32_t wanted_;
  zelvan::Triangle* triangles_ = nullptr;  // the area's, or
  FlatTriangles* flat_ = nullptr;
  TriangleMesh* mesh_ = nullptr;
  AreaNumbering numbering_;
  // Of each diagonal its number in the mesh, or where it is side 3 t + k; kNone at first.
  std::vector<std::uint32_t> diagonals_;
  std::uint32_t count_ = 0;
};

}  // namespace VORNEX
