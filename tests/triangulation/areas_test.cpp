// Areas cut in every way that there is: generated families, all polygons on a tiny grid, where
// everything is aligned, collinear or touching, and random closed paths against the oracle
// of what bounds an area.
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "support/mesh_checker.h"
#include "support/polygon_families.h"
#include "support/region_oracle.h"
#include "triangulation/mesh.h"
#include "triangulation/triangulate.h"

namespace {

using zelvan::test::BoundsAnArea;
using zelvan::test::CheckMesh;
using zelvan::test::CutInAllWays;
using zelvan::test::Cuts;
using zelvan::test::Describe;
using zelvan::test::MakeShape;
using zelvan::test::Random;
using zelvan::test::Region;
using zelvan::test::Ring;

constexpr std::uint64_t kSeed = 20;

TEST(Families, AreCutInAllSymmetriesAndOrders) {
  Random random(kSeed);
  for (const zelvan::test::Family& family : zelvan::test::Families()) {
    for (int round = 0; round < 120; ++round) {
      const Region region = zelvan::test::Symmetric(family.make(random), round % 8);
      SCOPED_TRACE(family.name + ", seed " + std::to_string(kSeed) + ": " + Describe(region));
      if (!BoundsAnArea(region)) continue;  // spikes at the corner of the grid may meet
      const auto shape = MakeShape({region});
      ASSERT_EQ(CutInAllWays(shape->areas, true, {{.seed = 1}, {.seed = 2}}).wrong, "");
      // As for an area that the sweep gave up: the mesh from the triangles alone.
      shape->mesh = {new VORNEX::TriangleMesh(shape->vertexTable),
                     [](VORNEX::TriangleMesh* mesh) noexcept { delete mesh; }};
      VORNEX::FillMesh(*shape->mesh, *shape->areas);
      ASSERT_EQ(CheckMesh(*shape), "");
      ASSERT_TRUE(Triangulate(*shape));
      ASSERT_EQ(CheckMesh(*shape), "");
    }
  }
}

// The numbers of rings are those of a separate count over all sequences.
TEST(SmallPolygons, AllOnAGridOfFourByFour) {
  const std::size_t known[] = {516, 2290, 10004, 35376};
  Random random(kSeed);
  for (std::int32_t n = 3; n <= 6; ++n) {
    std::size_t count = 0;
    zelvan::test::ForEachSmallRing(4, n, true, [&](const Ring& ring) {
      ++count;
      if (testing::Test::HasFailure() || (n == 6 && count % 4 != 0)) return;
      auto order = random.Permutation(static_cast<std::size_t>(n));
      EXPECT_EQ(CutInAllWays(MakeShape({{ring}})->areas, true, {{.positions = order}}).wrong, "")
          << Describe({ring});
    });
    EXPECT_EQ(count, known[n - 3]) << n;
  }
}

// A closed path on a tiny grid, most of them grown as areas; or rings that cross anyhow.
Region RandomPath(Random& random) {
  const bool wild = random.Below(100) == 0;
  const std::int32_t side = wild && random.Below(2) == 0 ? 500000 : random.Between(3, 7);
  const auto point = [&] { return zelvan::GridPoint{random.Below(side), random.Below(side)}; };
  Region region(static_cast<std::size_t>(wild ? random.Between(1, 3) : 1));
  for (Ring& ring : region) {
    const auto wanted = static_cast<std::size_t>(random.Between(5, wild ? 60 : 12));
    const bool onlyAreas = !wild && random.Below(4) != 0;
    for (int k = 0; k < 3; ++k) ring.push_back(point());
    for (std::size_t k = 0; k < 3 * wanted && ring.size() < wanted; ++k) {
      Ring longer = ring;
      longer.insert(longer.begin() + random.Below(static_cast<std::int32_t>(ring.size())), point());
      if (!onlyAreas || BoundsAnArea({longer})) ring = longer;
    }
    if (!wild && zelvan::test::TwiceSigned(ring) <= 0) std::reverse(ring.begin(), ring.end());
  }
  return region;
}

TEST(SmallPolygons, RandomPathsAgainstTheOracle) {
  SCOPED_TRACE(testing::Message() << "seed " << kSeed);
  Random random(kSeed);
  int touching = 0;
  int refused = 0;
  int byInsertion = 0;
  for (int round = 0; round < 30000 && !HasFailure(); ++round) {
    const Region region = RandomPath(random);
    const bool isArea = region.size() == 1 && BoundsAnArea(region);
    if (isArea && !zelvan::test::IsSimple(region)) ++touching;
    const auto shape = MakeShape({region});
    const auto order = random.Permutation(shape->vertexTable.size());
    const auto again = random.Permutation(shape->vertexTable.size());
    const Cuts cuts =
        CutInAllWays(shape->areas, isArea, {{.positions = order}, {.positions = again}});
    EXPECT_EQ(cuts.wrong, "") << Describe(region);
    refused += cuts.inserted ? 0 : 1;
    byInsertion += cuts.inserted && !cuts.swept ? 1 : 0;
  }
  EXPECT_GT(touching, 250) << "too few cases exercise contact";
  EXPECT_GT(refused, 300);
  EXPECT_GE(byInsertion, 2) << "too few cases that the sweep gives up";
}

}  // namespace
