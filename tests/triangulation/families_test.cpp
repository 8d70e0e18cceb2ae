// Every family, turned and mirrored: a right mesh from the sweep, and the same set of
// triangles by insertion under several orders.
#include <gtest/gtest.h>

#include <cstdint>

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

}  // namespace
