// The records of the trapezoidation: the trapezoids into which the plane is cut
// by the edges and by a horizontal line through each vertex, and the nodes of the
// graph that finds the trapezoid of a point.
//
// What holds between two insertions:
//  - Every live trapezoid is named by exactly one sink, its `sink`.
//  - Neighbour links are mutual. A single upper neighbour is in up0, a single lower
//    one in down0; of two, slot 0 is the left one.
//  - A node's children are made after it or were leaves when they became its
//    children, so the graph has no cycle.
//  - A trapezoid that was given back has no sink until it is taken again.
#pragma once

#include "triangulation/predicates.h"

namespace VORNEX {

struct Trapezoid;

enum QueryKind : std::uint32_t { QNODE_Y = 0, QNODE_X = 1, QNODE_SINK = 2 };

// A node holds the points that it tests itself: a search reads one record per step.
struct QueryNode {
  QueryKind kind;
  union {
    GridPoint point;       ///< QNODE_Y: the height that the node tests
    Segment edge;          ///< QNODE_X
    Trapezoid* trapezoid;  ///< QNODE_SINK
  };
  QueryNode* hiChild;  ///< above the point, or right of the edge
  QueryNode* loChild;  ///< below, or left
  QueryNode* parent;   ///< whose child this node was made; null for the root
};

struct Trapezoid {
  VertexNode* leftEdge;   ///< null where unbounded
  VertexNode* rightEdge;  ///< null where unbounded
  GridPoint hi;           ///< on its upper side
  GridPoint lo;           ///< on its lower side
  Trapezoid* up0;
  Trapezoid* up1;
  Trapezoid* down0;
  Trapezoid* down1;
  QueryNode* sink;
  bool visited;  ///< set by the monotone decomposition
};

/// The sink in which a point lies, seen in the direction of the other end of its edge:
/// p itself may be the point of a node, or an end of a node's edge.
[[nodiscard]] QueryNode* LocateSink(GridPoint p, GridPoint other, QueryNode* node) noexcept;

/// Its trapezoid.
[[nodiscard]] inline Trapezoid* Locate(GridPoint p, GridPoint other, QueryNode* node) noexcept {
  return LocateSink(p, other, node)->trapezoid;
}

/// Searches that move their roots down to the current sinks, many at a time: each
/// step of a single search waits for memory, and these waits overlap.
class SearchBatch {
 public:
  static constexpr std::uint32_t kCapacity = 32;

  [[nodiscard]] bool Full() const noexcept { return count_ == kCapacity; }
  void Add(GridPoint p, GridPoint other, QueryNode** root) noexcept;
  void Run() noexcept;

 private:
  struct Search {
    GridPoint p;
    GridPoint other;
    QueryNode* node;
    QueryNode** root;
  };
  std::uint32_t count_ = 0;
  Search searches_[kCapacity];
};

}  // namespace VORNEX
