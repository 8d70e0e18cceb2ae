// Making, growing, reversing and freeing vertex rings, in both coordinate forms.
//
// The vertices of a contour are either made one by one or stand in its block, in ring order
// when that is made, and go with it. Those that are lent to a ring of either kind
// (VERTEX_LENT) go with their owner.
//
// The world form is used while an input contour is built; the grid form by the
// Boolean engine. A vertex or contour that cannot be allocated leaves nothing
// half-built behind.
#pragma once

#include <cstdint>
#include <memory>

#include "polygon/records.h"

namespace zelvan {

// World form. Failure is std::bad_alloc, but for NewVertex, which gives null.

/// A vertex linked to itself, or null when it cannot be allocated.
[[nodiscard]] VertexNode* NewVertex(double x, double y) noexcept;

/// A contour of one vertex whose box is the point; `count` is 0, for
/// AppendVertex to raise.
[[nodiscard]] Contour* NewContour(double x, double y);

/// Links a new vertex at the end of the ring, in front of `head`, and grows the
/// box; a null contour is created first. On failure the contour is freed, the
/// reference is null, and std::bad_alloc is thrown.
void AppendVertex(Contour*& contour, double x, double y);

// Grid form. Failure is ERR::Raise(ERR::NOMEM); the contour stays as it was.

[[nodiscard]] VertexNode* NewVertex(GridPoint point);
[[nodiscard]] Contour* NewContour(GridPoint point);  ///< `count` is 1, flags 0
void AppendVertex(Contour*& contour, GridPoint point);

// Both forms.

/// A contour of n > 0 vertices in one block, linked to a ring and zero-filled, as are flags
/// and box. Null when it cannot be allocated.
[[nodiscard]] Contour* NewContourInBlock(std::uint32_t n) noexcept;

/// Links `vertex` into a ring just before `place`.
void LinkBefore(VertexNode* place, VertexNode* vertex) noexcept;

/// Takes a vertex of either kind out of a contour. It may not be the head.
void RemoveVertex(Contour* contour, VertexNode* vertex) noexcept;

/// Frees every vertex and the contour, and sets the reference to null.
void FreeContour(Contour*& contour) noexcept;

/// Turns the ring round and toggles CONTOUR_CCW; `head` stays the head.
void ReverseContour(Contour* contour) noexcept;

/// Twice the signed area of a ring in grid form, positive when it runs
/// counter-clockwise. Exact: up to 2^42 for every ring that does not wind more
/// than once round a point, and summed in 64 bits for every other.
[[nodiscard]] std::int64_t TwiceArea(const VertexNode* head) noexcept;

/// A contour that is freed unless it is handed on.
struct ContourDeleter {
  void operator()(Contour* contour) const noexcept { FreeContour(contour); }
};
using OwnedContour = std::unique_ptr<Contour, ContourDeleter>;

}  // namespace zelvan
