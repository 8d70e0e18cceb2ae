// What random areas do not show: failures, guards, exact signs on full grids, and the work done.
#include "triangulation/engine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "support/failing_allocator.h"
#include "support/mesh_checker.h"
#include "support/polygons.h"
#include "triangulation/area_sweep.h"
#include "triangulation/in_circle.h"
#include "triangulation/region_triangles.h"
#include "triangulation/triangulate.h"

namespace {

using zelvan::GridPoint;
using namespace zelvan::test;

const Rings kSquare{{{0, 0}, {10, 0}, {10, 10}, {0, 10}}};

// Triangles and neighbours of a region, from fresh arrays.
struct Cut {
  explicit Cut(const zelvan::FlatRegion& region, bool delaunay = true)
      : triangles(3 * (region.points.size() + 2 * region.Rings())), neighbours(triangles.size()) {
    work = zelvan::CutRegion(region, delaunay, triangles.data(), neighbours.data());
  }
  std::vector<std::uint32_t> triangles;
  std::vector<std::int32_t> neighbours;
  zelvan::RegionWork work;
};

TEST(Triangulation, AFailingAreaIsLeftWithoutTriangles) {
  const Rings crossing{{{20, 0}, {29, 0}, {20, 9}, {30, 8}, {30, 30}}};
  const auto shape = ShapeOf({kSquare, crossing});
  EXPECT_FALSE(Triangulate(*shape));
  EXPECT_EQ(zelvan::test::CheckTriangles(*shape->areas), "");
  EXPECT_EQ(shape->areas->next->triangles, nullptr);
  EXPECT_EQ(shape->areas->next->triangleCount, 0u);
  EXPECT_EQ(shape->mesh, nullptr);
  for (const std::uint32_t count : {3u, 5u}) {  // a ring is not as long as its contour says
    const auto broken = ShapeOf({kSquare});
    std::uint32_t& said = broken->areas->contours->count;
    EXPECT_EQ(std::exchange(said, count), 4u);
    EXPECT_FALSE(Triangulate(*broken));
    said = 4;
  }
}

TEST(Triangulation, TheOutputArrayIsGuarded) {
  struct Probe : VORNEX::TRIAGLOBS {
    explicit Probe(zelvan::Area* target) { area = target; }
  };
  const auto shape = ShapeOf({kSquare});
  shape->areas->triangles = std::make_unique<zelvan::Triangle[]>(1);
  shape->areas->triangleCount = 1;
  Probe engine(shape->areas);
  const auto& v = shape->vertexTable;
  const auto refuses = [&](auto* a, auto* b, auto* c) {
    try {
      engine.EmitTriangle(a, b, c);
    } catch (...) {
      return ERR::Clear() == ERR::FAIL;
    }
    return false;
  };
  EXPECT_TRUE(refuses(v[2], v[1], v[0]));
  EXPECT_FALSE(refuses(v[0], v[1], v[2]));
  EXPECT_TRUE(refuses(v[0], v[2], v[3]));
}

// Areas in both ways, regions, and a mesh: the old one stays until the new one is whole.
TEST(Triangulation, EveryFailedAllocationIsReported) {
  Random random(9);
  const Rings raster = zelvan::test::LargePolygons(random, 48)[4];
  const auto shape = ShapeOf({raster});
  const zelvan::FlatRegion region = FlatRegionOf(raster);
  const Cut expected(region);
  const std::size_t failures = support::FailEachInTurn(
      [&] {
        zelvan::Area& area = *shape->areas;
        try {
          EXPECT_TRUE(VORNEX::TriangulateBySweep(area));
          VORNEX::TRIAGLOBS().Run(&area);
          EXPECT_EQ(Cut(region).triangles, expected.triangles);
          return true;
        } catch (const std::bad_alloc&) {
        } catch (...) {
          EXPECT_EQ(ERR::Clear(), ERR::NOMEM);
        }
        EXPECT_EQ(area.triangles != nullptr, area.triangleCount != 0);
        return false;
      },
      [&](bool /*struck*/) { shape->areas->triangles.reset(); });
  EXPECT_GT(failures, 30u);

  ASSERT_TRUE(Triangulate(*shape));
  const std::size_t meshFailures = support::FailEachInTurn(
      [&] {
        const VORNEX::TriangleMesh* old = shape->mesh.get();
        const bool done = Triangulate(*shape);
        EXPECT_TRUE(done || shape->mesh.get() == old);
        return done;
      },
      [&](bool) { EXPECT_TRUE(Triangulate(*shape)); });
  EXPECT_GT(meshFailures, 10u);
}

// Two triangles with corners near one circle, of all sizes: a rectangle's, each moved a little.
TEST(SideOfCircle, IsTheSignOfTheDeterminant) {
  const std::uint64_t seed = 22;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  Random random(seed);
  int zeros = 0, signs = 0;
  for (int round = 0; round < 200000; ++round) {
    const std::int32_t reach = (1 << random.Between(1, 30)) - 1;
    const std::int32_t jitter = random.Below(3) == 0 ? reach : random.Below(3);
    const std::int32_t x = random.Between(0, reach);
    const std::int32_t y = random.Between(0, reach);
    const auto moved = [&](std::int32_t gx, std::int32_t gy) {
      const auto near = [&](std::int64_t g) {
        return static_cast<std::int32_t>(std::clamp(g + random.Between(-jitter, jitter),
                                                    std::int64_t{-reach} - 1, std::int64_t{reach}));
      };
      return GridPoint{near(gx), near(gy)};
    };
    const GridPoint a = moved(-x, -y), b = moved(x, y), c = moved(-x, y), d = moved(x, -y);
    const int expected = zelvan::test::InCircle(a, b, c, d);
    ASSERT_EQ(VORNEX::SideOfCircle(a, b, c, d), expected);
    ASSERT_EQ(VORNEX::SideOfCircle(b, a, c, d), -expected);
    zeros += expected == 0 ? 1 : 0;
    signs += expected != 0 && jitter < 3 ? 1 : 0;
  }
  EXPECT_GT(zeros, 10000);
  EXPECT_GT(signs, 10000);
}

// A search looks at a logarithm of the intervals, and a chain's links are looked at once
// when they are pushed and once when they are cut off, however large the area is. As a region,
// it is swept along the axis with less to search; from these triangles less than a flip a vertex
// is left.
TEST(Sweep, WorkFollowsTheSize) {
  Random random(21);
  for (const std::int32_t size : {1000, 4000, 16000}) {
    for (const Rings& rings : zelvan::test::LargePolygons(random, size)) {
      const auto shape = ShapeOf({rings});
      VORNEX::SweepCounts counts;
      ASSERT_TRUE(VORNEX::TriangulateBySweep(*shape->areas, {.counts = &counts}));
      const double n = static_cast<double>(shape->vertexTable.size());
      EXPECT_LE(static_cast<double>(counts.links), 4 * n);
      EXPECT_LE(static_cast<double>(counts.intervals), 2 * n * std::log2(n));
      const zelvan::RegionWork work = Cut(FlatRegionOf(rings)).work;
      EXPECT_LE(static_cast<double>(work.intervals), n * std::log2(n));
      EXPECT_LE(static_cast<double>(work.flips), n);
      EXPECT_LE(static_cast<double>(work.links), n * std::log2(n));
    }
  }
  // A wide ceiling, and below it, by turns, a vertex on the left and a hole on the right.
  constexpr std::int32_t kWide = 2000, kHoles = 500, kTop = 10 * kHoles;
  Rings room{{{-9, 0}, {9 * kWide, 0}}};
  for (std::int32_t x = kWide; x > 0; --x) room[0].push_back({9 * x, kTop + x * (kWide - x) / 9});
  for (std::int32_t i = 0; i < kHoles; ++i) {
    const std::int32_t x = 9 * kWide - 99, y = kTop - 10 * i;
    room[0].push_back({-(i % 2), y});
    room.push_back({{x, y - 5}, {x - 3, y - 8}, {x + 3, y - 8}});
  }
  EXPECT_LE(Cut(FlatRegionOf(room)).work.links, 2u * kWide);
  Ring comb{{50000, 500000}};
  for (std::int32_t x = 1; x <= 100001; ++x) comb.push_back({x, (x % 2 - 1) * 1000});
  const Cut cut(FlatRegionOf({comb}));
  EXPECT_LE(cut.work.intervals, 1000u);
}

}  // namespace
