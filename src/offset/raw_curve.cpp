// Corners of raw curves (raw_curve.h).
#include "offset/raw_curve.h"

namespace zelvan::offset {

void RawCurve::AddRing(std::span<const GridPoint> ring) {
  sides_.Build(ring, circle_.Radius());
  if (sides_.IsAllAround()) {
    for (Site edge = 0; edge < 2 * sides_.Edges(); edge += 2) AddAround(edge + 1, nullptr, nullptr);
    return;
  }
  const bool isRound = style_.join == Join::kRound;
  trimming_.Run(sides_, circle_.Radius(),
                isRound ? Trimming::Scope::kAll : Trimming::Scope::kNeighbours);
  Site site = trimming_.First();
  const WorldPoint* meeting = trimming_.MeetingBefore(site);
  do {
    const Site next = trimming_.Next(site);
    const WorldPoint* const nextMeeting = trimming_.MeetingAfter(site);
    if (meeting != nullptr) points_.push_back(*meeting);
    if (!RingSides::IsEdge(site)) {
      AddAround(site, meeting, nextMeeting);
    } else if (nextMeeting == nullptr && RingSides::IsEdge(next)) {
      AddThrough(sides_.EndOf(site), sides_.To(site), sides_.From(next));
    }
    site = next;
    meeting = nextMeeting;
  } while (site != trimming_.First());
}

void RawCurve::AddAround(Site site, const WorldPoint* begin, const WorldPoint* end) {
  const GridPoint corner = sides_.EndOf(site);
  const Side from = begin != nullptr ? SideTowards(corner, *begin) : sides_.From(site);
  const Side to = end != nullptr ? SideTowards(corner, *end) : sides_.To(site);
  if (begin == nullptr && end == nullptr) return AddJoin(corner, from, to);
  if (begin == nullptr) Add(corner, from.arm);
  AddArc(corner, from, to);
  if (end == nullptr) Add(corner, to.arm);
}

void RawCurve::AddCorner(GridPoint corner, const Side& from, const Side& to, bool turnsLeft) {
  if (GoesAround(from, to, turnsLeft)) {
    AddJoin(corner, from, to);
  } else {
    AddThrough(corner, from, to);
  }
}

void RawCurve::AddJoin(GridPoint corner, const Side& from, const Side& to) {
  if (style_.join == Join::kMiter && AddTip(corner, from, to)) return;
  Add(corner, from.arm);
  if (style_.join == Join::kRound) AddArc(corner, from, to);
  Add(corner, to.arm);
}

void RawCurve::AddThrough(GridPoint corner, const Side& from, const Side& to) {
  Add(corner, from.arm);
  if (from.arm == to.arm) return;
  Add(corner, {0, 0});
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

Side RawCurve::SideTowards(GridPoint corner, WorldPoint place) noexcept {
  const double dx = place.x - corner.gx;
  const double dy = place.y - corner.gy;
  const double length = std::sqrt(dx * dx + dy * dy);
  return {{dx / length, dy / length},
          {static_cast<std::int32_t>(dx), static_cast<std::int32_t>(dy)}};
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
