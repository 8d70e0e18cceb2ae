// The search for loops (trimming.h).
#include "offset/trimming.h"

#include <cmath>

#include "offset/meeting.h"
#include "polygon/nearest_double.h"

namespace zelvan::offset {

namespace {

// By so much the chain may come nearer to a meeting, or a site be farther, in steps: more than
// doubles lose.
constexpr double kSlack = 0.03;

// By so much less than the distance a part's end must be away to be within reach.
constexpr double kReachMargin = 1.0;

constexpr double kLeast = -0x1p30;
constexpr double kGreatest = 0x1p30 - 1.0;

WorldPoint EndOfArm(GridPoint p, Arm arm) noexcept {
  return {static_cast<double>(p.gx) + arm.gx, static_cast<double>(p.gy) + arm.gy};
}

bool IsOnGrid(WorldPoint p) noexcept {
  return p.x >= kLeast && p.x <= kGreatest && p.y >= kLeast && p.y <= kGreatest;
}

std::uint64_t Spanned(GridPoint a, GridPoint b) noexcept {
  return static_cast<std::uint64_t>(std::int64_t{a.gx} * b.gy - std::int64_t{a.gy} * b.gx);
}

}  // namespace

void Trimming::Run(const RingSides& sides, double distance, Scope scope) {
  sides_ = &sides;
  distance_ = distance;
  scope_ = scope;
  boxes_.Build(sides.Ring());
  Link();
  const auto edges = static_cast<std::uint32_t>(sides.Edges());
  TrimRange(0, edges);
  const std::uint32_t half = edges / 2;
  if (edges > 2) TrimBetween({half, edges, 0, half});
}

void Trimming::Link() {
  const auto edges = static_cast<std::uint32_t>(sides_->Edges());
  next_.resize(2 * std::size_t{edges});
  before_.resize(2 * std::size_t{edges});
  meetingAfter_.assign(2 * std::size_t{edges}, kNone);
  meetings_.clear();
  areas_.assign(1, 0);
  first_ = 0;
  Site last = sides_->IsGoneAround(edges - 1) ? 2 * edges - 1 : 2 * edges - 2;
  const auto link = [&](Site site) {
    next_[last] = site;
    before_[site] = last;
    last = site;
  };
  for (std::uint32_t i = 0; i < edges; ++i) {
    link(2 * i);
    if (sides_->IsGoneAround(i)) link(2 * i + 1);
    areas_.push_back(areas_.back() + Spanned(sides_->StartOf(2 * i), sides_->EndOf(2 * i)));
  }
}

// Returns how many corners the curve still goes through.
std::uint32_t Trimming::TrimRange(std::uint32_t begin, std::uint32_t end) {
  if (end - begin < 2) return 0;
  const std::uint32_t middle = begin + (end - begin) / 2;
  const std::uint32_t within = TrimRange(begin, middle) + TrimRange(middle, end);
  const bool isThrough = !sides_->IsGoneAround(middle - 1);
  if (within == 0 && !isThrough) return 0;
  return within + (isThrough ? 1U : 0U) - TrimBetween({begin, middle, middle, end});
}

// Returns how many corners the curve goes through no more.
std::uint32_t Trimming::TrimBetween(const Halves& halves) {
  const std::optional<Pair> pair = FindPair(halves);
  return pair && Join(*pair) ? pair->passed : 0;
}

std::optional<Trimming::Pair> Trimming::FindPair(const Halves& halves) const noexcept {
  const std::uint32_t lastEdge = halves.firstEnd - 1;
  Site before = 2 * lastEdge + (sides_->IsGoneAround(lastEdge) ? 1U : 0U);
  Site after = next_[before];
  std::uint32_t passed = IsThrough(before, after) ? 1U : 0U;
  if (scope_ == Scope::kNeighbours) {
    return passed != 0 ? std::optional(Pair{before, after, passed}) : std::nullopt;
  }
  const double reach = distance_ - kReachMargin;
  while (boxes_.ComesNear(halves.secondBegin, halves.secondEnd, BeginOf(before), reach)) {
    const Site site = before_[before];
    if (site / 2 < halves.firstBegin || site > before) return std::nullopt;
    passed += IsThrough(site, before) ? 1U : 0U;
    before = site;
  }
  while (boxes_.ComesNear(halves.firstBegin, halves.firstEnd, EndOf(after), reach)) {
    const Site site = next_[after];
    if (site / 2 >= halves.secondEnd || site < after) return std::nullopt;
    passed += IsThrough(after, site) ? 1U : 0U;
    after = site;
  }
  return passed != 0 ? std::optional(Pair{before, after, passed}) : std::nullopt;
}

bool Trimming::Join(const Pair& pair) {
  const auto exact = MeetingOf(*sides_, distance_, pair.before, pair.after);
  if (!exact) return false;
  const WorldPoint m{Whole(exact->x), Whole(exact->y)};
  if (!IsOnGrid(m) || !IsWithin(pair.before, BeginOf(pair.before), m, OwnEnd(pair.before)) ||
      !IsWithin(pair.after, OwnBegin(pair.after), m, EndOf(pair.after)) ||
      !KeepsAway(pair.before, pair.after, *exact) || !RunsRight(pair.before, pair.after, m)) {
    return false;
  }
  if (pair.before > pair.after) first_ = pair.after;
  next_[pair.before] = pair.after;
  before_[pair.after] = pair.before;
  meetingAfter_[pair.before] = static_cast<std::uint32_t>(meetings_.size());
  meetings_.push_back(m);
  return true;
}

WorldPoint Trimming::OwnBegin(Site site) const noexcept {
  const GridPoint p = RingSides::IsEdge(site) ? sides_->StartOf(site) : sides_->EndOf(site);
  return EndOfArm(p, sides_->From(site).arm);
}

WorldPoint Trimming::OwnEnd(Site site) const noexcept {
  return EndOfArm(sides_->EndOf(site), sides_->To(site).arm);
}

WorldPoint Trimming::BeginOf(Site site) const noexcept {
  const WorldPoint* const meeting = MeetingBefore(site);
  return meeting != nullptr ? *meeting : OwnBegin(site);
}

WorldPoint Trimming::EndOf(Site site) const noexcept {
  const WorldPoint* const meeting = MeetingAfter(site);
  return meeting != nullptr ? *meeting : OwnEnd(site);
}

bool Trimming::IsWithin(Site site, WorldPoint from, WorldPoint m, WorldPoint to) const noexcept {
  return IsAhead(site, from, m) && IsAhead(site, m, to);
}

bool Trimming::IsAhead(Site site, WorldPoint from, WorldPoint to) const noexcept {
  if (RingSides::IsEdge(site)) {
    const Direction normal = sides_->From(site).normal;
    return (to.y - from.y) * normal.x - (to.x - from.x) * normal.y > 0.0;
  }
  const GridPoint p = sides_->EndOf(site);
  return (from.x - p.gx) * (to.y - p.gy) - (from.y - p.gy) * (to.x - p.gx) > 0.0;
}

// Is the chain as far from the meeting as the two sites are?
bool Trimming::KeepsAway(Site before, Site after, WorldPoint m) const noexcept {
  for (const Site site : {before, after}) {
    if (!RingSides::IsEdge(site)) continue;
    const Direction normal = sides_->From(site).normal;
    const GridPoint p = sides_->StartOf(site);
    const double height = (m.x - p.gx) * normal.x + (m.y - p.gy) * normal.y;
    if (std::fabs(height - distance_) > kSlack) return false;
  }
  const double radius = distance_ - kSlack;
  const std::size_t first = (before + 1) / 2;
  const std::size_t end = after / 2 + 1;
  if (before < after) return !boxes_.ComesNear(first, end, m, radius);
  return !boxes_.ComesNear(first, sides_->Edges(), m, radius) &&
         !boxes_.ComesNear(0, end, m, radius);
}

// Does the polygon of the chain and m run clockwise? Its area is a sum of that which the chain's
// points span with m, exact modulo 2^64, and of the triangles at parts of edges.
bool Trimming::RunsRight(Site before, Site after, WorldPoint m) const noexcept {
  const GridPoint centre{static_cast<std::int32_t>(m.x), static_cast<std::int32_t>(m.y)};
  const GridPoint first = sides_->EndOf(before);
  const GridPoint last = RingSides::IsEdge(after) ? sides_->StartOf(after) : sides_->EndOf(after);
  const std::size_t from = before / 2 + 1;
  const std::size_t to = (after + 1) / 2;
  std::uint64_t twice = areas_[to] - areas_[from];
  if (before > after) twice += areas_.back();
  twice += Spanned(centre, first) + Spanned(last, centre);
  double area = NearestDouble(static_cast<std::int64_t>(twice));
  for (const auto& [site, p] : {std::pair(before, first), std::pair(after, last)}) {
    if (!RingSides::IsEdge(site)) continue;
    const Direction normal = sides_->From(site).normal;
    const double along = (m.y - p.gy) * normal.x - (m.x - p.gx) * normal.y;
    area -= std::fabs(along) * distance_;
  }
  return area < 0.0;
}

}  // namespace zelvan::offset
