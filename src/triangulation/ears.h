// Cutting a polygon of few vertices ear by ear, without any preparation.
//
// Holes are joined to the outer ring first, each from its least point to a vertex that lies before
// it and sees it (Held 2001): so all of the polygon is inside one ring, which passes each of these
// bridges to and fro, and both of its ends twice.
//
// An ear is a vertex with a convex corner whose triangle holds no other place of the ring, on its
// border neither. (Its third side is none of the ring already: the triangle would be all that hangs
// together there.) What such a ring bounds has a triangulation in which no vertex lies inside an
// edge; where three vertices or more are on a line, too. Its triangles hang together as a tree, the
// leaves of which are ears; so there is one as long as there are four vertices (Meisters 1975).
#pragma once

#include <cstdint>

#include "polygon/flat_region.h"

namespace VORNEX {

/// More vertices than this, two for each hole included, go to the sweep, which needs less than
/// their square.
inline constexpr std::uint32_t kMostForEars = 48;

/// Cuts a polygon whose rings do not touch into n + 2h - 2 triangles; n + 2h is 3 to kMostForEars.
/// @param corners  receives three numbers of points a triangle, counter-clockwise
/// @param twins    receives the sides across (flips.h); may be null
/// @return false for what is no polygon
[[nodiscard]] bool CutEars(const zelvan::FlatRegion& region, std::size_t polygon,
                           std::uint32_t* corners, std::uint32_t* twins) noexcept;

}  // namespace VORNEX
