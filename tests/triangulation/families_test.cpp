// Every family, turned and mirrored: a right mesh from the sweep, the same set of
// triangles by insertion under several orders, and one Delaunay triangulation.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>

#include "support/delaunay_checker.h"
#include "support/mesh_checker.h"
#include "support/polygon_families.h"
#include "support/region_oracle.h"
#include "triangulation/area_sweep.h"
#include "triangulation/delaunay.h"
#include "triangulation/in_circle.h"
#include "triangulation/triangulate.h"

namespace {

using zelvan::test::Family;
using zelvan::test::Random;
using zelvan::test::Region;
using zelvan::test::Ring;

class FamilyTest : public testing::TestWithParam<Family> {};

TEST_P(FamilyTest, TriangulatesInAllSymmetriesAndOrders) {
  const std::uint64_t seed = 20;
  SCOPED_TRACE(testing::Message() << GetParam().name << ", seed " << seed);
  Random random(seed);
  for (int round = 0; round < 24; ++round) {
    const Region region = GetParam().make(random);
    ASSERT_TRUE(zelvan::test::BoundsAnArea(region)) << zelvan::test::Describe(region);
    for (int k = 0; k < 8; ++k) {
      const auto shape = zelvan::test::MakeShape({zelvan::test::Symmetric(region, k)});
      if ((round + k) % 3 == 0) {
        ASSERT_EQ(zelvan::test::CheckDelaunay(*shape->areas), "") << zelvan::test::Describe(region);
      }
      ASSERT_TRUE(VORNEX::TriangulateBySweep(*shape->areas)) << zelvan::test::Describe(region);
      const auto expected = zelvan::test::TriangleSet(*shape);
      for (const std::uint32_t orderSeed : {1u, 2u, 3u}) {
        ASSERT_EQ(VORNEX::TriangulateAreas(shape->areas, {.seed = orderSeed}), ERR::OK)
            << "round " << round << ", symmetry " << k << ": " << zelvan::test::Describe(region);
        ASSERT_EQ(zelvan::test::TriangleSet(*shape), expected) << zelvan::test::Describe(region);
      }
      // As for an area that the sweep gave up: the mesh from the triangles alone.
      shape->mesh = {new VORNEX::TriangleMesh(shape->vertexTable),
                     [](VORNEX::TriangleMesh* mesh) noexcept { delete mesh; }};
      VORNEX::FillMesh(*shape->mesh, *shape->areas);
      ASSERT_EQ(zelvan::test::CheckMesh(*shape), "") << zelvan::test::Describe(region);
      ASSERT_TRUE(Triangulate(*shape));
      ASSERT_EQ(zelvan::test::TriangleSet(*shape), expected);
      ASSERT_EQ(zelvan::test::CheckMesh(*shape), "") << zelvan::test::Describe(region);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Triangulation, FamilyTest, testing::ValuesIn(zelvan::test::Families()),
                         [](const auto& param) {
                           std::string name = param.param.name;
                           for (char& c : name) c = c == ' ' ? '_' : c;
                           return name;
                         });

// Points near one circle, of all sizes: the corners of a rectangle, each moved a little.
TEST(SideOfCircle, IsTheSignOfTheDeterminant) {
  const std::uint64_t seed = 22;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  Random random(seed);
  int zeros = 0;
  for (int round = 0; round < 200000; ++round) {
    const std::int32_t reach = (1 << random.Between(1, 19)) - 1;
    const std::int32_t jitter = random.Below(3) == 0 ? reach : random.Below(3);
    const std::int32_t x = random.Between(0, reach);
    const std::int32_t y = random.Between(0, reach);
    const auto moved = [&](std::int32_t gx, std::int32_t gy) {
      return zelvan::GridPoint{std::clamp(gx + random.Between(-jitter, jitter), -reach - 1, reach),
                               std::clamp(gy + random.Between(-jitter, jitter), -reach - 1, reach)};
    };
    const zelvan::GridPoint a = moved(-x, -y), b = moved(x, y), c = moved(-x, y), d = moved(x, -y);
    const int expected = zelvan::test::InCircle(a, b, c, d);
    ASSERT_EQ(VORNEX::SideOfCircle(a, b, c, d), expected);
    ASSERT_EQ(VORNEX::SideOfCircle(b, a, c, d), -expected);
    zeros += expected == 0 ? 1 : 0;
  }
  EXPECT_GT(zeros, 10000);
}

// A search looks at a logarithm of the intervals, and a chain's links are looked at once
// when they are pushed and once when they are cut off, however large the area is. From
// the fronts' triangles less than a flip a vertex is left.
TEST(Sweep, WorkFollowsTheSize) {
  Random random(21);
  for (const std::int32_t size : {1000, 4000, 16000}) {
    const Region regions[] = {
        {zelvan::test::Comb(size / 2, false, random)}, {zelvan::test::Comb(size / 2, true, random)},
        {zelvan::test::Zigzag(size / 2, random)},      {zelvan::test::Spiral(size / 2)},
        {zelvan::test::FewRows(size / 2, random)},     zelvan::test::WithHoles(size / 4, random)};
    for (const Region& region : regions) {
      const auto shape = zelvan::test::MakeShape({region});
      VORNEX::SweepCounts counts;
      ASSERT_TRUE(VORNEX::TriangulateBySweep(*shape->areas, {.counts = &counts}));
      const double n = static_cast<double>(shape->vertexTable.size());
      EXPECT_LE(static_cast<double>(counts.links), 4 * n);
      EXPECT_LE(static_cast<double>(counts.intervals), 2 * n * std::log2(n));
      std::vector<zelvan::GridPoint> places;
      for (const zelvan::VertexNode* v : shape->vertexTable) places.push_back(v->grid);
      auto flat = VORNEX::CutArea(*shape->areas, VORNEX::Cutting::kNearby);
      EXPECT_LE(static_cast<double>(VORNEX::FlipToDelaunay(places, flat)), n);
    }
  }
}

}  // namespace
