// Which labelled edges and contours an operation takes, and in which direction.
#pragma once

#include <cstdint>
#include <optional>

#include "boolean/labels.h"

namespace zelvan {

enum class Direction {
  FORWARD,  ///< from an edge's first vertex to its next one
  BACKWARD
};

/// The direction in which `op` takes the edge that v holds; none when it does not.
[[nodiscard]] std::optional<Direction> StartRule(BoolOp op, const VertexNode* v) noexcept;

/// Likewise for a contour that meets nothing, BACKWARD for the opposite direction.
[[nodiscard]] std::optional<Direction> ContourRule(BoolOp op, const Contour* contour) noexcept;

}  // namespace zelvan
