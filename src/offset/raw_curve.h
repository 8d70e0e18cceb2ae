// The raw curve: one closed curve for each ring or line, which winds around exactly those places
// that the offset adds.
//
// Along a ring it runs on the copy of each edge at the distance, and from one to the next
//  - around the corner, where the arms of the two edges turn to the left: by an arc, a tip or a
//    straight cut;
//  - through the corner itself, where they do not.
//
// So the curve bounds the sum of the region, of a parallelogram for each edge and a sector for
// each corner that is gone around: their common sides cancel. None of these terms winds
// negatively: arms of a parallelogram are equal, and those of a sector go round to the left. So
// by the positive rule the curve bounds their union, however it crosses itself. Rings of the
// complement, which run the other way, sum to one less than the terms do: what is left of the
// region lies where the winding number is negative.
//
// Whether a corner is gone around is told by the rounded arms: where those of a nearly straight
// corner have changed their order, the parallelograms overlap, as at any other corner that the
// curve goes through.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "offset/circle.h"
#include "offset/ring_sides.h"
#include "offset/side.h"
#include "offset/trimming.h"
#include "polygon/grid.h"

namespace zelvan::offset {

enum class Join : std::uint8_t { kRound, kMiter, kBevel };

/// How a curve goes around corners.
struct Style {
  Join join;
  double miterLimit;  ///< of the tip's distance from the corner, in distances
};

/// Curves at one distance, in steps. Points are doubles without fractions, which may lie off the
/// grid; Points() has those of all that was added since Clear(). All throw std::bad_alloc.
class RawCurve {
 public:
  /// @param error  how far arcs may be off (circle.h)
  RawCurve(double distance, double error, const Style& style)
      : style_(style), circle_(distance, error) {}

  [[nodiscard]] double Distance() const noexcept { return circle_.Radius(); }
  void Clear() noexcept { points_.clear(); }
  [[nodiscard]] std::span<const WorldPoint> Points() const noexcept { return points_; }

  /// The curve on the right of a closed ring of at least 2 points, no two neighbours the same.
  /// Loops that change nothing are left out where they are found (trimming.h).
  void AddRing(std::span<const GridPoint> ring);

  [[nodiscard]] Side SideOf(GridPoint p, GridPoint q) const noexcept {
    return RightSideOf(p, q, circle_.Radius());
  }

  /// From the end of one edge's copy to the start of the next one's, both included.
  /// @param turnsLeft  does the second edge leave the first one to the left? asked where the
  ///                   edges turn by more than 90 degrees
  void AddCorner(GridPoint corner, const Side& from, const Side& to, bool turnsLeft);

  /// The half circle from an edge's end to the start of its way back, both included.
  void AddRoundEnd(GridPoint end, const Side& side);

  /// A point of the curve at an arm's end.
  void Add(GridPoint corner, Arm arm) {
    points_.push_back(
        {static_cast<double>(corner.gx) + arm.gx, static_cast<double>(corner.gy) + arm.gy});
  }

 private:
  void AddAround(Site site, const WorldPoint* begin, const WorldPoint* end);
  void AddJoin(GridPoint corner, const Side& from, const Side& to);
  void AddThrough(GridPoint corner, const Side& from, const Side& to);
  void AddArc(GridPoint corner, const Side& from, const Side& to);
  [[nodiscard]] static Side SideTowards(GridPoint corner, WorldPoint place) noexcept;
  [[nodiscard]] bool AddTip(GridPoint corner, const Side& from, const Side& to);

  Style style_;
  Circle circle_;
  RingSides sides_;
  Trimming trimming_;
  std::vector<WorldPoint> points_;
};

}  // namespace zelvan::offset
