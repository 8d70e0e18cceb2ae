// Cutting a ring of few vertices ear by ear, without any preparation.
#pragma once

#include <cstdint>
#include <span>

#include "polygon/grid.h"

namespace VORNEX {

/// More vertices than this go to the sweep, which needs less than their square.
inline constexpr std::uint32_t kMostForEars = 32;

/// Cuts a simple ring, counter-clockwise, of 3 to kMostForEars vertices into two triangles less.
/// @param first    number of the first vertex
/// @param corners  receives three numbers a triangle, counter-clockwise
/// @param twins    receives the sides across (flips.h); may be null
/// @return false where the ring is not simple
[[nodiscard]] bool CutEars(std::span<const zelvan::GridPoint> ring, std::uint32_t first,
                           std::uint32_t* corners, std::uint32_t* twins) noexcept;

}  // namespace VORNEX
