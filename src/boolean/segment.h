// Segments: one per edge of both operands, and the table that holds them.
#pragma once

#include <cstdint>
#include <vector>

#include "polygon/records.h"

namespace zelvan {

struct Segment {
  VertexNode* lower;  ///< the end that comes first in (x, then y) order
  VertexNode* upper;
  GridPoint low;         ///< where `lower` is, next to all else that a search reads
  GridPoint high;        ///< where `upper` is
  Segment* above;        ///< next segment upward in the status list
  Segment* below;        ///< next segment downward
  std::uint32_t node;    ///< number in the list while active
  std::uint32_t before;  ///< number in the table of the contour's segment before this one
  std::uint8_t forward;  ///< 1 when the contour runs from lower to upper
};

using SegmentTable = std::vector<Segment>;

/// Appends one segment per edge of a ring in grid form: areas in ring order,
/// contours in list order, edges from each contour's head. Throws std::bad_alloc.
void FillSegments(SegmentTable& table, const Area* ring);
void FillSegments(SegmentTable& table, const Contour* contour);

/// Where a new segment s goes in the status list: true when it lies above the
/// listed segment t, decided at s's lower end and, on t's line, by the slope. A
/// segment that runs along t lies below it.
[[nodiscard]] bool IsAbove(const Segment* s, const Segment* t) noexcept;

}  // namespace zelvan
