// The parts of the polygon model: containment, and the grid.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

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
      for (GridPoint& p : *ring) p = {1024 * p.gx, 1024 * p.gy};
    }
    const oracle::Arrangement ab = oracle::Snap({a}, {b});
    const bool isInside = oracle::BoundaryOf(ab, 2).empty();
    const bool surrounds = oracle::BoundaryOf(oracle::Snap({b}, {a}), 2).empty();
    const bool apart = oracle::BoundaryOf(ab, 1).empty();
    if (ab.cancelled != 0 || (!isInside && !surrounds && !apart)) continue;
    const OwnedContour inner = ContourOf(a);
    const GridPoint p{1024 * random.Between(-1, 5), 1024 * random.Between(-1, 5)};
    const Ring around = test::Box(p.gx - 64, p.gy - 64, p.gx + 64, p.gy + 64);
    EXPECT_EQ(PointInContour(p, inner.get()),
              oracle::BoundaryOf(oracle::Snap({around}, {a}), 2).empty())
        << test::Text({{p}, a});
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
    const GridPoint g{random.Between(lowest.gx, highest.gx), random.Between(lowest.gy, highest.gy)};
    EXPECT_EQ(Snap(Unsnap(g, lo, hi), lo, hi), g);
  }
}

// Onto a coarser grid: equal neighbours become one, what has less than three points goes, and
// with an outer contour its holes.
TEST(SnapShape, KeepsWhatDoesNotCollapse) {
  Random random(8);
  int collapsed = 0;
  for (int round = 0; round < 5000; ++round) {
    test::Areas drawn(random.Below(std::size_t{4}));
    const WorldPoint fine{GRID_MAX, GRID_MAX};
    const WorldPoint coarse{fine.x * random.Between(1, 9), fine.y * random.Between(1, 9)};
    test::Areas expected;
    std::vector<GridBox> boxes;
    for (test::Rings& rings : drawn) {
      test::Rings kept;
      for (int k = random.Between(1, 4); k > 0; --k) {
        rings.push_back(test::SimplePolygon(random, 20, random.Between(3, 7)));
        Ring ring;
        GridBox box{{GRID_MAX, GRID_MAX}, {-GRID_MAX, -GRID_MAX}};
        for (const GridPoint p : rings.back()) {
          const GridPoint g = Snap(Unsnap(p, {0, 0}, fine), {0, 0}, coarse);
          GrowBox(box, g);
          if (ring.empty() || ring.back() != g) ring.push_back(g);
        }
        if (ring.back() == ring.front()) ring.pop_back();
        const bool stays = ring.size() >= 3 && (rings.size() == 1 || !kept.empty());
        collapsed += stays ? 0 : 1;
        if (!stays) continue;
        kept.push_back(ring);
        boxes.push_back(box);
      }
      if (!kept.empty()) expected.push_back(kept);
    }
    Shape shape;
    shape.areas = test::RingOf(drawn).release();
    UnsnapRing(shape.areas, {0, 0}, fine);
    SnapShape(shape, {0, 0}, coarse);
    ASSERT_EQ(test::AreasOf(shape.areas), expected) << round;
    RebuildTables(shape);
    Ring all;
    for (const Ring& ring : test::Flatten(expected))
      all.insert(all.end(), ring.begin(), ring.end());
    for (int k = 0; k < 8; ++k) {
      GridPoint p = all.empty() ? GridPoint{0, 0} : random.Pick(all);
      if (k % 2 == 0) p.gy += random.Between(-9, 9);
      const auto found = std::find(all.begin(), all.end(), p);
      ASSERT_EQ(shape.vertexTable.Find(p), found == all.end() ? -1 : found - all.begin());
    }
    std::size_t i = 0;
    ForEachContour(shape.areas, [&](const Contour* contour) {
      EXPECT_EQ(contour->gridBox.min, boxes[i].min);
      EXPECT_EQ(contour->gridBox.max, boxes[i++].max);
      EXPECT_EQ(contour->count, test::Flatten(expected)[i - 1].size());
    });
  }
  EXPECT_GT(collapsed, 500);
}

// Few, many and very many keys of 1 to 62 bits, spread or on few values.
TEST(KeySorter, SortsAsComparisonsDo) {
  Random random(22);
  KeySorter sorter;
  for (int round = 0; round < 100; ++round) {
    const auto n = static_cast<std::uint32_t>(random.Below(round % 10 == 0 ? 40000 : 4000));
    const int bits = random.Between(1, 62), low = random.Below(bits);
    const auto key = [&] { return random.Bits() >> (64 - bits) >> low << random.Below(low + 1); };
    std::vector<std::pair<std::uint64_t, std::uint32_t>> keys(n);
    for (std::uint32_t i = 0; i < n; ++i) keys[i] = {key(), i};
    const auto keyOf = [given = keys](std::uint32_t i) { return given[i].first; };
    sorter.Sort(n, bits, keyOf);
    std::sort(keys.begin(), keys.end());
    for (std::uint32_t k = 0; k < n; ++k) {
      ASSERT_EQ(sorter[k], keys[k].second);
      ASSERT_TRUE(k == 0 || keys[k - 1].first != keys[k].first || sorter.MayBeEqual(k - 1, k));
    }
    const auto point = [&](std::uint32_t i) { return std::pair(keyOf(i) >> 22, i); };  // 40 bits
    const KeyOrder order = SortByKey(n, [&](std::uint32_t i) { return point(i).first; });
    std::size_t equal = 0;
    for (std::uint32_t k = 1; k < n; ++k) {
      const auto a = point(order.positions[k - 1]), b = point(order.positions[k]);
      ASSERT_LT(a, b);
      equal += a.first == b.first ? 1 : 0;
    }
    for (const KeyOrder::Run run : order.equal) {
      ASSERT_EQ(point(order.positions[run.begin]).first, point(order.positions[run.end - 1]).first);
      equal -= run.end - run.begin - 1;
    }
    ASSERT_EQ(equal, 0u);
  }
}

}  // namespace
}  // namespace zelvan
