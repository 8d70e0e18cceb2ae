// What snap rounding guarantees (docs/ARCHITECTURE.md, S1 to S6), of the edges as the sweep splits
// them: one test each, under its name, by plain looks at all edges and all pixels.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "boolean/operand.h"
#include "boolean/sweep.h"
#include "polygon/area.h"
#include "support/arrangement_oracle.h"

namespace {

using namespace zelvan::test;
using zelvan::GridPoint;
using zelvan::VertexNode;

constexpr std::int32_t kSize = 24;

struct Edge {
  GridPoint from;
  GridPoint to;
  Ring chain;  // the vertices of the snapped edge, its ends included
};

struct Snapped {
  std::vector<oracle::Point> hot;
  std::vector<Edge> edges;
};

Snapped SnappedBySweep(const Rings& rings) {
  zelvan::SweepRecords records;  // outlives the ring, whose new vertices it holds
  const zelvan::OwnedRing ring = RingOf({rings});
  std::vector<std::pair<VertexNode*, VertexNode*>> ends;
  zelvan::ForEachContour(ring.first, [&](zelvan::Contour* contour) {
    zelvan::ForEachVertex(contour, [&](VertexNode* v) { ends.emplace_back(v, v->next); });
  });
  zelvan::MarkOperand(ring.first, true);
  zelvan::SegmentTable table;
  zelvan::FillSegments(table, ring.first);
  zelvan::Sweep(records).Run(table);
  Snapped snapped{oracle::Snap(rings, {}).hot, {}};
  for (const auto& [from, to] : ends) {
    Edge edge{from->grid, to->grid, {from->grid}};
    for (const VertexNode* v = from; v != to; v = v->next) edge.chain.push_back(v->next->grid);
    snapped.edges.push_back(std::move(edge));
  }
  return snapped;
}

// On which side of a line does a point lie? All in half steps.
std::int64_t SideOf(GridPoint a, GridPoint b, GridPoint p) {
  return std::int64_t{b.gx - a.gx} * (p.gy - a.gy) - std::int64_t{b.gy - a.gy} * (p.gx - a.gx);
}

// Does a straight edge meet the pixel around p, its sides included, or only its inside?
bool MeetsPixel(const Edge& e, oracle::Point p, bool insideAlone) {
  const auto x = static_cast<std::int32_t>(2 * p.x), y = static_cast<std::int32_t>(2 * p.y);
  const GridPoint a{2 * e.from.gx, 2 * e.from.gy}, b{2 * e.to.gx, 2 * e.to.gy};
  const int reach = insideAlone ? 0 : 1;
  if (std::max(a.gx, b.gx) <= x - 1 - reach || std::min(a.gx, b.gx) >= x + 1 + reach) return false;
  if (std::max(a.gy, b.gy) <= y - 1 - reach || std::min(a.gy, b.gy) >= y + 1 + reach) return false;
  std::int64_t low = INT64_MAX, high = INT64_MIN;
  for (const GridPoint corner :
       {GridPoint{x - 1, y - 1}, {x + 1, y - 1}, {x - 1, y + 1}, {x + 1, y + 1}}) {
    low = std::min(low, SideOf(a, b, corner));
    high = std::max(high, SideOf(a, b, corner));
  }
  return low < reach && high > -reach;
}

// How often closed lines, given by their edges, run around a point that is not on them.
int WindingNumber(const std::vector<Ring>& lines, GridPoint p) {
  int number = 0;
  for (const Ring& line : lines) {
    for (std::size_t i = 1; i < line.size(); ++i) {
      const GridPoint a = line[i - 1], b = line[i];
      if ((a.gy <= p.gy) == (b.gy <= p.gy)) continue;
      const bool isLeft = SideOf(a, b, p) > 0;
      if (isLeft == (a.gy < b.gy)) number += isLeft ? 1 : -1;
    }
  }
  return number;
}

// Polygons of all families among other rings, that cross, touch and repeat each other.
template <class Property>
void ExpectOfAll(Property property) {
  std::size_t bends = 0;
  for (std::uint64_t seed = 0; seed < 400; ++seed) {
    Random random(seed);
    const std::int32_t size = 4 + random.Below(kSize - 4);
    const Rings rings =
        Mess(random, size, 1 + random.Below(4), random.Pick(kFamilies).make(random, size));
    const Snapped snapped = SnappedBySweep(rings);
    for (const Edge& e : snapped.edges) bends += e.chain.size() - 2;
    property(snapped);
    ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed << ": " << Text(rings);
  }
  EXPECT_GT(bends, 5000u);
}

TEST(SnapRounding, S1EveryVertexIsAnEndpointOrARoundedCrossing) {
  ExpectOfAll([](const Snapped& snapped) {
    for (const Edge& e : snapped.edges) {
      for (const GridPoint p : e.chain)
        EXPECT_TRUE(std::ranges::binary_search(snapped.hot, oracle::Point(p)));
    }
  });
}

TEST(SnapRounding, S2EdgesMoveByHalfAStepAtTheMost) {
  ExpectOfAll([](const Snapped& snapped) {
    for (const Edge& e : snapped.edges) {
      for (const GridPoint p : e.chain) EXPECT_TRUE(MeetsPixel(e, p, false));
    }
  });
}

TEST(SnapRounding, S3EveryEdgeVisitsEachHotPixelThatItMeetsOnce) {
  ExpectOfAll([](const Snapped& snapped) {
    for (const Edge& e : snapped.edges) {
      for (const oracle::Point p : snapped.hot) {
        const auto visits =
            std::ranges::count(e.chain, p, [](GridPoint q) { return oracle::Point(q); });
        EXPECT_LE(visits, 1);
        EXPECT_TRUE(visits == 1 || !MeetsPixel(e, p, true));
      }
    }
  });
}

TEST(SnapRounding, S4SnappedEdgesMeetAtTheirEndsOrInFull) {
  ExpectOfAll([](const Snapped& snapped) {
    std::set<std::pair<oracle::Point, oracle::Point>> pieces;
    for (const Edge& e : snapped.edges) {
      for (std::size_t i = 1; i < e.chain.size(); ++i) {
        pieces.insert(std::minmax(oracle::Point(e.chain[i - 1]), oracle::Point(e.chain[i])));
      }
    }
    oracle::Arrangement arrangement;
    for (const auto& [from, to] : pieces) arrangement.edges.push_back({from, to, {}, 1, {}, {}});
    EXPECT_TRUE(oracle::MeetAtEndsOnly(arrangement));
  });
}

TEST(SnapRounding, S5SnappedEdgesRunMonotonelyAlongBothAxes) {
  ExpectOfAll([](const Snapped& snapped) {
    for (const Edge& e : snapped.edges) {
      const bool right = e.from.gx <= e.to.gx, up = e.from.gy <= e.to.gy;
      EXPECT_TRUE(std::ranges::is_sorted(
          e.chain, [=](GridPoint p, GridPoint q) { return right ? p.gx < q.gx : p.gx > q.gx; }));
      EXPECT_TRUE(std::ranges::is_sorted(
          e.chain, [=](GridPoint p, GridPoint q) { return up ? p.gy < q.gy : p.gy > q.gy; }));
    }
  });
}

// A point that no edge comes within half a step of keeps its winding number.
TEST(SnapRounding, S6RegionsNeverTurnOver) {
  ExpectOfAll([](const Snapped& snapped) {
    std::vector<Ring> straight, bent;
    for (const Edge& e : snapped.edges) {
      straight.push_back({e.from, e.to});
      bent.push_back(e.chain);
    }
    for (std::int32_t i = 0; i < kSize * kSize; ++i) {
      const GridPoint p{i % kSize, i / kSize};
      const auto isNear = [&](const Edge& e) { return MeetsPixel(e, p, false); };
      if (std::ranges::any_of(snapped.edges, isNear)) continue;
      EXPECT_EQ(WindingNumber(bent, p), WindingNumber(straight, p));
    }
  });
}

}  // namespace
