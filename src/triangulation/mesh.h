// TriangleMesh: the result that the mesh queries read. Vertices, edges and faces
// with shared numbers, built from the triangles of all areas of a shape.
//
// What holds here:
//  - Vertex i is entry i of the shape's vertex table; vertices on one grid point
//    share the lowest number.
//  - Edges are numbered in the order in which they first appear; faces like the
//    triangles. A face names its edges clockwise, from the one between its first two
//    corners.
//  - An edge is found again exactly as a scan from edge 0 would find it: either its
//    maker remembers its number, which is enough where no other vertex lies on either
//    end, or it stands in a hash index.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "polygon/records.h"
#include "polygon/vertex_table.h"

namespace VORNEX {

struct MeshEdge {
  std::int32_t first;
  std::int32_t second;
  bool onContour;  ///< part of a contour; false for a diagonal

  friend bool operator==(const MeshEdge&, const MeshEdge&) noexcept = default;
};

struct MeshFace {
  std::uint32_t edge[3];

  friend bool operator==(const MeshFace&, const MeshFace&) noexcept = default;
};

/// A vertex by its number in the mesh.
struct MeshVertex {
  std::int32_t number;
  bool isShared;  ///< does another vertex of the shape lie on the same grid point?
};

/// The numbers of the vertices of one area.
class AreaNumbering {
 public:
  AreaNumbering() = default;

  /// @param first   position of the area's first vertex in the table
  /// @param shared  for a whole table, or empty where no two vertices share a point: at
  ///                each position the lowest position on that point when the vertex shares
  ///                its point, else -1. Must outlive the numbering.
  AreaNumbering(std::int32_t first, std::span<const std::int32_t> shared) noexcept
      : first_(first), shared_(shared.empty() ? nullptr : shared.data() + first) {}

  [[nodiscard]] MeshVertex operator[](std::uint32_t i) const noexcept {
    if (shared_ != nullptr && shared_[i] >= 0) return {shared_[i], true};
    return {first_ + static_cast<std::int32_t>(i), false};
  }

 private:
  std::int32_t first_ = 0;
  const std::int32_t* shared_ = nullptr;
};

class TriangleMesh {
 public:
  /// An empty mesh; the table belongs to the shape and must outlive the mesh.
  explicit TriangleMesh(const zelvan::VertexTable& vertexTable) noexcept : table_(vertexTable) {}

  /// Adds one triangle by its corners. Throws std::bad_alloc.
  void AddTriangle(const zelvan::VertexNode* p, const zelvan::VertexNode* q,
                   const zelvan::VertexNode* r);

  /// The number of the edge between vertices i and j, in either direction, which is
  /// added when there is none; an edge that is there keeps its onContour.
  std::uint32_t FindOrAddEdge(std::int32_t i, std::int32_t j, bool onContour);

  /// The same for an edge that its maker knows not to be there, unless by other vertices
  /// on the points of its ends.
  std::uint32_t AddEdge(MeshVertex i, MeshVertex j, bool onContour) {
    if (i.isShared || j.isShared) return FindOrAddEdge(i.number, j.number, onContour);
    edges_.push_back({i.number, j.number, onContour});
    return static_cast<std::uint32_t>(edges_.size() - 1);
  }

  /// Adds a face by its edges.
  void AppendFace(const MeshFace& face) { faces_.push_back(face); }

  /// The number of the first vertex on v's grid point, or -1.
  [[nodiscard]] std::int32_t VertexIndex(const zelvan::VertexNode* v) const noexcept;

  [[nodiscard]] const std::vector<MeshEdge>& edges() const noexcept { return edges_; }
  [[nodiscard]] const std::vector<MeshFace>& faces() const noexcept { return faces_; }

  /// Makes room for this many more edges and faces.
  void Reserve(std::size_t edges, std::size_t faces);

  /// Takes back the edges and faces from these numbers on.
  void Truncate(std::size_t edges, std::size_t faces) noexcept;

  /// Drops the hash index: no edge that is there will be asked for again.
  void ReleaseIndex() noexcept;

 private:
  void Rehash(std::size_t capacity);
  [[nodiscard]] std::size_t SlotFor(std::int32_t i, std::int32_t j) const noexcept;

  const zelvan::VertexTable& table_;
  std::vector<MeshEdge> edges_;
  std::vector<MeshFace> faces_;
  std::vector<std::uint32_t> indexed_;  // the edges of the index, ascending
  std::vector<std::uint32_t> slots_;    // open addressing; edge numbers, kFree where free
};

/// Adds the triangles of one area in array order.
void FillMesh(TriangleMesh& mesh, const zelvan::Area& area);

}  // namespace VORNEX
