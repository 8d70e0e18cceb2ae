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
      ASSERT_TRUE(VORNEX::TriangulateBySweep(*shape->areas, nullptr, {}, &counts));
      const double n = static_cast<double>(shape->vertexTable.size());
      EXPECT_LE(static_cast<double>(counts.links), 4 * n);
      EXPECT_LE(static_cast<double>(counts.intervals), 2 * n * std::log2(n));
    }
  }
}

TEST(Sweep, OrderIsThatOfAPlainSort) {
  const std::uint64_t seed = 22;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  Random random(seed);
  for (const std::int32_t side : {3, 300, zelvan::GRID_MAX}) {
    for (const std::int32_t n : {1, 50, 500, 5000}) {
      std::vector<VORNEX::SweepVertex> vertices(static_cast<std::size_t>(n));
      for (VORNEX::SweepVertex& v : vertices) {
        v.point = {random.Below(side) - side / 2, random.Below(side) - side / 2};
      }
      std::vector<std::uint32_t> expected(vertices.size());
      std::iota(expected.begin(), expected.end(), 0u);
      std::stable_sort(expected.begin(), expected.end(), [&](std::uint32_t a, std::uint32_t b) {
        return VORNEX::GreaterThan(vertices[a].point, vertices[b].point);
      });
      for (const std::size_t packLimit : {std::size_t{0}, vertices.size()}) {
        const VORNEX::PointOrder order = VORNEX::OrderFromTheTop(vertices, packLimit);
        ASSERT_EQ(order.positions, expected);
        std::size_t inRuns = 0;
        for (const auto& run : order.shared) {
          inRuns += run.end - run.begin;
          for (std::uint32_t k = run.begin; k < run.end; ++k) {
            ASSERT_EQ(vertices[expected[k]].point, vertices[expected[run.begin]].point);
          }
        }
        std::size_t sharing = 0;
        for (std::size_t k = 0; k < expected.size(); ++k) {
          const auto same = [&](std::size_t j) {
            return j < expected.size() &&
                   vertices[expected[j]].point == vertices[expected[k]].point;
          };
          sharing += same(k - 1) || same(k + 1) ? 1 : 0;
        }
        ASSERT_EQ(inRuns, sharing);
      }
    }
  }
}

}  // namespace
