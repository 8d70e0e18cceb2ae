// Areas cut in both ways and as regions: the regions of random rings, which touch themselves in
// every manner, large polygons, and closed paths on tiny grids as they come.
#include <gtest/gtest.h>

#include <algorithm>

#include "boolean/boolean.h"
#include "boolean/soundness.h"
#include "support/mesh_checker.h"
#include "support/polygons.h"
#include "triangulation/mesh.h"
#include "triangulation/triangulate.h"

namespace {

using namespace zelvan::test;
using zelvan::GridPoint;

constexpr std::uint64_t kSeed = 20;

// In both ways, with a mesh from the triangles alone, as for areas that the sweep gave up, and one
// from the sweep.
void ExpectTriangles(const Areas& areas) {
  SCOPED_TRACE(zelvan::test::Text(zelvan::test::Flatten(areas)));
  const auto shape = zelvan::test::ShapeOf(areas);
  ASSERT_TRUE(zelvan::IsSound(shape->areas));
  ASSERT_EQ(CutInAllWays(shape->areas, true, {{.seed = 1}, {.seed = 2}}).wrong, "");
  shape->mesh = {new VORNEX::TriangleMesh(shape->vertexTable),
                 [](VORNEX::TriangleMesh* mesh) noexcept { delete mesh; }};
  zelvan::ForEachArea(shape->areas,
                      [&](const zelvan::Area* area) { VORNEX::FillMesh(*shape->mesh, *area); });
  ASSERT_EQ(CheckMesh(*shape), "");
  ASSERT_TRUE(Triangulate(*shape));
  ASSERT_EQ(CheckMesh(*shape), "");
}

// A map to any part of the range of 31 bits, a shear as a rule, that keeps every turn and the
// order of points, and with that the region's.
zelvan::FlatRegion Stretched(Random& random, zelvan::FlatRegion region) {
  constexpr std::int64_t kRange = (std::int64_t{1} << 31) - 1;
  GridPoint low = region.points[0], high = low;
  for (const GridPoint p : region.points) {
    low = {std::min(low.gx, p.gx), std::min(low.gy, p.gy)};
    high = {std::max(high.gx, p.gx), std::max(high.gy, p.gy)};
  }
  const std::int64_t width = high.gx - low.gx, height = high.gy - low.gy;
  const auto factor = [&](std::int64_t most) {
    const std::int64_t any = random.Below(2) == 0 ? most : random.Below(most + 1);
    return any >> (random.Below(2) == 0 ? random.Below(30) : 0);
  };
  const bool isSheared = random.Below(2) == 0;
  const std::int64_t xx = 1 + factor(kRange / width - 1);
  const std::int64_t yy = 1 + factor(kRange / height / (isSheared ? 2 : 1) - 1);
  const std::int64_t xy = isSheared ? factor((kRange - yy * height) / width) : 0;
  const bool isSinking = random.Below(2) == 0;
  const bool atTheEnd = random.Below(2) == 0;
  const std::int64_t spare[] = {kRange - xx * width, kRange - yy * height - xy * width};
  for (GridPoint& p : region.points) {
    const std::int64_t x = p.gx - low.gx, y = p.gy - low.gy;
    const std::int64_t to[] = {xx * x, yy * y + xy * (isSinking ? width - x : x)};
    const auto at = [&](int i) {
      return static_cast<std::int32_t>(to[i] + (atTheEnd ? spare[i] : 0) - (std::int64_t{1} << 30));
    };
    p = {at(0), at(1)};
  }
  return region;
}

// Of the region that rings bound, where it is and stretched.
void ExpectMeshes(Random& random, const Rings& rings) {
  const zelvan::FlatRegion region = FlatRegionOf(rings);
  if (region.Polygons() == 0) return;
  ASSERT_EQ(CheckMeshes(region), "") << Text(rings);
  const zelvan::FlatRegion stretched = Stretched(random, region);
  ASSERT_EQ(CheckMeshes(stretched), "") << Text({stretched.points});
}

TEST(Areas, OfRandomRings) {
  SCOPED_TRACE("seed " + std::to_string(kSeed));
  Random random(kSeed);
  for (int round = 0; round < 3000 && !HasFatalFailure(); ++round) {
    const std::int32_t size = round % 3 == 0 ? zelvan::GRID_MAX : 3 + random.Below(12);
    Rings rings = random.Pick(zelvan::test::kFamilies).make(random, size);
    if (random.Below(2) == 0) rings = zelvan::test::Mess(random, size, 1 + random.Below(4), rings);
    for (Ring& ring : rings) {
      for (zelvan::GridPoint& p : ring) p = {p.gx - size / 2 - 1, p.gy - size / 2 - 1};
    }
    zelvan::SweepRecords records;  // outlive the operand
    const zelvan::OwnedRing operand = RingOf({rings});
    zelvan::OwnedRing region;
    ASSERT_EQ(zelvan::CombineCopies(operand.first, nullptr, region.first, zelvan::UNION, records),
              ERR::OK);
    if (region.first != nullptr) ExpectTriangles(zelvan::test::AreasOf(region.first));
    ExpectMeshes(random, rings);
  }
}

TEST(Areas, OfLargePolygons) {
  SCOPED_TRACE("seed " + std::to_string(kSeed));
  Random random(kSeed);
  for (unsigned round = 0; round < 64; ++round) {
    for (const Rings& rings : zelvan::test::LargePolygons(random, 2 * random.Between(10, 60))) {
      ExpectTriangles({zelvan::test::Symmetric(rings, round % 8, -1)});
      ExpectMeshes(random, zelvan::test::Symmetric(rings, round % 8, -1));
      if (HasFatalFailure()) return;
    }
  }
}

bool IsSound(const Rings& rings) {
  for (const Ring& ring : rings) {
    if (ring.front() == ring.back()) return false;
    if (std::adjacent_find(ring.begin(), ring.end()) != ring.end()) return false;
  }
  return zelvan::IsSound(zelvan::test::RingOf({rings}).first);
}

// A closed path on a tiny grid, most of them grown as areas; or rings that cross anyhow.
Rings RandomPath(Random& random) {
  const bool wild = random.Below(100) == 0;
  const std::int32_t side = wild && random.Below(2) == 0 ? 500000 : random.Between(2, 6);
  Rings rings(static_cast<std::size_t>(wild ? random.Between(1, 3) : 1));
  for (Ring& ring : rings) {
    const auto wanted = static_cast<std::size_t>(random.Between(5, wild ? 60 : 12));
    const bool onlyAreas = !wild && random.Below(4) != 0;
    for (int k = 0; k < 3; ++k) ring.push_back(zelvan::test::PointIn(random, side));
    for (std::size_t k = 0; k < 3 * wanted && ring.size() < wanted; ++k) {
      Ring longer = ring;
      longer.insert(longer.begin() + random.Below(static_cast<std::ptrdiff_t>(ring.size())),
                    zelvan::test::PointIn(random, side));
      if (!onlyAreas || IsSound({longer})) ring = longer;
    }
    if (!wild && zelvan::test::TwiceArea(ring) < 0) std::reverse(ring.begin(), ring.end());
  }
  return rings;
}

// What is sound for the Booleans is what the sweep can cut, and no more.
TEST(Areas, OfRandomPaths) {
  SCOPED_TRACE("seed " + std::to_string(kSeed));
  Random random(kSeed);
  int sound = 0;
  for (int round = 0; round < 30000 && !HasFailure(); ++round) {
    const Rings rings = RandomPath(random);
    const zelvan::OwnedRing ring = zelvan::test::RingOf({rings});
    const bool isSound = IsSound(rings);
    std::size_t n = 0;
    for (const Ring& r : rings) n += r.size();
    const auto positions = random.Permutation(n);
    const auto cuts = CutInAllWays(ring.first, isSound, {{.positions = positions}, {.seed = 1}});
    EXPECT_EQ(cuts.wrong, "") << zelvan::test::Text(rings);
    EXPECT_EQ(cuts.swept, isSound) << zelvan::test::Text(rings);
    ExpectMeshes(random, rings);
    sound += isSound ? 1 : 0;
  }
  EXPECT_GT(sound, 5000);
}

// Short paths that pass a point twice: where the sweep gives up, the insertion has the last word.
TEST(Areas, ThatOnlyTheInsertionCuts) {
  SCOPED_TRACE("seed " + std::to_string(kSeed));
  Random random(kSeed);
  int cut = 0;
  for (int round = 0; round < 40000 && !HasFailure(); ++round) {
    Ring path(static_cast<std::size_t>(random.Between(5, 7)));
    for (GridPoint& p : path) p = zelvan::test::PointIn(random, 3);
    path.back() = path[1];
    const zelvan::OwnedRing ring = zelvan::test::RingOf({{path}});
    const auto cuts = CutInAllWays(ring.first, false);
    EXPECT_EQ(cuts.wrong, "") << zelvan::test::Text({path});
    if (!cuts.inserted || cuts.swept) continue;
    ++cut;
    const auto shape = zelvan::test::ShapeOf({{path}});
    EXPECT_TRUE(Triangulate(*shape)) << zelvan::test::Text({path});
    EXPECT_EQ(CheckMesh(*shape), "") << zelvan::test::Text({path});
  }
  EXPECT_GT(cut, 50);
}

}  // namespace
