// The flips, and the order of the result (flips.h).
#include "triangulation/flips.h"

#include <algorithm>

#include "triangulation/in_circle.h"
#include "triangulation/sweep_records.h"

namespace VORNEX {

namespace {

constexpr bool IsLower(GridPoint p, GridPoint q) noexcept {
  return p.gy < q.gy || (p.gy == q.gy && p.gx < q.gx);
}

// For two triangles with c and d opposite to their edge ab, counter-clockwise a, d, b, c.
bool IsLegal(GridPoint a, GridPoint b, GridPoint c, GridPoint d) noexcept {
  const std::int64_t dotC = Dot(c, a, b);
  const std::int64_t dotD = Dot(d, a, b);
  if (dotC > 0 && dotD > 0) return true;
  const int sign = SignOfSum(zelvan::Cross(c, a, b), dotD, dotC, zelvan::Cross(d, b, a));
  if (sign != 0) return sign > 0;
  return IsLower(std::min(a, b, IsLower), std::min(c, d, IsLower));
}

void Link(Sides sides, std::uint32_t side, std::uint32_t twin) noexcept {
  sides.twins[side] = twin;
  if (twin != kNone) sides.twins[twin] = side;
}

//        c                 c
//      / t \             / | \        sides e from a to b and f back become d to b and c to a;
//     a --- b    ->     a u|t b       the new edge is the last side of both
//      \ u /             \ | /
//        d                 d
void Flip(Sides sides, std::uint32_t e, std::uint32_t f) noexcept {
  const std::uint32_t ca = LastSide(e);
  const std::uint32_t db = LastSide(f);
  sides.corners[e] = sides.corners[db];
  sides.corners[f] = sides.corners[ca];
  Link(sides, e, sides.twins[db]);
  Link(sides, f, sides.twins[ca]);
  Link(sides, ca, db);
}

}  // namespace

std::uint64_t Flips::Run(const GridPoint* points, Sides sides) {
  const std::span<std::uint32_t> corners = sides.corners;
  const std::span<std::uint32_t> twins = sides.twins;
  const auto count = static_cast<std::uint32_t>(corners.size());
  waits_.assign(count, 0);
  waiting_.clear();
  std::uint64_t flips = 0;
  const auto wait = [&](std::uint32_t side) {
    if (twins[side] == kNone || waits_[side] != 0) return;
    waiting_.push_back(side);
    waits_[side] = 1;
  };
  const auto legalize = [&](std::uint32_t e) {
    const std::uint32_t f = twins[e];
    if (IsLegal(points[corners[e]], points[corners[f]], points[corners[LastSide(e)]],
                points[corners[LastSide(f)]])) {
      return;
    }
    Flip(sides, e, f);
    ++flips;
    wait(e);
    wait(NextSide(e));
    wait(f);
    wait(NextSide(f));
  };
  for (std::uint32_t side = 0; side < count; ++side) {
    if (twins[side] != kNone && twins[side] > side) legalize(side);
    while (!waiting_.empty()) {
      const std::uint32_t next = waiting_.back();
      waiting_.pop_back();
      waits_[next] = 0;
      if (twins[next] != kNone) legalize(next);
    }
  }
  return flips;
}

// The triangles by their lowest corners, of equal ones by the next corner: a sort by counting.
void Arrangement::Run(Sides sides, std::uint32_t first, std::uint32_t end, bool linked,
                      std::span<std::uint32_t> spare) {
  const std::span<const std::uint32_t> corners = sides.corners;
  const auto count = static_cast<std::uint32_t>(corners.size());
  const auto lowestSide = [&](std::uint32_t t) {
    const std::uint32_t a = corners[t], b = corners[t + 1], c = corners[t + 2];
    return a < b ? (a < c ? t : t + 2) : (b < c ? t + 1 : t + 2);
  };
  places_.assign(end - first + 1, 0);
  order_.resize(count / 3);
  numbers_.resize(linked ? count / 3 : 0);
  for (std::uint32_t t = 0; t < count; t += 3) ++places_[corners[lowestSide(t)] - first + 1];
  for (std::uint32_t v = first; v < end; ++v) places_[v - first + 1] += places_[v - first];
  for (std::uint32_t t = 0; t < count; t += 3) {
    const std::uint32_t side = lowestSide(t);
    order_[places_[corners[side] - first]++] = side;
  }
  const auto isBefore = [&](std::uint32_t s, std::uint32_t t) {
    return corners[NextSide(s)] < corners[NextSide(t)];
  };
  for (std::uint32_t v = first, begin = 0; v < end; begin = places_[v++ - first]) {
    if (places_[v - first] - begin < 2) continue;
    std::sort(order_.begin() + begin, order_.begin() + places_[v - first], isBefore);
  }

  const auto permute = [&](std::span<std::uint32_t> values, auto valueOf) {
    std::copy(values.begin(), values.end(), spare.begin());
    auto to = values.begin();
    for (const std::uint32_t side : order_) {
      for (const std::uint32_t s : {side, NextSide(side), LastSide(side)})
        *to++ = valueOf(spare[s]);
    }
  };
  permute(sides.corners, [](std::uint32_t corner) { return corner; });
  if (!linked) return;
  for (std::uint32_t i = 0; i < order_.size(); ++i) numbers_[order_[i] / 3] = i;
  permute(sides.twins,
          [&](std::uint32_t twin) { return twin == kNone ? kNone : 3 * numbers_[twin / 3]; });
}

}  // namespace VORNEX
