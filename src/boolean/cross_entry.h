// CrossEntry: one edge end at a hot pixel.
//
// After the sweep every vertex that something else meets owns two entries, one for
// the edge toward its previous and one for the edge toward its next vertex, and the
// entries of all vertices at one grid point form a ring. The crossing analysis
// sorts each ring counter-clockwise and takes the entries from vertices that
// meet nothing.
#pragma once

#include <cstdint>

#include "boolean/labels.h"
#include "memory/arena.h"
#include "polygon/records.h"

namespace zelvan {

inline constexpr std::uint32_t TOWARD_PREV = 1;  ///< for the edge from prev into the vertex
inline constexpr std::uint32_t SORTED = 2;       ///< the pixel has been analysed
inline constexpr std::uint32_t ENTRY_FIRST = 4;  ///< the vertex belongs to operand A
inline constexpr std::uint32_t FLOODED = 8;      ///< the pixel's edges are labelled

inline constexpr std::uint32_t HAS_COPIES = 16;  ///< equal edges leave the pixel

inline constexpr std::uint32_t QUADRANT_SHIFT = 5;  ///< above it the quadrant of (dx, dy)

struct CrossEntry {
  CrossEntry* next;  ///< counter-clockwise once sorted
  CrossEntry* prev;
  VertexNode* vertex;  ///< the vertex at the pixel that owns this edge end
  std::int32_t dx;     ///< from the pixel to the far end of the edge
  std::int32_t dy;
  std::uint32_t flags;
  VertexNode* partner;  ///< of a shared edge, the first vertex of the other operand's copy
};

using EntryPool = Arena<CrossEntry>;

/// What the sweep makes: entries, and the vertices that it puts into the operands' rings.
/// Must outlive the rings, which hold on to the vertices until they are freed.
struct SweepRecords {
  EntryPool entries;
  Arena<VertexNode> vertices;
};

[[nodiscard]] inline bool IsTowardPrev(const CrossEntry* e) noexcept {
  return (e->flags & TOWARD_PREV) != 0;
}

/// The vertex that holds the label of the entry's edge.
[[nodiscard]] inline VertexNode* HolderOf(const CrossEntry* e) noexcept {
  return IsTowardPrev(e) ? e->vertex->prev : e->vertex;
}

[[nodiscard]] inline VertexNode* FarEndOf(const CrossEntry* e) noexcept {
  return IsTowardPrev(e) ? e->vertex->prev : e->vertex->next;
}

[[nodiscard]] inline OperandSet OperandOf(const CrossEntry* e) noexcept {
  return (e->flags & ENTRY_FIRST) != 0 ? OPERAND_A : OPERAND_B;
}

/// Do two entries of one pixel stand for the same grid edge?
[[nodiscard]] inline bool SameEdge(const CrossEntry* a, const CrossEntry* b) noexcept {
  return a->dx == b->dx && a->dy == b->dy;
}

}  // namespace zelvan
