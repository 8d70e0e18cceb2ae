// Every family, turned and mirrored: a right mesh from the sweep, and the same set of
// triangles by insertion under several orders.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>

#include "support/mesh_checker.h"
#include "support/polygon_families.h"
#include "support/region_oracle.h"
#include "triangulation/area_sweep.h"
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

// A search looks at a logarithm of the intervals, and a chain's links are looked at once
// when they are pushed and once when they are cut off, however large the area is.
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
    }
  }
}

}  // namespace
