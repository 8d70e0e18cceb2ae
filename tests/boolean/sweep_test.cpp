// The sweep: exact arithmetic, status list, and the numbered
// guarantees of snap rounding as docs/ARCHITECTURE.md states them.
#include "boolean/sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <tuple>

#include "boolean/crossing_analysis.h"
#include "boolean/exact.h"
#include "boolean/fixtures.h"
#include "boolean/labelling.h"
#include "boolean/operand.h"

namespace zelvan {
namespace {

using fixtures::Random;
using oracle::Point;
using oracle::Ring;
using oracle::Rings;

// A sweep over two operands, kept with its records.
class Swept {
 public:
  Swept(const Rings& a, const Rings& b, ColumnSearch search = ColumnSearch::kIndexed)
      : a_(fixtures::RingOf(a)), b_(fixtures::RingOf(b)), sweep(records_, search) {
    MarkOperand(a_.first, true);
    MarkOperand(b_.first, false);
    FillSegments(table, a_.first);
    FillSegments(table, b_.first);
    sweep.Run(table);
  }

  // The vertices of a segment in order, from its lower to its upper end.
  static Ring Chain(const Segment& s) {
    Ring chain;
    for (const VertexNode* v = s.lower;; v = s.forward != 0 ? v->next : v->prev) {
      chain.push_back({v->grid.gx, v->grid.gy});
      if (v == s.upper) return chain;
    }
  }

  // Everything that the sweep has made: chains, the ring of every pixel, labels.
  std::vector<std::tuple<Point, Point, std::uint32_t>> Everything() const {
    std::vector<std::tuple<Point, Point, std::uint32_t>> all;
    for (const Segment& s : table) {
      for (const VertexNode* v = s.lower;; v = s.forward != 0 ? v->next : v->prev) {
        const VertexNode* met = v->crossNext == nullptr ? v : v->crossNext->next->vertex;
        all.push_back(
            {{v->grid.gx, v->grid.gy}, {met->next->grid.gx, met->next->grid.gy}, v->flags});
        if (v == s.upper) break;
      }
    }
    return all;
  }

  void Label() {
    AnalysePixels(sweep.Pixels(), a_.first, b_.first, records_.entries);
    LabelEdges(sweep.Seeds(), {});
  }

 private:
  SweepRecords records_;
  OwnedRing a_;
  OwnedRing b_;

 public:
  SegmentTable table;
  Sweep sweep;
};

Rings Tangle(Random& random, std::int64_t width, std::int64_t height, std::int64_t n) {
  Ring ring;
  for (std::int64_t i = 0; i < n; ++i) {
    ring.push_back({random.Below(width) - width / 2, random.Below(height) - height / 2});
    if (i > 0 && ring.back() == ring[ring.size() - 2]) ring.pop_back();
  }
  if (ring.front() == ring.back()) ring.pop_back();
  return {ring};
}

TEST(Exact, CrossingsAtTheCornersOfTheGridDoNotOverflow) {
  constexpr std::int32_t lo = -GRID_OFFSET;
  constexpr std::int32_t hi = GRID_MAX - GRID_OFFSET;
  const Crossing middle = FindCrossing({lo, lo}, {hi, hi}, {lo, hi}, {hi, lo});
  EXPECT_TRUE(middle.counts);
  EXPECT_EQ(RoundRatio(middle.xNum, middle.den).value, 0);  // -1/2, halves upward
  EXPECT_EQ(RoundRatio(middle.xNum, middle.den).sign, -1);
  // Nearly parallel, long, and just inside both: the largest numerators.
  const Crossing far = FindCrossing({lo, hi - 1}, {hi, hi}, {lo, hi}, {hi, hi - 1});
  EXPECT_TRUE(far.counts);
  EXPECT_EQ(RoundRatio(far.yNum, far.den).value, hi);
  EXPECT_FALSE(FindCrossing({0, 0}, {4, 4}, {2, 2}, {5, 0}).counts) << "touches at an end";
  EXPECT_FALSE(FindCrossing({0, 0}, {4, 4}, {1, 1}, {3, 3}).counts) << "collinear";
}

TEST(Sweep, IndexedColumnsGiveWhatLookingAtEverySegmentGives) {
  const std::pair<std::int64_t, std::int64_t> sizes[] = {
      {1000000, 1000000}, {100000, 50}, {200, 100000}, {300, 300}};
  std::uint64_t crossings = 0;
  for (const auto& [width, height] : sizes) {
    for (std::uint64_t seed = 0; seed < 6; ++seed) {
      Random random(seed);
      const Rings a = Tangle(random, width, height, 90);
      const Rings b = Tangle(random, width, height, 60);
      Swept indexed(a, b);
      Swept plain(a, b, ColumnSearch::kEverySegment);
      indexed.Label();
      plain.Label();
      ASSERT_EQ(indexed.Everything(), plain.Everything())
          << width << " x " << height << ", " << seed;
      crossings += indexed.sweep.CrossingCount();
    }
  }
  EXPECT_GT(crossings, 30000u);
}

TEST(Sweep, WorkIsBoundedBySegmentsAndCrossings) {
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    Random random(seed);
    const std::int64_t size = 4 + random.Below(200);
    const Swept swept(Tangle(random, size, size, 40), Tangle(random, size, size, 20));
    const std::uint64_t n = swept.table.size();
    EXPECT_LE(swept.sweep.CrossingCount(), n * (n - 1) / 2);
    EXPECT_LE(swept.sweep.EventCount(), 5 * n + 2 * swept.sweep.CrossingCount());
  }
}

// Random cases for the guarantees, with what the oracle makes of them.
class SnapRounding : public ::testing::Test {
 protected:
  template <class Visit>
  void ForEachCase(Visit visit) {
    for (std::uint64_t seed = 0; seed < 800; ++seed) {
      Random random(seed);
      const std::int64_t size = 5 + random.Below(40);
      const auto pick = [&] {
        return fixtures::kFamilies[static_cast<std::size_t>(random.Below(8))].make(random, size);
      };
      const Rings a = pick();
      const Rings b = pick();
      SCOPED_TRACE("seed " + std::to_string(seed));
      Swept swept(a, b);
      visit(swept, oracle::Snap(a, b));
      if (HasFailure()) return;
    }
  }
};

// Is the pixel's closed square within reach of the segment? In quarters of steps
// along both axes, by the separating lines.
bool PixelTouches(const Segment& s, Point pixel) {
  const GridPoint a = s.lower->grid;
  const GridPoint b = s.upper->grid;
  const auto reach = [](std::int32_t p, std::int32_t q, std::int64_t c) {
    return 2 * std::min(p, q) <= 2 * c + 1 && 2 * c - 1 <= 2 * std::max(p, q);
  };
  const std::int64_t dx = b.gx - a.gx;
  const std::int64_t dy = b.gy - a.gy;
  const std::int64_t offset = dx * (pixel.y - a.gy) - dy * (pixel.x - a.gx);
  return reach(a.gx, b.gx, pixel.x) && reach(a.gy, b.gy, pixel.y) &&
         2 * std::abs(offset) <= std::abs(dx) + std::abs(dy);
}

// The edges are those of the oracle, each as often as there, so their ends are hot
// pixels (S1), and none of the oracle's edges meet but at their ends (S4).
TEST_F(SnapRounding, S1_S3_S4_EveryEdgeVisitsTheHotPixelsThatItMeetsAndNoOther) {
  const auto grid = [](Point p) {
    return GridPoint{static_cast<std::int32_t>(p.x), static_cast<std::int32_t>(p.y)};
  };
  const auto side = [&](const oracle::Edge& e, Point p) {
    const std::int64_t c = Cross(grid(e.from), grid(e.to), grid(p));
    return (c > 0) - (c < 0);
  };
  std::size_t splits = 0;
  ForEachCase([&](const Swept& swept, const oracle::Arrangement& oracle) {
    std::vector<std::pair<Point, Point>> edges;
    std::vector<std::pair<Point, Point>> expected;
    for (const Segment& s : swept.table) {
      const Ring chain = Swept::Chain(s);
      for (std::size_t i = 1; i < chain.size(); ++i) {
        edges.push_back(std::minmax(chain[i - 1], chain[i]));
      }
    }
    for (const oracle::Edge& e : oracle.edges) {
      expected.insert(expected.end(), e.copies, {e.from, e.to});
      for (const oracle::Edge& f : oracle.edges) {
        EXPECT_FALSE(side(e, f.from) * side(e, f.to) < 0 && side(f, e.from) * side(f, e.to) < 0);
        EXPECT_FALSE(side(e, f.from) == 0 && e.from < f.from && f.from < e.to);
      }
    }
    splits += edges.size() - swept.table.size();
    std::sort(edges.begin(), edges.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(edges, expected);
  });
  EXPECT_GT(splits, 5000u) << "edges were split";
}

TEST_F(SnapRounding, S2_S5_EdgesMoveByHalfAStepAtMostAndStayMonotone) {
  std::int64_t moved = 0;
  ForEachCase([&](const Swept& swept, const oracle::Arrangement& /*oracle*/) {
    for (const Segment& s : swept.table) {
      const Ring chain = Swept::Chain(s);
      const bool rises = s.high.gy >= s.low.gy;
      for (std::size_t i = 0; i < chain.size(); ++i) {
        const Point p = chain[i];
        EXPECT_TRUE(PixelTouches(s, p));
        moved += Cross(s.low, s.high,
                       {static_cast<std::int32_t>(p.x), static_cast<std::int32_t>(p.y)}) != 0;
        if (i == 0) continue;
        EXPECT_LE(chain[i - 1].x, p.x);
        EXPECT_TRUE(rises ? chain[i - 1].y <= p.y : chain[i - 1].y >= p.y);
        EXPECT_NE(chain[i - 1], p);
      }
    }
  });
  EXPECT_GT(moved, 3000);
}

// What was left stays left or vanishes: simple contours never turn inside out.
TEST_F(SnapRounding, S6_RegionsMayCollapseButNeverTurnOver) {
  std::size_t collapsed = 0;
  for (std::uint64_t seed = 0; seed < 3000; ++seed) {
    Random random(seed);
    const std::int64_t size = 4 + random.Below(16);
    Swept swept({fixtures::SimplePolygon(random, size, 3 + random.Below(8))},
                {fixtures::SimplePolygon(random, size, 3 + random.Below(8))});
    swept.Label();
    for (const Segment& s : swept.table) {
      for (const VertexNode* v = s.lower; v != s.upper; v = s.forward != 0 ? v->next : v->prev) {
        const VertexNode* holder = s.forward != 0 ? v : v->prev;
        ASSERT_EQ(holder->flags & TURNED, 0u) << "seed " << seed;
        collapsed += LabelOf(holder) == LABEL_DROPPED;
      }
    }
  }
  EXPECT_GT(collapsed, 500u);
}

}  // namespace
}  // namespace zelvan
