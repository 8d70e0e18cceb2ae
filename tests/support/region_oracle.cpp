// Which rings bound an area (region_oracle.h).
#include "support/region_oracle.h"

namespace zelvan::test {

namespace {

struct Corner {
  GridPoint before;
  GridPoint at;
  GridPoint after;
};

int Turn(GridPoint a, GridPoint b, GridPoint c) {
  const std::int64_t twice = TwiceSigned(Ring{a, b, c});
  return twice > 0 ? 1 : twice < 0 ? -1 : 0;
}

// Strictly between a and b, of three points on a line.
bool Between(GridPoint a, GridPoint b, GridPoint p) {
  const std::int64_t x = std::int64_t{p.gx - a.gx} * (p.gx - b.gx);
  const std::int64_t y = std::int64_t{p.gy - a.gy} * (p.gy - b.gy);
  return x + y < 0;
}

bool OnEdge(GridPoint p, const Corner& e) {
  return Turn(e.at, e.after, p) == 0 && Between(e.at, e.after, p);
}

bool ProperlyCross(const Corner& e, const Corner& f) {
  return Turn(e.at, e.after, f.at) * Turn(e.at, e.after, f.after) < 0 &&
         Turn(f.at, f.after, e.at) * Turn(f.at, f.after, e.after) < 0;
}

// From the common point c: do the directions to p and q agree?
bool SameDirection(GridPoint c, GridPoint p, GridPoint q) {
  return Turn(c, p, q) == 0 && !Between(p, q, c);
}

// Does the direction to p lie in the inner angle of a corner, from the way to `after`
// counter-clockwise to the way to `before`?
bool InAngle(const Corner& k, GridPoint p) {
  const int first = Turn(k.at, k.after, p);
  const int second = Turn(k.at, p, k.before);
  const int whole = Turn(k.at, k.after, k.before);
  return whole > 0 ? first > 0 && second > 0 : first > 0 || second > 0;
}

bool AnglesDisjoint(const Corner& k, const Corner& m) {
  for (const GridPoint p : {k.before, k.after}) {
    for (const GridPoint q : {m.before, m.after}) {
      if (SameDirection(k.at, p, q)) return false;
    }
  }
  return !InAngle(k, m.before) && !InAngle(k, m.after) && !InAngle(m, k.before) &&
         !InAngle(m, k.after);
}

bool PairFits(const Corner& e, const Corner& f, bool touchingAllowed) {
  if (ProperlyCross(e, f)) return false;
  if (e.at == f.at && (!touchingAllowed || !AnglesDisjoint(e, f))) return false;
  if (!OnEdge(f.at, e)) return true;
  return touchingAllowed && Turn(e.at, e.after, f.before) < 0 && Turn(e.at, e.after, f.after) < 0;
}

bool Fits(const Region& region, bool touchingAllowed) {
  std::vector<Corner> corners;
  for (const Ring& ring : region) {
    const std::size_t n = ring.size();
    if (n < 3) return false;
    for (std::size_t i = 0; i < n; ++i) {
      corners.push_back({ring[(i + n - 1) % n], ring[i], ring[(i + 1) % n]});
      const Corner& k = corners.back();
      if (k.at == k.after || SameDirection(k.at, k.before, k.after)) return false;
    }
  }
  for (std::size_t i = 0; i < corners.size(); ++i) {
    for (std::size_t j = 0; j < corners.size(); ++j) {
      if (i != j && !PairFits(corners[i], corners[j], touchingAllowed)) return false;
    }
  }
  return true;
}

}  // namespace

bool BoundsAnArea(const Region& region) {
  return Fits(region, true);
}

bool IsSimple(const Region& region) {
  return Fits(region, false);
}

}  // namespace zelvan::test
