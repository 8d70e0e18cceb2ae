// The grid mapping: its ends, its bound, its inverse, and what collapses on it.
#include "polygon/grid_mapping.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "polygon/tables.h"
#include "rings.h"
#include "support/random.h"

namespace zelvan {
namespace {

constexpr GridPoint kLowest{-GRID_OFFSET, -GRID_OFFSET};
constexpr GridPoint kHighest{GRID_MAX - GRID_OFFSET, GRID_MAX - GRID_OFFSET};

TEST(GridMapping, EndsMapOntoEndsAndSnappingUndoesUnsnapping) {
  support::Random random(2);
  for (int round = 0; round < 2000; ++round) {
    SCOPED_TRACE(round);
    const double scale = std::ldexp(1.0, random.Between(-300, 300));
    const WorldPoint lo{random.Between(-1.0, 1.0) * scale, random.Between(-1.0, 1.0) * scale};
    const WorldPoint hi{lo.x + random.Between(1e-6, 2.0) * scale,
                        lo.y + random.Between(1e-6, 2.0) * scale};
    EXPECT_EQ(Snap(lo, lo, hi), kLowest);
    EXPECT_EQ(Snap(hi, lo, hi), kHighest);
    EXPECT_EQ(Unsnap(kLowest, lo, hi).x, lo.x);
    const double step = (hi.x - lo.x) / GRID_MAX;
    EXPECT_NEAR(Unsnap(kHighest, lo, hi).x, hi.x, 1e-9 * step + 4e-16 * std::fabs(hi.x));

    const GridPoint g{random.Between(kLowest.gx, kHighest.gx),
                      random.Between(kLowest.gy, kHighest.gy)};
    EXPECT_EQ(Snap(Unsnap(g, lo, hi), lo, hi), g);
    const WorldPoint p{random.Between(lo.x, hi.x), random.Between(lo.y, hi.y)};
    const double ulps = 8 * std::numeric_limits<double>::epsilon() * scale * 4;
    EXPECT_LE(std::fabs(Unsnap(Snap(p, lo, hi), lo, hi).x - p.x), 0.5 * step + ulps);
  }
}

TEST(GridMapping, NoDoubleIsOutOfRange) {
  constexpr double inf = std::numeric_limits<double>::infinity();
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  for (const double v : {nan, inf, -inf, 1e300, -1e300}) {
    for (const double extent : {1.0, 0.0, inf, nan, 5e-324}) {
      const GridPoint g = Snap({v, v}, {0.0, 0.0}, {extent, extent});
      EXPECT_GE(g.gx, kLowest.gx);
      EXPECT_LE(g.gx, kHighest.gx);
    }
  }
}

Contour* WorldContour(std::initializer_list<WorldPoint> points) {
  Contour* contour = nullptr;
  for (const WorldPoint p : points) AppendVertex(contour, p.x, p.y);
  contour->flags |= CONTOUR_CCW;
  return contour;
}

constexpr double kGrid = 1048575.0;

TEST(SnapContour, EqualNeighboursGoTheHeadStays) {
  const auto snapped = [](std::initializer_list<WorldPoint> points, bool polygon) {
    OwnedContour contour(WorldContour(points));
    const VertexNode* head = contour->head;
    EXPECT_EQ(SnapContour(contour.get(), {0, 0}, {kGrid, kGrid}), polygon);
    EXPECT_EQ(contour->head, head);
    const GridRing ring = PointsOf(contour.get());
    EXPECT_EQ(ring.size(), contour->count);
    return ring.size();
  };
  EXPECT_EQ(snapped({{0, 0}, {9, 0}, {9, 9}, {0.3, 0.2}}, true), 3u) << "last onto head";
  EXPECT_EQ(snapped({{0, 0}, {9, 0}, {9.1, 0.2}, {9.2, 0.1}, {9, 9}}, true), 3u);
  EXPECT_EQ(snapped({{0, 0}, {0.1, 0}, {0.2, 0}, {9, 9}}, false), 2u);
  EXPECT_EQ(snapped({{0, 0}, {0.1, 0.1}, {0.2, 0}}, false), 1u);
}

TEST(SnapShape, CollapsedContoursAndAreasDisappearTheOthersStay) {
  for (int collapsed = 0; collapsed < 8; ++collapsed) {  // bit a: area a is a speck
    Shape shape;
    for (int a = 0; a < 3; ++a) {
      const double x = 100.0 * a;
      const double size = (collapsed >> a & 1) != 0 ? 0.2 : 50.0;
      PlaceContour(shape.areas, WorldContour({{x, 0}, {x + size, 0}, {x, size}}));
      Area* area = shape.areas->prev;
      area->contours->next = WorldContour({{x + 9, 9}, {x + 9.2, 9}, {x + 9, 9.2}});
      area->contours->next->next = WorldContour({{x + 9, 9}, {x + 9, 12}, {x + 12, 9}});
    }
    SnapShape(shape, {0, 0}, {kGrid, kGrid});
    RebuildTables(shape);
    std::vector<std::int32_t> xs;
    ForEachArea(shape.areas, [&](const Area* area) {
      xs.push_back((area->contours->head->grid.gx + GRID_OFFSET) / 100);
      ASSERT_NE(area->contours->next, nullptr);
      EXPECT_EQ(area->contours->next->next, nullptr) << "the speck of a hole is gone";
      EXPECT_EQ(area->next->prev, area);
    });
    std::vector<std::int32_t> expected;
    for (int a = 0; a < 3; ++a) {
      if ((collapsed >> a & 1) == 0) expected.push_back(a);
    }
    EXPECT_EQ(xs, expected);
    EXPECT_EQ(shape.vertexTable.size(), 6 * expected.size());
    EXPECT_EQ(shape.contourStarts.size(), 2 * expected.size());
    EXPECT_EQ(shape.areas == nullptr, collapsed == 7);
  }
}

}  // namespace
}  // namespace zelvan
