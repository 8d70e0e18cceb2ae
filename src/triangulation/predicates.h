// The exact decisions of the triangulation engine: the order of points, and on
// which side of an edge a point lies.
//
// What holds here:
//  - Points are ordered by y, then by x, so no two different points share a
//    height, and a horizontal edge has its right end as upper endpoint.
//  - Edge v runs from vertex v to v->next and is named by v. The area lies to the
//    left of its direction. "Left" without a direction means smaller x.
//  - A vertex inside another edge can only touch it from outside the area, since
//    otherwise no triangulation without new vertices exists. So a point exactly on
//    an edge counts as lying on the outer side, as if the edge bent around it.
//    Every stage decides it so; that makes a touch behave as a narrow gap.
#pragma once

#include <cstdint>

#include "polygon/records.h"

namespace VORNEX {

using zelvan::GridPoint;
using zelvan::VertexNode;

/// The sides of an interval, a trapezoid or an edge, at smaller and at larger x.
enum Side : std::uint32_t { kLeft = 0, kRight = 1 };

[[nodiscard]] constexpr Side OtherSide(Side side) noexcept {
  return side == kLeft ? kRight : kLeft;
}

/// The bound points that stand for plus and minus infinity. A vertex may lie there.
inline constexpr GridPoint TOP{zelvan::GRID_MAX - zelvan::GRID_OFFSET,
                               zelvan::GRID_MAX - zelvan::GRID_OFFSET};
inline constexpr GridPoint BOTTOM{-zelvan::GRID_OFFSET, -zelvan::GRID_OFFSET};

/// p is above q: higher, or as high and further right.
[[nodiscard]] constexpr bool GreaterThan(GridPoint p, GridPoint q) noexcept {
  return p.gy > q.gy || (p.gy == q.gy && p.gx > q.gx);
}

/// The ends of an edge in its direction.
struct Segment {
  GridPoint start;
  GridPoint end;
};

[[nodiscard]] inline Segment SegmentOf(const VertexNode* e) noexcept {
  return {e->grid, e->next->grid};
}

/// Does an edge end above its start? The area then lies at smaller x.
[[nodiscard]] constexpr bool RunsUpward(Segment e) noexcept {
  return GreaterThan(e.end, e.start);
}

/// Is `p` one of the ends of `e`, by place?
[[nodiscard]] constexpr bool IsEndpoint(GridPoint p, Segment e) noexcept {
  return p == e.start || p == e.end;
}

/// Does `p` lie left of the upward direction of `e`? A point on the line does not;
/// at the height of an end, the end's x decides.
[[nodiscard]] constexpr bool IsLeftOf(GridPoint p, Segment e) noexcept {
  if (p.gy == e.end.gy) return p.gx < e.end.gx;
  if (p.gy == e.start.gy) return p.gx < e.start.gx;
  const std::int64_t side = zelvan::Cross(e.start, e.end, p);
  return RunsUpward(e) ? side > 0 : side < 0;
}

/// As IsLeftOf for a point that lies between the ends of `e` in the order of points
/// and is none of them, but with the outer side for a point on the edge.
[[nodiscard]] constexpr bool LiesLeftOfEdge(GridPoint p, Segment e) noexcept {
  const std::int64_t side = zelvan::Cross(e.start, e.end, p);
  return RunsUpward(e) ? side > 0 : side <= 0;
}

}  // namespace VORNEX
