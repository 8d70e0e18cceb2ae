// Arcs around grid points, as chains of chords.
//
// One table of arms leads all around the circle, so an arc is a run of the table between its two
// ends, and arcs around one point share their chords. The ends of an arc lie at the radius r,
// points of the table at r + e, where e is the error: chords come as near as r - e.
//
//   chord                      spans at most          where
//   from end to end            2 a                    cos a = (r - e) / r
//   from end to table          a + b                  cos b = (r - e) / (r + e)
//   within the table           a + b < 2 b
//   from end to one point      a + b
//
// Angles are taken from below, by acos(1 - z) >= sqrt(2 z). The table has the points
// ((1 - t t) / (1 + t t), 2 t / (1 + t t)) of an octant at equal steps of t, mirrored into the
// other seven; that the angle is at most twice its t bounds the span.
//
// Arms are rounded, by 0.71 steps at most, and go strictly round: the triangles between an
// arc's point, and two arms that follow each other never turn over.
#pragma once

#include <cstdint>
#include <vector>

#include "offset/side.h"
#include "polygon/grid.h"

namespace zelvan::offset {

class Circle {
 public:
  /// @param radius  in steps, at least 1/2, below 2^30
  /// @param error   at most 1/8 of the radius, and not below 2^-22 of it
  /// Throws std::bad_alloc.
  Circle(double radius, double error);

  [[nodiscard]] double Radius() const noexcept { return radius_; }

  /// Calls visit(arm) for the points of the arc that leads counter-clockwise from one side's arm
  /// to another's, both left out; it turns by at most 180 degrees, but for rounding.
  template <class Visit>
  void ForEachBetween(const Side& from, const Side& to, Visit visit) const;

 private:
  [[nodiscard]] double PositionOf(Direction d) const noexcept;
  [[nodiscard]] Direction At(std::size_t position) const noexcept;

  double radius_;
  double outer_;      // of the table's points
  double bareSum_;    // the least |u + v|^2 of two directions that need no point between them
  double singleSum_;  // the same for one point
  double perOctant_;
  std::vector<Arm> table_;
};

template <class Visit>
void Circle::ForEachBetween(const Side& from, const Side& to, Visit visit) const {
  const Direction sum{from.normal.x + to.normal.x, from.normal.y + to.normal.y};
  const double square = Dot(sum, sum);
  if (square >= bareSum_) return;
  if (square >= singleSum_) {
    const Arm arm = ArmAlong(sum, outer_ / std::sqrt(square));
    if (Cross(from.arm, arm) > 0 && Cross(arm, to.arm) > 0) visit(arm);
    return;
  }
  const auto size = static_cast<std::int32_t>(table_.size());  // below 2^16
  const auto first = static_cast<std::int32_t>(PositionOf(from.normal)) + 1;
  const auto end = static_cast<std::int32_t>(std::ceil(PositionOf(to.normal)));
  const std::int32_t count = (end - first + size) % size;
  if (count > size / 2 + 1) return;
  Arm last = from.arm;
  for (std::int32_t i = first; i < first + count; ++i) {
    const Arm arm = table_[static_cast<std::size_t>(i % size)];
    const bool reachesEnd = i + 2 >= first + count && Cross(arm, to.arm) <= 0;
    if (Cross(last, arm) <= 0 || reachesEnd) continue;
    visit(arm);
    last = arm;
  }
}

}  // namespace zelvan::offset
