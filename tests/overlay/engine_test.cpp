// What the oracle's small cases cannot show: the predicates at both ends of the range, against
// wider arithmetic, and the work on rings that lie on each other by the thousand.
#include <gtest/gtest.h>

#include <boost/multiprecision/cpp_int.hpp>

#include "overlay/exact.h"
#include "overlay/overlay.h"
#include "overlay/region_drawer.h"
#include "overlay/ring_cases.h"
#include "overlay/sweep.h"

namespace {

using namespace zelvan;
using test::Random;
using Wide = boost::multiprecision::checked_int128_t;

// base + n / d to the nearest whole number, halves upward.
overlay::Rounded Nearest(std::int32_t base, Wide n, Wide d) {
  if (d < 0) n = -n, d = -d;
  const Wide twice = 2 * n + d;
  const Wide q = twice / (2 * d) - (twice % (2 * d) < 0 ? 1 : 0);
  return {static_cast<std::int32_t>(base + q), Wide(n - q * d).sign()};
}

Wide WideSide(GridPoint o, GridPoint a, GridPoint b) {
  return (Wide(a.gx) - o.gx) * (Wide(b.gy) - o.gy) - (Wide(a.gy) - o.gy) * (Wide(b.gx) - o.gx);
}

TEST(Overlay, PredicatesAreExactInTheWholeRange) {
  int crossings = 0;
  for (std::uint64_t seed = 0; seed < 100000; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const std::int64_t half = std::int64_t{1} << random.Between(1, 30);
    const auto coordinate = [&] {
      const std::int64_t jitter = random.Below(std::min<std::int64_t>(half, 4));
      const std::int64_t values[] = {-half + jitter, half - 1 - jitter,
                                     random.Below(2 * half) - half, jitter - 1};
      return static_cast<std::int32_t>(values[random.Below(4)]);
    };
    GridPoint p[4];
    for (auto& [x, y] : p) x = coordinate(), y = coordinate();
    for (const auto i : {0, 2}) {
      if (p[i + 1] < p[i]) std::swap(p[i], p[i + 1]);
    }
    const Wide side[] = {WideSide(p[0], p[1], p[2]), WideSide(p[0], p[1], p[3]),
                         WideSide(p[2], p[3], p[0]), WideSide(p[2], p[3], p[1])};
    ASSERT_EQ(overlay::SideOf(p[0], p[1], p[2]), side[0]);
    if (side[0].sign() * side[1].sign() < 0 && side[2].sign() * side[3].sign() < 0) {
      ++crossings;
      const overlay::Crossing at = overlay::CrossingOf(p[0], p[1], p[2], p[3]);
      const Wide d = side[2] - side[3];
      const auto [x, sideX] = Nearest(p[0].gx, side[2] * (Wide(p[1].gx) - p[0].gx), d);
      const auto [y, sideY] = Nearest(p[0].gy, side[2] * (Wide(p[1].gy) - p[0].gy), d);
      ASSERT_EQ(at.pixel, (GridPoint{x, y}));
      ASSERT_TRUE(at.sideX == sideX && at.sideY == sideY) << at.sideX << at.sideY;
    }
    if (p[0].gx == p[1].gx) continue;
    const std::int64_t ends[] = {2 * std::int64_t{p[0].gx} - 1, 2 * std::int64_t{p[1].gx} + 1};
    for (const std::int64_t twiceX :
         {ends[0], ends[1], ends[0] + random.Below(ends[1] - ends[0])}) {
      const Wide height = (Wide(twiceX) - 2 * Wide(p[0].gx)) * (Wide(p[1].gy) - p[0].gy);
      ASSERT_EQ(overlay::HeightAt({p[0], p[1], {}}, twiceX),
                Nearest(p[0].gy, height, 2 * (Wide(p[1].gx) - p[0].gx)).value);
    }
  }
  EXPECT_GT(crossings, 10000);
}

struct Work {
  std::uint64_t stops;
  std::size_t lines;      // edges, and those that bundles became
  std::uint64_t rounded;  // crossings off the grid
};

Work WorkOf(const test::Rings& rings) {
  overlay::EdgeSet edges;
  for (const test::Ring& ring : rings) edges.AddRing(ring, {1, 0});
  edges.SortVertices();
  overlay::RegionDrawer drawer({overlay::Operation::kUnite, FillRule::NonZero, FillRule::NonZero});
  overlay::Sweep<overlay::RegionDrawer> sweep;
  sweep.Run(edges, drawer, overlay::Search::kPixels);
  return {sweep.Stops(), edges.edges.size(), sweep.RoundedCrossings()};
}

// Each place and each exchange queues two crossings at most.
TEST(Overlay, StopsAreBoundedByVerticesAndCrossings) {
  for (std::uint64_t seed = 0; seed < 1000; ++seed) {
    const test::Rings rings = test::RandomCase(seed).operands[0];
    std::size_t vertices = 0;
    for (const test::Ring& ring : rings) vertices += ring.size();
    const oracle::Arrangement right = oracle::Snap(rings, {}, oracle::Bends::kNeeded);
    const Work work = WorkOf(rings);
    ASSERT_LE(work.stops, 3 * (vertices + right.crossings)) << seed;
    ASSERT_LE(work.rounded, right.crossings) << seed;
  }
}

TEST(Overlay, EdgesOnEachOtherAreSweptOnce) {
  constexpr std::int32_t n = 20000;
  Random random(1);
  const auto expectWork = [](const test::Rings& rings, std::uint64_t stops, std::size_t lines) {
    const Work work = WorkOf(rings);
    EXPECT_TRUE(work.stops <= stops && work.lines <= lines) << work.stops << ", " << work.lines;
  };
  test::Rings bars, edges(n, {{0, 0}, {4 * n, 0}, {4 * n, 9}});
  test::Ring line{{n, 0}};  // to and fro, with one point beside it
  for (std::int32_t i = 0; i < n; ++i) {
    bars.push_back(test::Box(i, 0, 2 * n - i, n - i));
    edges.push_back({{4 * i, 0}, {4 * i + 1, -9}, {4 * i + 2, -9}});  // a vertex on all edges
    line.push_back(test::PointIn(random, n));
    line.back().gy = 3 * line.back().gx;
  }
  expectWork(bars, 12 * n, 8 * n);
  expectWork(edges, 12 * n, 8 * n);
  expectWork({line}, 4 * n, 5 * n);
  for (const std::int32_t places : {2, 4}) {
    test::Ring mess;
    for (std::int32_t i = 0; i < n; ++i) mess.push_back(test::PointIn(random, places - 1));
    expectWork({mess}, 1000, n + 1000);
  }
}

}  // namespace
