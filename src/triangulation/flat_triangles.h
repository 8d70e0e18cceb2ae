// Triangles over numbered vertices, with their neighbours.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "polygon/records.h"

namespace VORNEX {

struct FlatTriangles {
  std::vector<std::array<std::uint32_t, 3>> corners;    ///< counter-clockwise
  std::vector<std::array<std::int32_t, 3>> neighbours;  ///< k: across corners k and k + 1
};

/// Cuts one area in grid form.
[[nodiscard]] FlatTriangles CutArea(zelvan::Area& area);

}  // namespace VORNEX
