// Every family, turned and mirrored, under several insertion orders: a right
// triangulation, and one set of triangles.
#include <gtest/gtest.h>

#include <cstdint>

#include "support/mesh_checker.h"
#include "support/polygon_families.h"
#include "support/region_oracle.h"
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
      std::vector<std::array<std::uint32_t, 3>> expected;
      for (const std::uint32_t orderSeed : {1u, 2u, 3u}) {
        ASSERT_TRUE(Triangulate(*shape, {.seed = orderSeed}))
            << "round " << round << ", symmetry " << k << ": " << zelvan::test::Describe(region);
        ASSERT_EQ(zelvan::test::CheckMesh(*shape), "") << zelvan::test::Describe(region);
        const auto set = zelvan::test::TriangleSet(*shape);
        if (expected.empty()) expected = set;
        ASSERT_EQ(set, expected) << zelvan::test::Describe(region);
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Triangulation, FamilyTest, testing::ValuesIn(zelvan::test::Families()),
                         [](const auto& param) {
                           std::string name = param.param.name;
                           for (char& c : name) c = c == ' ' ? '_' : c;
                           return name;
                         });

}  // namespace
