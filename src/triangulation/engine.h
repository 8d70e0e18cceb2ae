// TRIAGLOBS: the triangulation of one area, with every working record it needs.
//
// Seidel's randomized incremental trapezoidation (1991), a split along diagonals
// into rings that are monotone in y with one side a single edge (Fournier and
// Montuno 1984), and a greedy cut of each ring, all in exact integers. Each stage
// is a file: insertion_order, point_location, edge_insertion, merge_trapezoids,
// monotone_decomposition, monotone_triangulation.
//
// What holds here:
//  - One object lives for one area; its pools and arrays die with it. Records are
//    given back early only by MergeTrapezoids and by the walk of Monotonate.
//  - The live trapezoids are visited newest block first, slots in ascending order;
//    where the monotone decomposition starts depends on it.
//  - Failures are raised with ERR::Raise: FAIL for geometry that is no area, NOMEM.
//
//    after             holds
//    Prepare           every edge runs with the area to its left
//    BuildTrapezoids   the live trapezoids are those of the area's edges, whatever the order;
//                      trapezoid.h says how they are linked
//    Monotonate        each listed ring is monotone, with one side a single edge; together the
//                      rings are the area
//    the end           the triangles' areas sum to the area's
//
// Everything that is no area shows as a contradiction: a link that names nothing, a step that
// does not descend, an inside trapezoid that is never reached, a triangle that is not
// counter-clockwise.
//
// Why it ends, on any ring of vertices, crossing itself or not. The walk of an edge goes
// strictly down in the order of points; searches descend a graph without cycles; the walk
// through the trapezoids marks each once; diagonals are limited by n + 3 x contours; the cut
// of a ring takes a vertex off the stack or moves on, and stops at the ring's end.
#pragma once

#include <initializer_list>
#include <memory>

#include "memory/block_pool.h"
#include "polygon/records.h"
#include "triangulation/insertion_order.h"
#include "triangulation/trapezoid.h"

namespace VORNEX {

using zelvan::Area;

/// One node of a monotone ring.
struct ChainNode {
  VertexNode* vertex;
  ChainNode* next;  ///< in the direction of the contour
  ChainNode* prev;
  bool marked;  ///< walked by TriangulateMonotones
};

/// What the engine keeps per vertex; reached through VertexNode::triVertex.
struct TriVertex {
  static constexpr std::uint32_t kSlots = 4;  ///< three diagonals at most meet the contour

  QueryNode* root0;  ///< finds the vertex as the start of its own edge
  QueryNode* root1;  ///< finds it as the end of its predecessor's edge
  VertexNode* chainNext[kSlots];
  ChainNode* chainPos[kSlots];
  std::uint32_t slotCount;
};

enum class Direction : std::uint8_t { kFromAbove = 0, kFromBelow = 1 };

class TRIAGLOBS {
 public:
  TRIAGLOBS() = default;
  TRIAGLOBS(const TRIAGLOBS&) = delete;
  TRIAGLOBS& operator=(const TRIAGLOBS&) = delete;

  /// Triangulates one area in grid form into its `triangles`, n + 2h - 2 for n
  /// vertices and h holes. If Run raises an exception, the area is left without triangles.
  void Run(Area* target, const InsertionOrder& insertionOrder = {});

  /// Appends one triangle to the area. Raises FAIL if the area's array is full, and if the
  /// triangle is not strictly counter-clockwise: a neck of no width, or a crossing.
  void EmitTriangle(VertexNode* a, VertexNode* b, VertexNode* c);

 protected:
  // Set-up (engine.cpp).
  void Prepare(const InsertionOrder& insertionOrder);
  void AddRing(const zelvan::Contour* contour, std::uint32_t& walked);
  void ArrangeOrder(const InsertionOrder& insertionOrder);

  // Trapezoidation (point_location.cpp, edge_insertion.cpp, merge_trapezoids.cpp).
  void BuildTrapezoids();
  void InsertUntil(std::uint32_t end);
  void RefreshRoots();
  QueryNode* InitQuery(VertexNode* v);
  QueryNode* TakeSink(QueryNode* parent, Trapezoid* trapezoid);
  void InsertEdge(VertexNode* v);
  Trapezoid* InsertEndpoint(bool isUpper, QueryNode* root, GridPoint p, GridPoint other);
  Trapezoid* SplitByEdge(Trapezoid* t, VertexNode* v);
  void ContinueFromAbove(Trapezoid* t, Trapezoid* tn);
  Trapezoid* OneBelow(Trapezoid* t, Trapezoid* tn, const VertexNode* v);
  void MergeTrapezoids(const VertexNode* v, Trapezoid* first, GridPoint lowest, Side side);
  void Merge(Trapezoid* t, Trapezoid* below);

  // Monotone decomposition (monotone_decomposition.cpp).
  enum class Link : std::uint8_t { kUp0, kUp1, kDown0, kDown1 };
  using Links = std::initializer_list<Link>;
  struct Visit {
    std::uint32_t ring;
    Direction direction;
    Trapezoid* trapezoid;
    const Trapezoid* from;
    Visit* next;
  };
  void Monotonate();
  void Traverse(const Visit& visit);
  void TraverseTop(const Visit& visit);
  void TraverseBottom(const Visit& visit);
  void TraverseTwoByTwo(const Visit& visit);
  void TraverseTwoAbove(const Visit& visit);
  void TraverseTwoBelow(const Visit& visit);
  void TraverseOneByOne(const Visit& visit);
  void Continue(std::uint32_t ring, Trapezoid* t, Links links);
  void Divide(const Visit& visit, VertexNode* a, VertexNode* b, Links same, Links other);
  std::uint32_t SplitMonotone(std::uint32_t m, VertexNode* a, VertexNode* b);

  // Triangulation of the rings (monotone_triangulation.cpp).
  void TriangulateMonotones();
  void TriangulateRing(ChainNode* start);
  void TriangulateMonotone(ChainNode* top, int side);
  void PushVertex(std::uint32_t& r, VertexNode* v);

  zelvan::BlockPool<QueryNode> nodePool;
  zelvan::BlockPool<TriVertex> vertexPool;
  zelvan::BlockPool<ChainNode> chainPool;
  zelvan::BlockPool<Trapezoid> trapPool;
  std::unique_ptr<VertexNode*[]> order;
  Area* area = nullptr;
  std::uint32_t vertexCount = 0;
  std::unique_ptr<ChainNode*[]> monotones;
  std::uint32_t monotoneCount = 0;
  std::uint32_t monotoneLimit = 0;
  std::uint32_t nextToInsert = 0;
  std::unique_ptr<VertexNode*[]> reflexStack;
  std::uint32_t emitted = 0;

  zelvan::BlockPool<Visit> visitPool;
  Visit* pending = nullptr;    // visits to come, the next one first
  Trapezoid* usave = nullptr;  // third upper neighbour, carried through one InsertEdge
  Side uside = Side::kLeft;    // on which side of the walk it lies
};

}  // namespace VORNEX
