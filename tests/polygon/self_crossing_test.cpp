// The predicates on input contours and the self-crossing test, against the test of
// all pairs.
#include "polygon/self_crossing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "polygon/input_predicates.h"
#include "support/polygons.h"

namespace zelvan {
namespace {

bool AllPairsCross(const PointList& p) {
  for (std::size_t i = 0; i + 2 < p.size(); ++i) {
    for (std::size_t j = i + 2; j + 1 < p.size(); ++j) {
      if (SegmentsCross(p[i], p[i + 1], p[j], p[j + 1])) return true;
    }
  }
  return false;
}

PointList Turned(PointList list, double degrees, double dx = 0, double dy = 0) {
  const double c = std::cos(degrees * 0.017453292519943295);
  const double s = std::sin(degrees * 0.017453292519943295);
  for (InputPoint& p : list) p = {c * p.x - s * p.y + dx, s * p.x + c * p.y + dy, 0};
  return list;
}

TEST(Side, IsExactWhereRoundingWouldDecide) {
  test::Random random(4);
  for (int round = 0; round < 20000; ++round) {
    SCOPED_TRACE(round);
    // b, then b + k u and b + m u on one line, all exact on the integers, at any
    // scale a contour of finite area can have.
    const auto integer = [&] { return static_cast<double>(random.Between(-1000000, 1000000)); };
    const double sx = std::ldexp(1.0, random.Between(-500, 450));
    const double sy = std::ldexp(1.0, random.Between(-500, 450));
    const double ux = integer(), uy = integer(), bx = integer() * 1e9, by = integer() * 1e9;
    const double k = random.Between(1, 1000), m = random.Between(1, 1000);
    WorldPoint a{(bx + k * ux) * sx, (by + k * uy) * sy};
    WorldPoint b{bx * sx, by * sy};
    WorldPoint c{(bx + m * ux) * sx, (by + m * uy) * sy};
    ASSERT_EQ(SideSign(a, b, c), 0);
    if (ux == 0 || a.x == 0 || c.y == 0) continue;
    WorldPoint up = c;
    up.y = std::nextafter(c.y, HUGE_VAL);
    const int sign = ux > 0 ? 1 : -1;
    EXPECT_EQ(SideSign(a, b, up), sign);
    EXPECT_EQ(SideSign(up, b, a), -sign);
    EXPECT_EQ(SideSign(b, up, a), sign);
    EXPECT_EQ(SideSign(up, a, b), sign);
  }
}

// Few points on a tiny lattice, where they touch and overlap in every way, some turned, so that
// the contacts are decided by rounded coordinates.
PointList OnALattice(test::Random& random, bool turned) {
  const std::int32_t size = random.Between(1, 9);
  PointList list(random.Below(std::size_t{10}));
  for (InputPoint& p : list) {
    const GridPoint g = zelvan::test::PointIn(random, size);
    p = {static_cast<double>(g.gx), static_cast<double>(g.gy), 0};
  }
  return turned ? Turned(list, 30, 1e6, -1e5) : list;
}

// Simple, but for two points that may be exchanged; on a raster its points share columns.
PointList LongStar(test::Random& random) {
  const int n = 20 + random.Below(200);
  const double raster = random.Below(3) == 0 ? 1.0 / 512 : 0x1p-60;
  PointList list;
  for (int i = 0; i < n; ++i) {
    const double angle = 6.283185307179586 * i / n;
    const double r = random.Between(0.2, 1.0) / raster;
    list.push_back({std::floor(r * std::cos(angle)), std::floor(r * std::sin(angle)), 0});
  }
  const int k = random.Below(n - 3);
  if (random.Below(2) == 0)
    std::iter_swap(list.begin() + k, list.begin() + k + 1 + random.Below(2));
  std::rotate(list.begin(), list.begin() + random.Below(n), list.end());
  return list;
}

TEST(HasSelfCrossing, GivesTheVerdictOfAllPairs) {
  test::Random random(5);
  int crossings = 0;
  int touches = 0;
  for (int round = 0; round < 250000; ++round) {
    const PointList list = round % 800 == 0 ? LongStar(random) : OnALattice(random, round % 3 == 0);
    const bool expected = AllPairsCross(list);
    ASSERT_EQ(HasSelfCrossing(list), expected) << "seed 5, round " << round;
    ASSERT_EQ(HasSelfCrossingByBoxes(list), expected) << "seed 5, round " << round;
    crossings += expected ? 1 : 0;
    touches += !expected && FindContactBySweep(list) == ChainContact::kTouch ? 1 : 0;
  }
  EXPECT_GT(crossings, 20000);
  EXPECT_GT(touches, 20000);
}

// Points in clusters of a few steps of their grid, so that segments pass each other closely:
// what is said to stay apart has no contact once it is rounded.
TEST(HasSelfCrossing, TellsOfChainsThatStayApartOnTheGrid) {
  test::Random random(7);
  int apartCount = 0;
  int contacts = 0;
  for (int round = 0; round < 300000; ++round) {
    const double steps = random.Below(4) == 0 ? 2 : 6;
    const auto coordinate = [&] {
      constexpr double places[] = {1, 12, 40, 524288, 1048560};
      return places[random.Below(random.Below(2) == 0 ? 3 : 5)] + random.Between(0.0, steps);
    };
    PointList list{{0, 0, 0}};
    for (int n = 2 + random.Below(5); n > 0; --n) {
      const double x = coordinate();
      list.push_back({x, coordinate(), 0});
    }
    list.push_back({1048575, 1048575, 0});  // with the first one: a step is 1
    if (random.Below(2) == 0) std::rotate(list.begin(), list.begin() + 2, list.end());
    bool apart = false;
    if (HasSelfCrossing(list, &apart)) continue;
    for (InputPoint& p : list) p = {std::floor(p.x + 0.5), std::floor(p.y + 0.5), 0};
    const bool touches = FindContactBySweep(list) != ChainContact::kNone;
    ASSERT_FALSE(apart && touches) << "seed 7, round " << round;
    apartCount += apart ? 1 : 0;
    contacts += touches ? 1 : 0;
  }
  EXPECT_GT(apartCount, 10000);
  EXPECT_GT(contacts, 5000);
}

TEST(HasSelfCrossing, ACombDrawnAtThirtyDegreesDoesNotCross) {
  for (const double tooth : {1.0, 1e5, 1e9}) {
    PointList comb{{0, -1, 0}};
    for (int i = 0; i < 400; ++i) {
      comb.push_back({static_cast<double>(i), 0, 0});
      comb.push_back({i + 0.25, tooth, 0});
      comb.push_back({i + 0.5, 0, 0});
    }
    EXPECT_FALSE(HasSelfCrossing(Turned(comb, 30, 3e5, 7e6)));
  }
}

}  // namespace
}  // namespace zelvan
