// Operation codes, and the bits that the engine keeps in vertices and contours
// while it runs.
//
// The low byte of a vertex's flags describes the edge from the vertex to its next
// vertex: label in bits 0-2, VISITED, the operand, TURNED. The low byte of a
// contour's flags holds its label in bits 0 and 1. Both live on the engine's
// private copies and die with them.
#pragma once

#include <cstdint>

#include "polygon/records.h"

namespace zelvan {

enum BoolOp : std::int32_t {
  UNION = 0,      ///< points in A or in B
  INTERSECT = 1,  ///< points in A and in B
  SUBTRACT = 2,   ///< points in A and not in B
  XOR = 3         ///< points in exactly one of A and B
};

enum EdgeLabel : std::uint32_t {
  LABEL_INSIDE = 0,           ///< inside the other operand
  LABEL_OUTSIDE = 1,          ///< outside the other operand
  LABEL_SHARED = 2,           ///< on an edge of the other operand, interiors on one side
  LABEL_SHARED_REVERSED = 3,  ///< on an edge of the other operand, interiors on opposite sides
  LABEL_DROPPED = 4,          ///< bounds nothing, or an equal edge stands for it
  LABEL_UNKNOWN = 5           ///< not labelled yet
};

enum ContourLabel : std::uint32_t {
  CONTOUR_OUTSIDE = 0,     ///< touches nothing and lies outside the other operand
  CONTOUR_INSIDE = 1,      ///< touches nothing and lies inside the other operand
  CONTOUR_UNLABELLED = 2,  ///< when an operation starts; stays where it bounds nothing
  CONTOUR_CROSSED = 3      ///< meets another contour or itself; labelled edge by edge
};

inline constexpr std::uint32_t EDGE_LABEL_MASK = 7;
inline constexpr std::uint32_t VISITED = 8;      ///< the edge is used up
inline constexpr std::uint32_t FROM_FIRST = 16;  ///< the vertex belongs to operand A
inline constexpr std::uint32_t TURNED = 32;      ///< its operand lies to the right of the edge
inline constexpr std::uint32_t CONTOUR_LABEL_MASK = 3;
inline constexpr std::uint32_t ENGINE_BITS = 0xFF;

/// A set of operands: where a point lies, or which operands an edge bounds.
using OperandSet = std::uint32_t;
inline constexpr OperandSet OPERAND_A = 1;
inline constexpr OperandSet OPERAND_B = 2;

[[nodiscard]] inline OperandSet OperandOf(const VertexNode* v) noexcept {
  return (v->flags & FROM_FIRST) != 0 ? OPERAND_A : OPERAND_B;
}

[[nodiscard]] inline EdgeLabel LabelOf(const VertexNode* v) noexcept {
  return static_cast<EdgeLabel>(v->flags & EDGE_LABEL_MASK);
}

inline void SetLabel(VertexNode* v, EdgeLabel label) noexcept {
  v->flags = (v->flags & ~EDGE_LABEL_MASK) | label;
}

[[nodiscard]] inline ContourLabel LabelOf(const Contour* c) noexcept {
  return static_cast<ContourLabel>(c->flags & CONTOUR_LABEL_MASK);
}

inline void SetLabel(Contour* c, ContourLabel label) noexcept {
  c->flags = (c->flags & ~CONTOUR_LABEL_MASK) | label;
}

}  // namespace zelvan
