// The fronts at each kind of vertex (fronts.h).
#include "triangulation/fronts.h"

#include <cstdlib>

#include "triangulation/in_circle.h"

namespace VORNEX {

namespace {

bool IsLeftOf(GridPoint p, GridPoint q) noexcept {
  return p.gx < q.gx || (p.gx == q.gx && p.gy > q.gy);
}

bool IsBeyond(GridPoint p, GridPoint q, std::uint32_t way) noexcept {
  return way == 1 ? IsLeftOf(q, p) : IsLeftOf(p, q);
}

}  // namespace

std::uint32_t Fronts::Allocate(const Corner& corner) {
  std::uint32_t link = free_;
  if (link == kNone) {
    link = static_cast<std::uint32_t>(links_.size());
    links_.emplace_back();
  } else {
    free_ = links_[link].beside[0];
  }
  links_[link] = {corner, {kNone, kNone}, {kNone, kNone}};
  return link;
}

void Fronts::Release(std::uint32_t link) noexcept {
  links_[link].beside[0] = free_;
  free_ = link;
}

// The links from one to the one before `end`.
void Fronts::ReleaseAll(std::uint32_t link, std::uint32_t end, Way way) noexcept {
  while (link != end) {
    const std::uint32_t next = links_[link].beside[way];
    Release(link);
    link = next;
  }
}

// Puts `to` behind `from`.
void Fronts::Join(std::uint32_t from, std::uint32_t to, std::uint32_t edge, Way way) noexcept {
  links_[from].beside[way] = to;
  links_[from].edge[way] = edge;
  links_[to].beside[1 - way] = from;
  links_[to].edge[1 - way] = edge;
}

// A second link for the same vertex, which takes over what lies behind the first.
std::uint32_t Fronts::Double(std::uint32_t link, Way way) {
  const Corner corner = links_[link].corner;
  const std::uint32_t copy = Allocate(corner);
  const std::uint32_t next = links_[link].beside[way];
  if (next != kNone) Join(copy, next, links_[link].edge[way], way);
  return copy;
}

// Is there a link `to`, and does the step from the one before it go the way?
bool Fronts::GoesOn(std::uint32_t from, std::uint32_t to, Way way) const noexcept {
  return to != kNone && IsBeyond(links_[to].corner.point, links_[from].corner.point, way);
}

bool Fronts::LiesBeyond(std::uint32_t link, const Corner& at, Way way) const noexcept {
  return IsBeyond(links_[link].corner.point, at.point, way);
}

// The left edge of a front ends in a vertex: the link that comes after the vertex now.
std::uint32_t Fronts::FirstToKeep(std::uint32_t end, const Corner& at, Way way) {
  std::uint32_t next = links_[end].beside[way];
  if (next == kNone) return end;
  std::uint32_t link = end;
  if (!GoesOn(link, next, way)) {  // down the left part, if this is none of the right one
    while (next != kNone && !GoesOn(link, next, way) &&
           GreaterThan(links_[link].corner.point, links_[next].corner.point)) {
      link = next;
      next = links_[link].beside[way];
    }
    return link;
  }
  while (!LiesBeyond(link, at, way) && GoesOn(link, next, way)) {
    link = next;
    next = links_[link].beside[way];
  }
  return link;
}

// Cuts the ring of a vertex, the links `from` (to which the edge `step` leads) to `to`, to
// the left, and the edge `single` between `to` and the vertex. These links may be given
// back, but for `from`, when that is done.
// @return false for a contradiction
bool Fronts::CutRing(const Corner& at, std::uint32_t step, std::uint32_t from, std::uint32_t to,
                     std::uint32_t single, Way way) {
  const Way back = 1 - way;
  waiting_.clear();
  waiting_.push_back({at, kNone});
  for (std::uint32_t edge = step, link = from;;) {
    const Link& next = links_[link];
    const bool isLast = link == to;
    for (std::size_t left = waiting_.size(); left > 1; --left, waiting_.pop_back()) {
      const Corner& a = waiting_[left - 2].corner;
      const Waiting& b = waiting_[left - 1];
      const std::int64_t turn = zelvan::Cross(a.point, b.corner.point, next.corner.point);
      if (way == 1 ? turn <= 0 : turn >= 0) {
        if (isLast) return false;
        break;
      }
      const std::uint32_t third = isLast && left == 2 ? single : writer_.AddDiagonal();
      const bool added = way == 1 ? writer_.Add(a, b.corner, next.corner, {b.edge, edge, third})
                                  : writer_.Add(next.corner, b.corner, a, {edge, b.edge, third});
      if (!added) return false;
      edge = third;
    }
    if (isLast) return true;
    waiting_.push_back({next.corner, edge});
    edge = next.edge[back];
    link = next.beside[back];
  }
}

// Cuts the triangle of a vertex and the edge of the middle above it. @return false for a
// contradiction
bool Fronts::CutOver(const Corner& at, std::uint32_t near, std::uint32_t nearEdge,
                     std::uint32_t far, std::uint32_t farEdge, Way way) {
  const std::uint32_t left = way == 1 ? near : far;
  const std::uint32_t right = way == 1 ? far : near;
  const std::uint32_t leftEdge = way == 1 ? nearEdge : farEdge;
  const std::uint32_t rightEdge = way == 1 ? farEdge : nearEdge;
  const Corner& a = links_[left].corner;
  const Corner& b = links_[right].corner;
  if (zelvan::Cross(at.point, b.point, a.point) <= 0) return false;
  return writer_.Add(at, b, a, {rightEdge, links_[left].edge[1], leftEdge});
}

// The left edge `single` of a front ends in a vertex. @return the vertex as its new end, or kNone
// for a contradiction
std::uint32_t Fronts::Close(std::uint32_t end, const Corner& at, std::uint32_t single, Way way) {
  const std::uint32_t keep = FirstToKeep(end, at, way);
  const std::uint32_t step = keep == end ? single : writer_.AddDiagonal();
  if (!CutRing(at, step, keep, end, single, way)) return kNone;
  ReleaseAll(end, keep, way);
  const std::uint32_t made = Allocate(at);
  Join(made, keep, step, way);
  return made;
}

// Cuts corners of at most 135 degrees of the middle beside its new vertex: triangles stay
// short where a front has no deep pockets, and where it is no hull. @return false for a
// contradiction
bool Fronts::Smooth(std::uint32_t made, Way way) {
  for (std::uint32_t sharp = links_[made].beside[way]; GoesOn(made, sharp, way);) {
    const std::uint32_t next = links_[sharp].beside[way];
    if (!GoesOn(sharp, next, way)) break;
    const Corner& a = links_[made].corner;
    const Corner& b = links_[sharp].corner;
    const Corner& c = links_[next].corner;
    const std::int64_t turn = zelvan::Cross(a.point, b.point, c.point);
    if (way == 1 ? turn >= 0 : turn <= 0) break;
    if (Dot(b.point, a.point, c.point) < -std::abs(turn)) break;
    const std::uint32_t edge = writer_.AddDiagonal();
    const std::uint32_t ab = links_[made].edge[way];
    const std::uint32_t bc = links_[sharp].edge[way];
    const bool added =
        way == 1 ? writer_.Add(c, b, a, {bc, ab, edge}) : writer_.Add(a, b, c, {ab, bc, edge});
    if (!added) return false;
    Release(sharp);
    Join(made, next, edge, way);
    sharp = next;
  }
  return true;
}

void Fronts::Open(Ends& ends, const Corner& at) {
  const std::uint32_t link = Allocate(at);
  ends = {{link, link}, link};
}

bool Fronts::GoOn(Side side, Ends& ends, const Corner& at, std::uint32_t edge) {
  const Way inward = OtherSide(side);
  ends.recent = ends.end[side] = Close(ends.end[side], at, edge, inward);
  return ends.recent != kNone && Smooth(ends.recent, inward);
}

// The last link of a middle, from `recent` on, that does not lie beyond a vertex: looked for
// from there and from the end of the front at once.
std::uint32_t Fronts::LastBefore(std::uint32_t recent, std::uint32_t end, const Corner& at,
                                 Way way) {
  std::uint32_t link = recent;
  for (std::uint32_t next = links_[link].beside[way];
       GoesOn(link, next, way) && !LiesBeyond(next, at, way); next = links_[link].beside[way]) {
    ++steps_;
    link = next;
    const std::uint32_t before = links_[end].beside[1 - way];
    const bool isMiddle = !GoesOn(end, before, way);
    if (before == kNone || (isMiddle && !LiesBeyond(end, at, way))) return end;
    end = before;
    if (isMiddle && !LiesBeyond(end, at, way)) return end;
  }
  return link;
}

// The triangle of the vertex and the edge above it divides a front. Where the middle ends
// before that, the vertex is joined to its end, which is in both fronts then.
bool Fronts::Split(Ends& left, Ends& right, const Corner& at) {
  const Way way = LiesBeyond(left.recent, at, 1) ? 0 : 1;
  const std::uint32_t near = LastBefore(left.recent, left.end[way], at, way);
  std::uint32_t far = links_[near].beside[way];
  const std::uint32_t nearEdge = writer_.AddDiagonal();
  std::uint32_t farEdge = nearEdge;
  if (GoesOn(near, far, way)) {
    farEdge = writer_.AddDiagonal();
    if (!CutOver(at, near, nearEdge, far, farEdge, way)) return false;
  } else {
    far = Double(near, way);
    if (left.end[way] == near) left.end[way] = far;
  }
  const std::uint32_t nearEnd = Allocate(at);
  const std::uint32_t farEnd = Allocate(at);
  Join(near, nearEnd, nearEdge, way);
  Join(farEnd, far, farEdge, way);
  Ends& nearPart = way == 1 ? left : right;
  Ends& farPart = way == 1 ? right : left;
  const Ends whole = left;
  nearPart.end[1 - way] = whole.end[1 - way];
  nearPart.end[way] = nearPart.recent = nearEnd;
  farPart.end[1 - way] = farPart.recent = farEnd;
  farPart.end[way] = whole.end[way];
  return Smooth(nearEnd, 1 - way) && Smooth(farEnd, way);
}

bool Fronts::End(const Ends& ends, const Corner& at, std::uint32_t leftEdge,
                 std::uint32_t rightEdge) {
  const auto [leftEnd, rightEnd] = ends.end;
  if (leftEnd == rightEnd) return false;
  const std::uint32_t keep = FirstToKeep(leftEnd, at, 1);
  const std::uint32_t step = keep == leftEnd    ? leftEdge
                             : keep == rightEnd ? rightEdge
                                                : writer_.AddDiagonal();
  if (!CutRing(at, step, keep, leftEnd, leftEdge, 1) ||
      !CutRing(at, step, keep, rightEnd, rightEdge, 0))
    return false;
  ReleaseAll(leftEnd, kNone, 1);
  return true;
}

bool Fronts::Merge(Ends& left, const Ends& right, const Corner& at, std::uint32_t rightEdge,
                   std::uint32_t leftEdge) {
  const std::uint32_t made = Close(left.end[1], at, rightEdge, 0);
  const std::uint32_t twin = Close(right.end[0], at, leftEdge, 1);
  if (made == kNone || twin == kNone) return false;
  Join(made, links_[twin].beside[1], links_[twin].edge[1], 1);
  Release(twin);
  left.end[1] = right.end[1];
  left.recent = made;
  return Smooth(made, 0) && Smooth(made, 1);
}

}  // namespace VORNEX
