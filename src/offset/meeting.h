// Where the curves of two sites of one ring meet.
#pragma once

#include <optional>

#include "offset/ring_sides.h"

namespace zelvan::offset {

/// The place at the distance from both sites, the first of which comes earlier along the ring,
/// at which the curve leaves the first one's part for the second one's. It lies on the lines and
/// circles of both, not always on their parts of these.
[[nodiscard]] std::optional<WorldPoint> MeetingOf(const RingSides& sides, double distance,
                                                  Site first, Site second) noexcept;

}  // namespace zelvan::offset
