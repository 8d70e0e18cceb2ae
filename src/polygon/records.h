// The records in which polygons are kept: Area, Contour, VertexNode; a Shape (shape.h) owns them.
//
// What holds between two calls of the flat interface:
//  - Vertex rings and area rings are circular and doubly linked; the contours of
//    an area form a null-terminated list, the outer boundary first.
//  - Outer contours run counter-clockwise with CONTOUR_CCW set, holes clockwise
//    with it clear; each hole lies inside its area's outer contour.
//  - Every contour has at least 3 vertices, `count` is their number, and no two
//    neighbours share a grid point.
//  - Every shape is in grid form against its own box.
// The form (world or grid) is not recorded: a whole shape is in one at a time.
#pragma once

#include <cstdint>
#include <memory>

#include "polygon/grid.h"

namespace VORNEX {
struct TriVertex;
}  // namespace VORNEX

namespace zelvan {

struct CrossEntry;

/// Set in a contour's flags while its ring runs counter-clockwise.
inline constexpr std::uint32_t CONTOUR_CCW = 0x100;

struct VertexNode {
  VertexNode* next;  ///< in the direction of the contour
  VertexNode* prev;
  std::uint32_t flags;  ///< low byte: the Boolean engine's
  union {               ///< one overlay, not two copies
    WorldPoint world;
    GridPoint grid;
  };
  // Each engine keeps its per-vertex record here while it runs; between calls
  // the fields carry no meaning.
  union {
    CrossEntry* crossPrev;         ///< Boolean engine: entry of the edge toward prev
    VORNEX::TriVertex* triVertex;  ///< triangulation engine
    std::int32_t number;           ///< mesh: the vertex's number while it is filled
  };
  CrossEntry* crossNext;  ///< Boolean engine: entry of the edge toward next
};

struct Contour {
  Contour* next;        ///< next contour of the same area, or null
  VertexNode* head;     ///< where every walk of the ring starts
  std::uint32_t count;  ///< vertices in the ring
  std::uint32_t flags;  ///< CONTOUR_CCW; low byte: the Boolean engine's
  union {
    WorldBox worldBox;
    GridBox gridBox;
  };
  std::unique_ptr<VertexNode[]> block;  ///< the vertices, in ring order when they were made
};

/// Three corners, in the order in which the triangulation engine emitted them.
struct Triangle {
  VertexNode* a;
  VertexNode* b;
  VertexNode* c;
};

struct Area {
  Area* next;
  Area* prev;
  Contour* contours;                      ///< the outer boundary, then the holes
  std::unique_ptr<Triangle[]> triangles;  ///< null until triangulated
  std::uint32_t triangleCount;

  ~Area();
};

struct Shape;  // shape.h

}  // namespace zelvan
