// The closing edge and the chain (closing_edge.h).
#include "polygon/closing_edge.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "polygon/input_predicates.h"

namespace zelvan {

namespace {

bool operator==(WorldPoint a, WorldPoint b) noexcept {
  return a.x == b.x && a.y == b.y;
}

// Positive where p lies to the left of the line from a to b.
int SideOfLine(WorldPoint a, WorldPoint b, WorldPoint p) noexcept {
  return SideSign(b, a, p);
}

// Does p, on the line of a and b, lie between them?
bool IsBetween(WorldPoint a, WorldPoint b, WorldPoint p) noexcept {
  if (p == a || p == b) return false;
  return a.x != b.x ? (a.x < p.x) != (b.x < p.x) : (a.y < p.y) != (b.y < p.y);
}

// Positive where the ray from o to p lies to the left of the path a, o, b; 0 on it.
int SideOfPath(WorldPoint a, WorldPoint o, WorldPoint b, WorldPoint p) noexcept {
  const int before = SideOfLine(a, o, p);
  const int after = SideOfLine(o, b, p);
  const int turn = SideOfLine(a, o, b);
  if (turn == 0) return before == after ? before : 0;  // straight on, or back
  if (before == turn && after == turn) return turn;
  const bool isOnPath = (before == 0 && after == turn) || (after == 0 && before == turn);
  return isOnPath ? 0 : -turn;
}

// The chain comes onto the closing edge from one side, runs along it perhaps, and leaves to
// the other; or two edges cross within.
bool CrossesWithin(const PointList& list) {
  const WorldPoint a = Planar(list.back());
  const WorldPoint b = Planar(list.front());
  const std::size_t n = list.size();
  std::vector<int> side(n);
  std::vector<bool> isOn(n);
  for (std::size_t i = 1; i + 1 < n; ++i) {
    side[i] = SideOfLine(a, b, Planar(list[i]));
    isOn[i] = side[i] == 0 && IsBetween(a, b, Planar(list[i]));
  }
  int from = 0;
  for (std::size_t i = 1; i + 1 < n; ++i) {
    const int next = side[i + 1];
    if (isOn[i]) {
      if (!isOn[i - 1]) from = side[i - 1];
      if (from * next < 0) return true;
    } else if (side[i] * next < 0) {
      const WorldPoint p = Planar(list[i]);
      const WorldPoint q = Planar(list[i + 1]);
      if (SideOfLine(p, q, a) * SideOfLine(p, q, b) < 0) return true;
    }
  }
  return false;
}

// Another path of the chain passes its first point from one side of the corner there to the
// other, like the middle of an eight: the two loops that meet there turn different ways.
bool CrossesAtFirst(const PointList& list) {
  const WorldPoint o = Planar(list.front());
  const WorldPoint from = Planar(list.back());
  const WorldPoint to = Planar(list[1]);
  const auto crosses = [&](const InputPoint& first, const InputPoint& second) {
    const WorldPoint p = Planar(first);
    const WorldPoint q = Planar(second);
    return SideOfPath(p, o, q, from) * SideOfPath(p, o, q, to) < 0 &&
           SideOfLine(p, o, to) * SideOfLine(from, o, q) < 0;
  };
  for (std::size_t i = 1; i + 1 < list.size(); ++i) {
    const WorldPoint p = Planar(list[i]);
    const WorldPoint q = Planar(list[i + 1]);
    if (p == o && crosses(list[i - 1], list[i + 1])) return true;
    const bool passes = SideOfLine(p, q, o) == 0 && IsBetween(p, q, o);
    if (passes && crosses(list[i], list[i + 1])) return true;
  }
  return false;
}

}  // namespace

bool ClosingEdgeCrosses(PointList list) {
  if (CrossesWithin(list) || CrossesAtFirst(list)) return true;
  std::reverse(list.begin(), list.end());
  return CrossesAtFirst(list);
}

}  // namespace zelvan
