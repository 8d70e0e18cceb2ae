// The moves between the grids of two shapes and of their result.
#pragma once

#include "polygon/area.h"
#include "polygon/records.h"

namespace zelvan {

[[nodiscard]] bool IsSame(const WorldBox& a, const WorldBox& b) noexcept;

/// The box of a ring in grid form, in world coordinates; the ring must not be null.
[[nodiscard]] WorldBox WorldBoxOf(const Area* ring, const WorldBox& gridBox) noexcept;

/// A copy of a ring from the grid of one box on that of another, without areas
/// and holes that collapse. Raises ERR::NOMEM.
[[nodiscard]] Area* CopyOnGrid(const Area* ring, const WorldBox& from, const WorldBox& to);

/// Moves a region from the grid of `box` to the grid of its own box, if that grid
/// can hold it, and leaves it alone if not. A null ring stays.
/// @return the box of the grid that it is on now. Raises ERR::NOMEM, throws
///         std::bad_alloc; the ring is then still whole.
[[nodiscard]] WorldBox MoveToOwnGrid(Area* ring, const WorldBox& box);

}  // namespace zelvan
