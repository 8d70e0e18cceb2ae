// The parts of the polygon model: containment, the grid, the order of points, the block pool.
#include <gtest/gtest.h>
#include <zelvan/error.h>

#include <cmath>
#include <limits>
#include <numeric>

#include "memory/block_pool.h"
#include "polygon/containment.h"
#include "polygon/contour.h"
#include "polygon/grid_mapping.h"
#include "polygon/key_sort.h"
#include "polygon/tables.h"
#include "support/arrangement_oracle.h"

namespace zelvan {
namespace {

using test::Random;
using test::Ring;

OwnedContour ContourOf(const Ring& ring) {
  const OwnedRing owned = test::RingOf({{ring}});
  return OwnedContour(std::exchange(owned.first->contours, nullptr));
}

// Quads and triangles on few points, in contact in every way; those that cross have no answer.
TEST(ContourInside, IsWhetherNothingIsLeftWithoutTheOther) {
  Random random(3);
  int onBoundary = 0;
  int insideCount = 0;
  for (int round = 0; round < 20000; ++round) {
    Ring a = test::SimplePolygon(random, 4, 3 + random.Below(3));
    Ring b = test::SimplePolygon(random, 4, 3 + random.Below(3));
    for (Ring* ring : {&a, &b}) {  // so far apart that nothing is rounded
      for (GridPoint& p : *ring) p = {64 * p.gx, 64 * p.gy};
    }
    const oracle::Arrangement ab = oracle::Snap({a}, {b});
    const bool isInside = oracle::BoundaryOf(ab, 2).empty();
    const bool surrounds = oracle::BoundaryOf(oracle::Snap({b}, {a}), 2).empty();
    const bool apart = oracle::BoundaryOf(ab, 1).empty();
    if (ab.cancelled != 0 || (!isInside && !surrounds && !apart)) continue;
    const OwnedContour inner = ContourOf(a);
    const OwnedContour outer = ContourOf(b);
    EXPECT_EQ(ContourInside(inner.get(), outer.get()), isInside) << test::Text({a, b});
    insideCount += isInside ? 1 : 0;
    onBoundary += Locate(a[0], outer.get()) == Location::kBoundary ? 1 : 0;
    ReverseContour(inner.get());
    EXPECT_EQ(ContourInside(inner.get(), outer.get()), isInside) << test::Text({a, b});
    EXPECT_FALSE(ContourInside(inner.get(), nullptr));
  }
  EXPECT_GT(onBoundary, 500);
  EXPECT_GT(insideCount, 200);
}

TEST(PointInContour, FalseOnEveryPointOfTheBoundary) {
  const OwnedContour diamond = ContourOf({{4, 0}, {8, 4}, {4, 8}, {0, 4}});
  for (std::int32_t x = -1; x <= 9; ++x) {
    for (std::int32_t y = -1; y <= 9; ++y) {
      const int distance = std::abs(x - 4) + std::abs(y - 4);
      EXPECT_EQ(PointInContour({x, y}, diamond.get()), distance < 4) << x << "," << y;
      EXPECT_EQ(Locate({x, y}, diamond.get()) == Location::kBoundary, distance == 4);
    }
  }
  EXPECT_FALSE(PointInContour({0, 0}, nullptr));
}

TEST(PlaceContour, AHoleGoesToTheInnermostAreaRightBehindItsOuterContour) {
  const auto square = [](std::int32_t lo, std::int32_t hi, bool hole) {
    OwnedContour contour = ContourOf(test::Box(lo, lo, hi, hi));
    if (hole) ReverseContour(contour.get());
    return contour;
  };
  OwnedRing ring;
  const auto expectRefused = [&](const OwnedContour& contour) {
    try {
      PlaceContour(ring.first, contour.get());
      ADD_FAILURE() << "a hole without an area was placed";
    } catch (CException* exception) {
      EXPECT_EQ(ERR::Delete(exception), ERR::FAIL);
    }
  };
  expectRefused(square(1, 2, true));
  for (const std::int32_t inset : {10, 0, 20, 40}) {
    PlaceContour(ring.first, square(inset, 100 - inset, false).release());
  }
  PlaceContour(ring.first, square(30, 35, true).release());
  PlaceContour(ring.first, square(30, 70, true).release());
  expectRefused(square(-9, -3, true));
  const Ring hole = {{30, 30}, {30, 70}, {70, 70}, {70, 30}};
  const test::Areas areas = test::AreasOf(ring.first);
  ASSERT_EQ(areas[2].size(), 3u) << "20..80 is the innermost that contains 30..70";
  EXPECT_EQ(areas[2][1], hole);
}

TEST(GridMapping, EndsMapOntoEndsAndSnappingUndoesUnsnapping) {
  constexpr GridPoint lowest{-GRID_OFFSET, -GRID_OFFSET};
  constexpr GridPoint highest{GRID_MAX - GRID_OFFSET, GRID_MAX - GRID_OFFSET};
  Random random(2);
  for (int round = 0; round < 2000; ++round) {
    SCOPED_TRACE(round);
    const double scale = std::ldexp(1.0, random.Between(-300, 300));
    const WorldPoint lo{random.Between(-1.0, 1.0) * scale, random.Between(-1.0, 1.0) * scale};
    const WorldPoint hi{lo.x + random.Between(1e-6, 2.0) * scale,
                        lo.y + random.Between(1e-6, 2.0) * scale};
    EXPECT_EQ(Snap(lo, lo, hi), lowest);
    EXPECT_EQ(Snap(hi, lo, hi), highest);
    EXPECT_EQ(Unsnap(lowest, lo, hi).x, lo.x);
    const double step = (hi.x - lo.x) / GRID_MAX;
    EXPECT_NEAR(Unsnap(highest, lo, hi).x, hi.x, 1e-9 * step + 4e-16 * std::fabs(hi.x));
    const GridPoint g{random.Between(lowest.gx, highest.gx), random.Between(lowest.gy, highest.gy)};
    EXPECT_EQ(Snap(Unsnap(g, lo, hi), lo, hi), g);
    const WorldPoint p{random.Between(lo.x, hi.x), random.Between(lo.y, hi.y)};
    const double ulps = 8 * std::numeric_limits<double>::epsilon() * scale * 4;
    EXPECT_LE(std::fabs(Unsnap(Snap(p, lo, hi), lo, hi).x - p.x), 0.5 * step + ulps);
  }
  constexpr double inf = std::numeric_limits<double>::infinity();
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  for (const double v : {nan, inf, -inf, 1e300, -1e300}) {
    for (const double extent : {1.0, 0.0, inf, nan, 5e-324}) {
      const GridPoint g = Snap({v, v}, {0.0, 0.0}, {extent, extent});
      EXPECT_TRUE(g.gx >= lowest.gx && g.gx <= highest.gx) << v << " " << extent;
    }
  }
}

// Areas, each with two holes; what is below a step collapses and goes, the others stay.
TEST(SnapShape, CollapsedContoursAndAreasDisappearTheOthersStay) {
  const auto triangle = [](double x, double y, double size) {
    Contour* contour = nullptr;
    AppendVertex(contour, x, y);
    AppendVertex(contour, x + size, y);
    AppendVertex(contour, x + size / 2, y);  // collapses with a neighbour, or stays
    AppendVertex(contour, x, y + size);
    contour->flags |= CONTOUR_CCW;
    return contour;
  };
  for (int specks = 0; specks < 64; ++specks) {  // a bit for each contour but two
    Shape shape;
    test::Areas expected;
    for (int a = 0; a < 3; ++a) {
      const double x = 100.0 * a;
      const auto size = [&](int bit, double large) {
        return (specks >> bit & 1) != 0 ? 0.2 : large;
      };
      const double sizes[] = {size(a, 50), size(3 + a, 8), 0.2};
      PlaceContour(shape.areas, triangle(x, 0, sizes[0]));
      Contour** end = &shape.areas->prev->contours->next;
      for (int hole = 1; hole < 3; ++hole, end = &(*end)->next)
        *end = triangle(x + 9, 9, sizes[hole]);
      if (sizes[0] < 1) continue;
      test::Rings& rings = expected.emplace_back();
      const auto at = [](double v) { return static_cast<std::int32_t>(v) - GRID_OFFSET; };
      const auto add = [&](double px, double py, double s) {
        rings.push_back({{at(px), at(py)},
                         {at(px + s), at(py)},
                         {at(px + s / 2), at(py)},
                         {at(px), at(py + s)}});
      };
      add(x, 0, sizes[0]);
      if (sizes[1] > 1) add(x + 9, 9, sizes[1]);
    }
    SnapShape(shape, {0, 0}, {GRID_MAX, GRID_MAX});
    RebuildTables(shape);
    EXPECT_EQ(test::AreasOf(shape.areas), expected) << specks;
    EXPECT_EQ(shape.contourStarts.size(), test::Flatten(expected).size());
    EXPECT_EQ(shape.vertexTable.size(), 4 * shape.contourStarts.size());
  }
}

TEST(KeySort, OrdersPointsAsAPlainSortDoes) {
  Random random(22);
  for (const std::int32_t half : {1, 150, GRID_OFFSET - 1}) {
    for (const std::uint32_t n : {1u, 50u, 500u, 5000u}) {
      Ring points(n);
      for (GridPoint& p : points) p = {random.Between(-half, half), random.Between(-half, half)};
      std::vector<std::uint32_t> expected(n);
      std::iota(expected.begin(), expected.end(), 0u);
      std::stable_sort(expected.begin(), expected.end(), [&](std::uint32_t a, std::uint32_t b) {
        return std::pair(points[a].gy, points[a].gx) > std::pair(points[b].gy, points[b].gx);
      });
      std::vector<std::uint32_t> firsts;  // the run of each place, by its first place
      for (std::uint32_t k = 0; k < n; ++k) {
        const bool same = k > 0 && points[expected[k]] == points[expected[k - 1]];
        firsts.push_back(same ? firsts.back() : k);
      }
      for (const std::size_t packLimit : {std::size_t{0}, std::size_t{n}}) {
        const KeyOrder order = SortByKey(
            n, [&](std::uint32_t i) { return KeyFromTheTop(points[i]); }, packLimit);
        ASSERT_EQ(order.positions, expected);
        std::vector<std::uint32_t> runs(n);
        std::iota(runs.begin(), runs.end(), 0u);
        for (const auto& run : order.equal) {
          ASSERT_GE(run.end - run.begin, 2u);
          std::fill(runs.begin() + run.begin, runs.begin() + run.end, run.begin);
        }
        ASSERT_EQ(runs, firsts);
      }
    }
  }
}

TEST(BlockPool, KeepsWhatIsTakenAndHandsOutAgainWhatIsGivenBack) {
  struct Record {
    std::size_t value;
    void* link;
  };
  BlockPool<Record> pool;
  Random random(1);
  std::vector<std::pair<Record*, std::size_t>> live;
  for (std::size_t i = 1; i < 5000; ++i) {
    if (!live.empty() && random.Below(3) == 0) {
      const auto at = live.begin() + random.Below(static_cast<std::ptrdiff_t>(live.size()));
      pool.Give(at->first);
      live.erase(at);
      continue;
    }
    Record* const record = pool.Take();
    ASSERT_EQ(record->value, 0u) << "filled with zeros";
    record->value = i;
    live.push_back({record, i});
    std::size_t seen = 0;
    std::size_t sum = 0;
    pool.Find([&](const Record& r) {
      ++seen;
      sum += r.value;
      return false;
    });
    ASSERT_EQ(seen, live.size());
    for (const auto& [kept, value] : live) {
      ASSERT_EQ(kept->value, value);
      sum -= value;
    }
    ASSERT_EQ(sum, 0u);
    if (i % 1000 == 0) {
      pool.Release();
      ASSERT_EQ(pool.Count(), 0u);
      live.clear();
    }
  }
}

}  // namespace
}  // namespace zelvan
