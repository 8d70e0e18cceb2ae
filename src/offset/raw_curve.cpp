// Corners of raw curves (raw_curve.h).
#include "offset/raw_curve.h"

namespace zelvan::offset {

void RawCurve::AddRing(std::span<const GridPoint> ring) {
  GridPoint before = ring[ring.size() - 2];
  GridPoint corner = ring.back();
  Side from = SideOf(before, corner);
  for (const GridPoint after : ring) {
    const Side to = SideOf(corner, after);
    AddCorner(corner, from, to, zelvan::Cross(before, corner, after) > 0);
    before = corner;
    corner = after;
    from = to;
  }
}

void RawCurve::AddCorner(GridPoint corner, const Side& from, const Side& to, bool turnsLeft) {
  const bool isGoneAround = Dot(from.arm, to.arm) > 0 ? Cross(from.arm, to.arm) > 0 : turnsLeft;
  if (isGoneAround && style_.join == Join::kMiter && AddTip(corner, from, to)) return;
  Add(corner, from.arm);
  if (!isGoneAround) {
    if (from.arm != to.arm) Add(corner, {0, 0});
  } else if (style_.join == Join::kRound) {
    AddArc(corner, from, to);
  }
  Add(corner, to.arm);
}

void RawCurve::AddRoundEnd(GridPoint end, const Side& side) {
  Add(end, side.arm);
  AddArc(end, side, Opposite(side));
  Add(end, Opposite(side).arm);
}

void RawCurve::AddArc(GridPoint corner, const Side& from, const Side& to) {
  circle_.ForEachBetween(from, to, [&](Arm arm) { Add(corner, arm); });
}

// Where the copies of both edges meet. A tip that rounding could bring before an arm's end is
// none.
bool RawCurve::AddTip(GridPoint corner, const Side& from, const Side& to) {
  const Direction sum{from.normal.x + to.normal.x, from.normal.y + to.normal.y};
  const double square = Dot(sum, sum);
  const double limit = style_.miterLimit;
  if (square * limit * limit < 4.0) return false;
  const double toTip = 2.0 * circle_.Radius() / square;
  const WorldPoint tip{Whole(sum.x * toTip), Whole(sum.y * toTip)};
  const double ahead =
      (tip.x - from.arm.gx) * -from.normal.y + (tip.y - from.arm.gy) * from.normal.x;
  if (ahead < 2.0) return false;
  points_.push_back({corner.gx + tip.x, corner.gy + tip.y});
  return true;
}

}  // namespace zelvan::offset
