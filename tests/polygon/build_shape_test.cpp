// From points to a stored polygon: what is removed, what is refused, what is kept.
#include "polygon/build_shape.h"

#include <gtest/gtest.h>
#include <zelvan/error.h>

#include <cmath>
#include <limits>
#include <list>

#include "polygon/input_predicates.h"
#include "support/polygons.h"

namespace zelvan {
namespace {

using Points = std::vector<InputPoint>;

std::unique_ptr<Shape> Build(const Points& points) {
  return BuildShape(points);
}

// The pass over a linked list, as it is described, node by node.
std::vector<double> CollinearPassOnList(const PointList& points) {
  std::list<InputPoint> list(points.begin(), points.end());
  if (list.size() > 2) {
    auto k = std::prev(list.end());
    auto cur = std::next(list.begin());
    if (IsCollinear(*k, *list.begin(), *cur)) {
      list.erase(list.begin());
    } else {
      k = list.begin();
    }
    for (auto nxt = std::next(cur); nxt != list.end(); cur = nxt++) {
      if (IsCollinear(*k, *cur, *nxt)) {
        list.erase(cur);
      } else {
        k = cur;
      }
    }
    if (IsCollinear(*k, *cur, list.front())) list.erase(cur);
  }
  std::vector<double> xs;
  for (const InputPoint& p : list) xs.insert(xs.end(), {p.x, p.y});
  return xs;
}

TEST(RemoveCollinear, IsThePassOverAList) {
  test::Random random(7);
  for (int round = 0; round < 100000; ++round) {
    PointList list(random.Below(std::size_t{8}));
    for (InputPoint& p : list) {
      p = {static_cast<double>(random.Below(3)), static_cast<double>(random.Below(3)), 0};
    }
    const std::vector<double> expected = CollinearPassOnList(list);
    RemoveCollinear(list);
    std::vector<double> got;
    for (const InputPoint& p : list) got.insert(got.end(), {p.x, p.y});
    ASSERT_EQ(got, expected) << "seed 7, round " << round;
  }
}

TEST(IsCollinear, TheToleranceIsStrictAndAbsolute) {
  const double tolerance = 1e-5;
  const auto collinear = [](double height) {
    return IsCollinear({0, 0, 0}, {1, 0, 0}, {0, height, 0});
  };
  for (const double sign : {1.0, -1.0}) {
    EXPECT_FALSE(collinear(sign * tolerance));
    EXPECT_TRUE(collinear(sign * std::nextafter(tolerance, 0.0)));
  }
}

TEST(BuildShape, KeepsTheHeadAndTurnsTheContourCounterClockwise) {
  Points square{{0, 0, 5}, {1, 0, 6}, {1, 1, 7}, {0, 1, 8}};
  for (int turn = 0; turn < 2; ++turn) {
    const auto shape = Build(square);
    const Contour* contour = shape->areas->contours;
    EXPECT_EQ(contour->count, 4u);
    EXPECT_EQ(contour->flags, CONTOUR_CCW);
    EXPECT_GT(TwiceArea(contour->head), 0);
    EXPECT_EQ(contour->head->grid, (GridPoint{-GRID_OFFSET, -GRID_OFFSET}));
    EXPECT_EQ(shape->vertexTable[0], contour->head);
    EXPECT_EQ(shape->contourStarts, std::vector<VertexNode*>{contour->head});
    std::swap(square[1], square[3]);
  }
}

TEST(BuildShape, CountsOfWhatIsKept) {
  const auto kept = [](const Points& points) { return Build(points)->vertexTable.size(); };
  EXPECT_EQ(kept({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}}), 4u);
  EXPECT_EQ(kept({{0, 0, 0}, {0, 0, 0}, {1, 0, 0}, {1, 1, 0}}), 3u);
  EXPECT_EQ(kept({{0, 0, 0}, {1, 0, 0}, {0.5, 0.000001, 0}, {0, 1, 0}}), 3u);
  EXPECT_EQ(kept({{0, 0, 0}, {4, 0, 0}, {6, 0, 0}, {4, 0, 0}, {4, 4, 0}}), 3u) << "a spike";
  EXPECT_EQ(kept({{0, 0, 0}, {10, 0, 0}, {0, 10, 0}, {20, 10, 0}}), 4u)
      << "only the closing edge crosses";
  EXPECT_EQ(kept({{0, 0, 0}, {1e6, 1e6, 0}, {999999.6, 1e6, 0}}), 0u) << "collapses on its grid";
}

TEST(BuildShape, RefusesWhatIsNoPolygon) {
  constexpr double inf = std::numeric_limits<double>::infinity();
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  const Points refused[] = {
      {},
      {{0, 0, 0}, {1, 1, 0}},
      {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}},
      {{3, 3, 0}, {3, 3, 0}, {3, 3, 0}, {3, 3, 0}},
      {{0, 0, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}},
      {{0, 0, 0}, {4, 4, 0}, {4, 0, 0}, {-4, 8, 0}, {-4, 4, 0}},
      {{0, 0, 0}, {1e-3, 0, 0}, {0, 1e-3, 0}},
      {{0, 0, 0}, {nan, 0, 0}, {1, 1, 0}},
      {{0, 0, 0}, {1, inf, 0}, {1, 1, 0}, {0, 1, 0}},
      {{-1e308, 0, 0}, {1e308, 0, 0}, {0, 1, 0}},
      {{0, 0, 0}, {1e303, 0, 0}, {0, 1e-5, 0}},
      {{0, 0, 0}, {1e200, 0, 0}, {0, 1e200, 0}},
  };
  for (const Points& points : refused) {
    EXPECT_THROW(Build(points), ZelvanLib::BadPolyError) << &points - refused;
  }
  EXPECT_EQ(Build({{0, 0, nan}, {1, 0, inf}, {0, 1, 0}})->vertexTable.size(), 3u)
      << "z takes no part";
  EXPECT_EQ(Build({{0, 0, 0}, {1e150, 0, 0}, {0, 1e150, 0}})->vertexTable.size(), 3u);
}

}  // namespace
}  // namespace zelvan
