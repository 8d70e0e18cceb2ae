// The guarantees of zelvan/zelvan.h, one test each, under its name.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "boolean/edge_index.h"
#include "boolean/soundness.h"
#include "polygon/area.h"
#include "polygon/build_shape.h"
#include "polygon/containment.h"
#include "polygon/input_predicates.h"
#include "support/failing_allocator.h"
#include "support/flat.h"
#include "support/geojson_rings.h"
#include "support/mesh_checker.h"
#include "support/random.h"
#include "support/regions.h"

namespace {

using support::AddHole;
using support::Random;
using support::Read;
using support::ReadBack;
using support::SetMain;
using support::Xyz;

Xyz RandomStar(Random& random, std::uint32_t n, double size) {
  Xyz xyz;
  for (std::uint32_t i = 0; i < n; ++i) {
    const double angle = 6.283185307179586 * i / n;
    const double r = size * random.Between(0.1, 1.0);
    xyz.insert(xyz.end(), {r * std::cos(angle), r * std::sin(angle), random.Unit()});
  }
  return xyz;
}

// Numbers of every kind, in an order that makes no polygon.
Xyz Garbage(Random& random) {
  constexpr double special[] = {
      0.0,    -0.0, 1.0,      1e308,     -1e308,
      5e-324, 1e-5, HUGE_VAL, -HUGE_VAL, std::numeric_limits<double>::quiet_NaN()};
  Xyz xyz(random.Below(40));
  const std::uint32_t kind = random.Below(4);
  for (double& v : xyz) {
    if (kind == 0) v = special[random.Below(10)];
    if (kind == 1) v = random.Between(-3, 3);
    if (kind == 2) v = random.Between(-1.0, 1.0) * std::ldexp(1.0, random.Between(-1000, 1000));
    if (kind == 3)
      v = random.Between(0, 4) + (random.Below(50) == 0 ? special[random.Below(10)] : 0);
  }
  return xyz;
}

void ExpectZeroOrOne(int result) {
  EXPECT_TRUE(result == 0 || result == 1) << result;
}

// Calls in random order with random input; what Triangulate accepts is checked.
void RandomSession(Random& random, int calls) {
  for (int k = 0; k < calls; ++k) {
    const Xyz xyz =
        random.Below(3) == 0 ? RandomStar(random, 3 + random.Below(9), 8) : Garbage(random);
    switch (random.Below(8)) {
      case 0:
        ExpectZeroOrOne(SetMain(xyz));
        break;
      case 1:
      case 2:
        ExpectZeroOrOne(AddHole(xyz));
        break;
      case 3:
        ExpectZeroOrOne(Union());
        break;
      case 4:
        ExpectZeroOrOne(Substruct());
        break;
      default:
        if (Triangulate() == 1) {
          const ReadBack r = Read();
          ASSERT_EQ(support::CheckFlatMesh(r), "");
        }
    }
  }
}

TEST(Guarantee, NothingEscapes) {
  for (std::uint64_t seed = 100; seed < 500; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    EXPECT_NO_THROW(RandomSession(random, 60));
  }
}

TEST(Guarantee, EveryCallEnds) {
  // The chain is valid, the closing edge crosses it everywhere: triangulated
  // rightly or refused, at once.
  int accepted = 0;
  for (std::uint64_t seed = 0; seed < 2000; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    Xyz zigzag;
    const std::uint32_t n = 3 + random.Below(30);
    for (std::uint32_t i = 0; i < n; ++i) {
      zigzag.insert(zigzag.end(), {double(i), random.Between(-5, 5) + (i % 2 ? 3.0 : -3.0), 0});
    }
    if (SetMain(zigzag) == 0) continue;
    if (Triangulate() == 0) continue;
    ++accepted;
    ASSERT_EQ(support::CheckFlatMesh(Read()), "");
  }
  EXPECT_GT(accepted, 20);
}

TEST(Guarantee, AreaIsExact) {
  // Grid coordinates and input coordinates are the same numbers here.
  for (std::uint64_t seed = 0; seed < 200; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    Xyz star = RandomStar(random, 3 + random.Below(200), 500000);
    for (double& v : star) v = std::floor(v);
    star.insert(star.end(), {524287, -524288, 0});  // the grid's corners are the box
    star.insert(star.end() - 3, {-524288, -524288, 0});
    star.insert(star.end(), {524287, 524287, 0});
    if (SetMain(star) == 0 || Triangulate() == 0) continue;
    EXPECT_EQ(support::CheckFlatMesh(Read()), "");
  }
}

// Contours with parts finer than a step of their grid, which is 1: one point lies far off.
Xyz FinerThanTheGrid(Random& random) {
  Xyz xyz;
  const auto add = [&](double x, double y) { xyz.insert(xyz.end(), {x, y, 0}); };
  const auto n = 10 + random.Below(300);
  const double pitch = random.Between(0.05, 1.5);
  switch (random.Below(5)) {
    case 0:  // more spikes than steps around
      xyz = RandomStar(random, n, random.Between(3.0, 60.0));
      for (std::size_t k = 3 * (n / 8); k < 3 * (n / 8) + 2; ++k) xyz[k] *= 1e5;
      break;
    case 1: {  // a comb, and a coast: steps without teeth
      const double high = random.Below(2) == 0 ? 1e4 : 2.0;
      add(-1e6, -pitch);
      add(0, -1e5);
      for (std::uint32_t i = 0; i < n; ++i) {
        add(pitch * (n - i), (i % 2 == 0 ? 0.0 : high) + random.Between(0.0, 1.0));
      }
      break;
    }
    case 2:  // contacts in doubles already; some go round twice
      for (const int corner : {0, 1, 3, 2, 0}) {
        if (n % 2 == 0) add(5 * (corner % 2), 5 * (corner / 2));
      }
      for (std::uint32_t i = 0; i < 3 + n % 7; ++i) add(random.Below(6), random.Below(6));
      break;
    default: {  // a band rolled up tight
      const double inner = random.Between(0.3, 0.9) * pitch;
      const auto point = [&](double angle, double out) {
        const double r = 2 + pitch * angle / 6.283185307179586 + out;
        add(r * std::cos(angle), r * std::sin(angle));
      };
      for (std::uint32_t i = 0; i < n; ++i) point(0.3 * i, 0);
      add(1e6 * std::cos(0.3 * n), 1e6 * std::sin(0.3 * n));
      for (std::uint32_t i = n; i-- > 0;) point(0.3 * i, inner);
    }
  }
  return xyz;
}

// Is the place in the contours' region, by the even-odd rule?
bool IsIn(const zelvan::Area* ring, zelvan::GridPoint p) {
  bool inside = false;
  zelvan::ForEachContour(ring, [&](const zelvan::Contour* contour) {
    inside ^= zelvan::Locate(p, contour) == zelvan::Location::kInside;
  });
  return inside;
}

bool IsNearEdges(const zelvan::Shape& shape, zelvan::GridPoint p) {
  const zelvan::GridBox box{{p.gx - 1, p.gy - 1}, {p.gx + 1, p.gy + 1}};
  return std::any_of(shape.vertexTable.begin(), shape.vertexTable.end(), [&](const auto* v) {
    return zelvan::EdgeMeetsBox(v->grid, v->next->grid, box);
  });
}

bool ClosingEdgeCrosses(zelvan::PointList list) {
  zelvan::RemoveCollinear(list);
  bool crosses = false;
  for (std::size_t i = 1; i + 2 < list.size(); ++i) {
    crosses |= zelvan::SegmentsCross(list[i], list[i + 1], list.back(), list.front());
  }
  return crosses;
}

TEST(Guarantee, ContoursThatDoNotCrossHaveTriangles) {
  int replaced = 0, kept = 0, inside = 0, outside = 0;
  for (std::uint64_t seed = 0; seed < 1500; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const Xyz xyz = FinerThanTheGrid(random);
    if (SetMain(xyz) == 0) continue;
    zelvan::PointList points;
    for (std::size_t k = 0; k < xyz.size(); k += 3) points.push_back({xyz[k], xyz[k + 1], 0});
    const auto snapped = zelvan::BuildShape(points);
    const zelvan::Shape& main = *zelvan::ProcessWorkspace().Main();
    const bool sound = snapped->areas == nullptr || zelvan::IsSound(snapped->areas);
    if (sound || ClosingEdgeCrosses(points)) {
      ++kept;
      ASSERT_EQ(zelvan::test::ReadRegions(main), zelvan::test::ReadRegions(*snapped));
      if (!sound) continue;
    } else {
      ++replaced;
    }
    ASSERT_EQ(Triangulate(), main.areas != nullptr ? 1 : 0);
    ASSERT_EQ(main.areas != nullptr ? support::CheckFlatMesh(Read()) : "", "");
    for (const zelvan::VertexNode* v : snapped->vertexTable) {
      const zelvan::GridPoint p{v->grid.gx + random.Between(-9, 9),
                                v->grid.gy + random.Between(-9, 9)};
      if (IsNearEdges(*snapped, p)) continue;
      ASSERT_EQ(IsIn(main.areas, p), IsIn(snapped->areas, p));
      ++(IsIn(main.areas, p) ? inside : outside);
    }
  }
  EXPECT_GT(replaced, 300);
  EXPECT_GT(kept, 300);
  EXPECT_GT(inside, 1000);
  EXPECT_GT(outside, 1000);
}

TEST(Guarantee, MeshIsConsistent) {
  const auto countries = support::ReadCountries(ZELVAN_DATA_DIR "/countries-50m.geojson");
  ASSERT_GT(countries.size(), 200u);
  int refused = 0;
  int triangulated = 0;
  for (const support::Country& country : countries) {
    SCOPED_TRACE(country.name);
    for (const support::RingPolygon& polygon : country.polygons) {
      for (support::Ring ring : polygon) {
        for (double& v : ring) v *= 4096;
        if (SetMain(ring) == 0) {
          ++refused;
          continue;
        }
        ASSERT_EQ(Triangulate(), 1);
        ASSERT_EQ(support::CheckFlatMesh(Read()), "");
        ++triangulated;
      }
    }
  }
  EXPECT_GT(triangulated, 1000);
  EXPECT_LT(refused, 20);
}

TEST(Guarantee, SnapIsBounded) {
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const double size = std::ldexp(1.0, random.Between(-3, 40));
    const Xyz star = RandomStar(random, 3 + random.Below(60), size);
    if (SetMain(star) == 0) continue;
    const ReadBack r = Read();
    if (r.vertices.size() != star.size()) continue;  // a point was collinear
    for (std::size_t axis = 0; axis < 2; ++axis) {
      double lo = HUGE_VAL, hi = -HUGE_VAL;
      for (std::size_t k = axis; k < star.size(); k += 3) {
        lo = std::min(lo, star[k]);
        hi = std::max(hi, star[k]);
      }
      const double bound = (hi - lo) / 1048575 / 2 * (1 + 1e-9);
      for (std::size_t k = axis; k < star.size(); k += 3) {
        EXPECT_LE(std::fabs(r.vertices[k] - star[k]), bound);
      }
    }
  }
}

TEST(Guarantee, SameBytes) {
  Random random(11);
  const Xyz star = RandomStar(random, 500, 1e4);
  std::srand(42);
  const int first = std::rand();
  std::srand(42);
  ASSERT_EQ(SetMain(star), 1);
  ASSERT_EQ(Triangulate(), 1);
  const ReadBack once = Read();
  ASSERT_EQ(Triangulate(), 1);
  EXPECT_EQ(Read(), once);
  ASSERT_EQ(SetMain(star), 1);
  ASSERT_EQ(Triangulate(), 1);
  EXPECT_EQ(Read(), once);
  EXPECT_EQ(std::rand(), first) << "the host's generator is untouched";
}

TEST(Guarantee, FailureLeavesNothingBehind) {
  Random random(12);
  const Xyz star = RandomStar(random, 24, 1e3);
  const Xyz added = {-900, -700, 0, 2000, -600, 0, 0, 800, 0};
  // Touches itself.
  const Xyz removed = {-50, -40, 0, 50, -40, 0, 60, 60, 0, 0, -40, 0, -60, 60, 0};
  const auto session = [&] {
    int done = SetMain(star) + AddHole(added) + Union() + AddHole(removed);
    done += Substruct();
    return done + Triangulate();
  };
  ASSERT_EQ(session(), 6);
  const ReadBack expected = Read();
  EXPECT_EQ(expected.contourSize.size(), 2u);
  SetMainContour(0, nullptr);
  const std::ptrdiff_t empty = support::LiveAllocations();

  for (const bool andAllAfter : {false, true}) {
    bool struck = true;
    int failures = 0;
    for (std::size_t failing = 0; struck; ++failing) {
      int done = 0;
      {
        support::FailingAllocations scope(failing, andAllAfter);
        done = session();
        struck = scope.Struck();
      }
      // A sort may do without its buffer; everything else must show.
      if (done == 6) {
        ASSERT_EQ(Read(), expected) << "allocation " << failing;
      }
      failures += done < 6 ? 1 : 0;
      SetMainContour(0, nullptr);
      ASSERT_EQ(support::LiveAllocations(), empty) << "allocation " << failing;
      if (failing % 16 == 0) {
        ASSERT_EQ(session(), 6);
        ASSERT_EQ(Read(), expected);
        SetMainContour(0, nullptr);
      }
    }
    EXPECT_GT(failures, 150);
  }
}

}  // namespace
