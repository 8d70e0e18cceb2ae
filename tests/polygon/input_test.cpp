// From points to a stored polygon: exact signs, the verdict on crossings against the test of all
// pairs, and what is removed, refused and kept.
#include <gtest/gtest.h>
#include <zelvan/error.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "polygon/build_shape.h"
#include "polygon/closing_edge.h"
#include "polygon/grid_mapping.h"
#include "polygon/input_predicates.h"
#include "polygon/self_crossing.h"
#include "support/polygons.h"

namespace zelvan {
namespace {

using test::Random;

bool AllPairsCross(const PointList& p) {
  for (std::size_t i = 0; i + 2 < p.size(); ++i) {
    for (std::size_t j = i + 2; j + 1 < p.size(); ++j) {
      if (SegmentsCross(p[i], p[i + 1], p[j], p[j + 1])) return true;
    }
  }
  return false;
}

PointList AtThirtyDegrees(PointList list, double dx, double dy) {
  const double c = std::sqrt(0.75);
  for (InputPoint& p : list) p = {c * p.x - 0.5 * p.y + dx, 0.5 * p.x + c * p.y + dy, 0};
  return list;
}

// Few points on a tiny lattice, where they touch and overlap in every way, some turned, so that
// the contacts are decided by rounded coordinates.
PointList OnALattice(Random& random, bool turned) {
  const std::int32_t size = random.Between(1, 9);
  PointList list(random.Below(std::size_t{10}));
  for (InputPoint& p : list) {
    const GridPoint g = test::PointIn(random, size);
    p = {static_cast<double>(g.gx), static_cast<double>(g.gy), 0};
  }
  return turned ? AtThirtyDegrees(list, 1e6, -1e5) : list;
}

// A comb of any height, or a star whose points may be on a raster, so that they share columns;
// simple, but for two points that may be exchanged.
PointList Long(Random& random) {
  const int n = 20 + random.Below(200);
  const double raster = random.Below(3) == 0 ? 1.0 / 512 : 0x1p-60;
  const double tooth = std::ldexp(1.0, random.Below(30));
  const bool isComb = random.Below(4) == 0;
  PointList list;
  for (int i = 0; i < n; ++i) {
    const double angle = 6.283185307179586 * i / n;
    const double r = random.Between(0.2, 1.0) / raster;
    list.push_back({std::floor(r * std::cos(angle)), std::floor(r * std::sin(angle)), 0});
    if (isComb) list.back() = {i * 0.25, i % 2 == 0 ? 0.0 : tooth, 0};
  }
  const int k = random.Below(n - 3);
  if (random.Below(2) == 0) std::iter_swap(list.begin() + k, list.begin() + k + 2);
  if (isComb) return AtThirtyDegrees(list, 3e5, 7e6);
  std::rotate(list.begin(), list.begin() + random.Below(n), list.end());
  return list;
}

// b, then b + k u and b + m u on one line, all exact on the integers, at any scale that a contour
// of finite area can have.
TEST(Side, IsExactWhereRoundingWouldDecide) {
  Random random(4);
  const auto integer = [&] { return static_cast<double>(random.Between(-1000000, 1000000)); };
  for (int round = 0; round < 20000; ++round) {
    const double sx = std::ldexp(1.0, random.Between(-500, 450));
    const double sy = std::ldexp(1.0, random.Between(-500, 450));
    const double ux = integer(), uy = integer(), bx = integer() * 1e9, by = integer() * 1e9;
    const double k = random.Between(1, 1000), m = random.Between(1, 1000);
    const WorldPoint a{(bx + k * ux) * sx, (by + k * uy) * sy};
    const WorldPoint b{bx * sx, by * sy};
    const WorldPoint c{(bx + m * ux) * sx, (by + m * uy) * sy};
    ASSERT_EQ(SideSign(a, b, c), 0) << round;
    if (ux == 0 || a.x == 0 || c.y == 0) continue;
    const WorldPoint up{c.x, std::nextafter(c.y, HUGE_VAL)};
    const int sign = ux > 0 ? 1 : -1;
    ASSERT_EQ(SideSign(a, b, up), sign) << round;
    ASSERT_EQ(SideSign(up, b, a), -sign) << round;
    ASSERT_EQ(SideSign(b, up, a), sign) << round;
  }
}

TEST(HasSelfCrossing, GivesTheVerdictOfAllPairs) {
  Random random(5);
  int crossings = 0;
  int touches = 0;
  for (int round = 0; round < 250000; ++round) {
    const PointList list = round % 800 == 0 ? Long(random) : OnALattice(random, round % 3 == 0);
    const bool expected = AllPairsCross(list);
    ASSERT_EQ(FindContact(list) == ChainContact::kCrossing, expected) << "seed 5, round " << round;
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
  Random random(7);
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
    const ChainContact contact = FindContact(list);
    if (contact == ChainContact::kCrossing) continue;
    const bool apart = contact == ChainContact::kNoneOnGrid;
    for (InputPoint& p : list) p = {std::floor(p.x + 0.5), std::floor(p.y + 0.5), 0};
    const bool touches = FindContactBySweep(list) != ChainContact::kNone;
    ASSERT_FALSE(apart && touches) << "seed 7, round " << round;
    apartCount += apart ? 1 : 0;
    contacts += touches ? 1 : 0;
  }
  EXPECT_GT(apartCount, 10000);
  EXPECT_GT(contacts, 5000);
}

// One point after the other, against its neighbours of then.
PointList LeftOf(PointList list) {
  if (list.size() <= 2) return list;
  InputPoint before = list.back();
  auto at = list.begin();
  while (at + 1 != list.end()) {
    if (IsCollinear(before, *at, *(at + 1))) {
      at = list.erase(at);
    } else {
      before = *at++;
    }
  }
  if (IsCollinear(before, *at, list.front())) list.pop_back();
  return list;
}

// The points that are left, from the first one on and counter-clockwise, on the grid of their box,
// where some may become one.
TEST(BuildShape, StoresWhatIsLeftOnTheGridOfItsBox) {
  Random random(8);
  int counts[3] = {};  // refused, collapsed, kept
  for (int round = 0; round < 100000; ++round) {
    PointList list = OnALattice(random, round % 3 == 0);
    for (InputPoint& p : list) {  // some within a step of the one before, or a few steps away
      const bool isNear = &p != list.data() && round % 2 == 0 && random.Below(2) == 0;
      const double off = random.Below(8) * (round % 4 == 0 ? 0.125 : 2);
      p = isNear ? InputPoint{(&p)[-1].x + off, (&p)[-1].y - off, 0}
                 : InputPoint{p.x * 1e6, p.y * 1e6, 0};
    }
    PointList left = LeftOf(list);
    PointList removed = list;
    RemoveCollinear(removed);
    ASSERT_EQ(removed.size(), left.size()) << "seed 8, round " << round;
    double area = 0;
    WorldPoint low{HUGE_VAL, HUGE_VAL}, high{-HUGE_VAL, -HUGE_VAL};
    for (std::size_t i = 0; i < left.size(); ++i) {
      const InputPoint& p = left[i];
      const InputPoint& q = left[(i + 1) % left.size()];
      area += (p.x - left[0].x) * (q.y - left[0].y) - (q.x - left[0].x) * (p.y - left[0].y);
      MergeBoxes(low, high, {p.x, p.y}, {p.x, p.y});
    }
    if (round % 3 == 0 && std::abs(area) < 1e5) continue;  // rounding says which way it runs
    std::unique_ptr<Shape> shape;
    try {
      shape = BuildShape(ValidatedContour(list));
    } catch (const ZelvanLib::BadPolyError&) {
      ++counts[0];
    }
    const bool expected = left.size() >= 3 && area != 0 && !AllPairsCross(left);
    ASSERT_EQ(shape != nullptr, expected) << "seed 8, round " << round;
    if (!expected) continue;
    if (area < 0) std::reverse(left.begin() + 1, left.end());
    test::Ring ring;
    for (const InputPoint& p : left) {
      const GridPoint g = Snap({p.x, p.y}, low, high);
      if (ring.empty() || ring.back() != g) ring.push_back(g);
    }
    if (ring.back() == ring.front()) ring.pop_back();
    const bool collapsed = ring.size() < 3;
    ++counts[collapsed ? 1 : 2];
    ASSERT_EQ(test::AreasOf(shape->areas), collapsed ? test::Areas{} : test::Areas{{ring}})
        << round;
    ASSERT_TRUE(collapsed || shape->areas->contours->flags == CONTOUR_CCW);
  }
  for (const int count : counts) EXPECT_GT(count, 20);
}

TEST(ClosingEdge, IsCrossedFromOneSideToTheOtherAlone) {
  const struct {
    std::vector<double> xy;
    bool crosses;
  } contours[] = {
      {{0, 0, 4, 4, 0, 2, 2, 4, 0, 3}, false},              // touched in a vertex
      {{0, 0, 4, 4, 0, 2, 0, 1, -2, 0, 0, 4}, true},        // crossed along it
      {{0, 0, 4, 4, 0, 2, 0, 1, 2, 9, 0, 4}, false},        // touched along it
      {{0, 0, 4, 1, 0, 2, -2, 3, 0, 4}, true},              // crossed in a vertex
      {{0, 0, 4, 1, 2, 2, -2, 2, 0, 4}, true},              // crossed within two edges
      {{0, 0, 4, 1, 2, 6, -2, 6, 0, 4}, false},             // passed beyond its end
      {{0, 0, 4, 1, 2, 4, -2, 4, -2, 6, 0, 4}, true},       // its end in an edge, crossing
      {{0, 0, 4, 1, 2, 4, -2, 4, -2, 2, 0, 4}, false},      // its end in an edge, from below
      {{0, 0, 4, -1, 4, 1, 0, 0, -4, -1, -4, 1}, true},     // an eight from its middle
      {{0, 0, 4, 1, 4, -1, 0, 0, -4, -1, -4, 1}, false},    // two loops that touch there
      {{0, 0, 9, 0, 9, 9, 0, 9, 0, 0, 2, 4, 4, 2}, false},  // a hole from a corner
      {{0, 0, 9, 1, 1, 9, 0, 0, 4, 2, 2, 4}, false},        // twice around a corner
      {{0, 0, 4, 0, 4, 4, 0, 0, 4, 0, 4, 4}, false},        // twice along itself
  };
  for (const auto& contour : contours) {
    PointList list;
    for (std::size_t i = 0; i < contour.xy.size(); i += 2) {
      list.push_back({contour.xy[i] / 3, contour.xy[i + 1], 0});
    }
    EXPECT_EQ(ClosingEdgeCrosses(list), contour.crosses) << &contour - contours;
  }
}

TEST(BuildShape, RefusesNumbersThatItCannotHold) {
  constexpr double inf = std::numeric_limits<double>::infinity();
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  for (const PointList& points : {PointList{{0, 0, 0}, {nan, 0, 0}, {1, 1, 0}},
                                  {{0, 0, 0}, {1, inf, 0}, {1, 1, 0}, {0, 1, 0}},
                                  {{-1e308, 0, 0}, {1e308, 0, 0}, {0, 1, 0}},
                                  {{0, 0, 0}, {1e303, 0, 0}, {0, 1e-5, 0}}}) {
    EXPECT_THROW(BuildShape(ValidatedContour(points)), ZelvanLib::BadPolyError) << points[1].x;
  }
  EXPECT_NE(BuildShape(ValidatedContour({{0, 0, nan}, {1, 0, inf}, {0, 1, 0}}))->areas, nullptr)
      << "z takes no part";
  const auto vast =
      BuildShape(ValidatedContour({{0, 0, 0}, {1e160, 0, 0}, {0, 1e160, 0}}));  // of infinite area
  EXPECT_EQ(Unsnap(vast->areas->contours->head->next->grid, vast->boxMin, vast->boxMax).x, 1e160);
  for (const double height : {1e-5, -1e-5}) {  // the tolerance is strict and absolute
    EXPECT_FALSE(IsCollinear({0, 0, 0}, {1, 0, 0}, {0, height, 0}));
    EXPECT_TRUE(IsCollinear({0, 0, 0}, {1, 0, 0}, {0, std::nextafter(height, 0.0), 0}));
  }
}

}  // namespace
}  // namespace zelvan
