// Making and reversing vertex rings.
//
// The vertices of a contour stand in its block. The Boolean engine puts others into a ring;
// they go with the records of the engine (boolean/cross_entry.h).
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "polygon/records.h"

namespace zelvan {

using OwnedContour = std::unique_ptr<Contour>;

/// A contour of n > 0 vertices, linked to a ring and zero-filled, as are its flags and its box.
/// Throws std::bad_alloc.
[[nodiscard]] OwnedContour NewContour(std::uint32_t n);

/// A contour in grid form through one or more points, with its box; flags 0. Throws
/// std::bad_alloc.
[[nodiscard]] OwnedContour NewContour(std::span<const GridPoint> points);

/// Sets the box of a contour in grid form to that of its vertices.
void FitBox(Contour* contour) noexcept;

/// Links `vertex` into a ring just before `place`.
void LinkBefore(VertexNode* place, VertexNode* vertex) noexcept;

/// Takes a vertex out of a contour. It may not be the head.
void RemoveVertex(Contour* contour, VertexNode* vertex) noexcept;

/// Turns the ring round and toggles CONTOUR_CCW; `head` stays the head.
void ReverseContour(Contour* contour) noexcept;

/// Twice the signed area of a ring in grid form, positive when it runs
/// counter-clockwise. Exact: up to 2^42 for every ring that does not wind more
/// than once round a point, and summed in 64 bits for every other.
[[nodiscard]] std::int64_t TwiceArea(const VertexNode* head) noexcept;

}  // namespace zelvan
