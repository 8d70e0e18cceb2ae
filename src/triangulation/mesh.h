// TriangleMesh: the result that the mesh queries read. Vertices, edges and faces
// with shared numbers, built from the triangles of all areas of a shape.
//
// What holds here:
//  - Vertex i is entry i of the shape's vertex table; vertices on one grid point
//    share the lowest number.
//  - Edges are numbered in the order in which they first appear; faces like the
//    triangles. A face names its edges clockwise, from the one between its first two
//    corners.
//  - An edge is found again exactly as a scan from edge 0 would find it, through a
//    hash index that is dropped when the mesh is filled.
#pragma once

#include <cstdint>
#include <vector>

#include "polygon/records.h"

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

class TriangleMesh {
 public:
  /// An empty mesh; the table belongs to the shape and must outlive the mesh.
  explicit TriangleMesh(const zelvan::VertexTable& vertexTable) noexcept : table_(vertexTable) {}

  /// Adds one triangle by its corners. Throws std::bad_alloc.
  void AddTriangle(const zelvan::VertexNode* p, const zelvan::VertexNode* q,
                   const zelvan::VertexNode* r);

  /// The same for a triangle whose vertices carry their numbers (VertexNode::number).
  void AddNumbered(const zelvan::VertexNode* p, const zelvan::VertexNode* q,
                   const zelvan::VertexNode* r);

  /// The number of the edge between vertices i and j, in either direction, which is
  /// added when there is none; an edge that is there keeps its onContour.
  std::uint32_t FindOrAddEdge(std::int32_t i, std::int32_t j, bool onContour);

  /// The number of the first vertex on v's grid point, or -1.
  [[nodiscard]] std::int32_t VertexIndex(const zelvan::VertexNode* v) const noexcept;

  [[nodiscard]] const std::vector<MeshEdge>& edges() const noexcept { return edges_; }
  [[nodiscard]] const std::vector<MeshFace>& faces() const noexcept { return faces_; }

  /// Makes room for this many more edges and faces.
  void Reserve(std::size_t edges, std::size_t faces);

  /// Drops the hash index; the next edge that is asked for makes it anew.
  void ReleaseIndex() noexcept;

 private:
  struct Corners {
    std::int32_t p;
    std::int32_t q;
    std::int32_t r;
  };
  void AddFace(const zelvan::VertexNode* p, const zelvan::VertexNode* q,
               const zelvan::VertexNode* r, const Corners& number);
  void Rehash(std::size_t capacity);
  [[nodiscard]] std::size_t SlotFor(std::int32_t i, std::int32_t j) const noexcept;

  const zelvan::VertexTable& table_;
  std::vector<MeshEdge> edges_;
  std::vector<MeshFace> faces_;
  std::vector<std::uint32_t> slots_;  // open addressing; edge numbers, kFree where free
};

/// Adds the triangles of every area of a ring, in ring and array order.
void FillMesh(TriangleMesh& mesh, const zelvan::Area* ring);

}  // namespace VORNEX
