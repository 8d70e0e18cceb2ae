// The guarantees of zelvan/zelvan.h, one test each, under its name.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>

#include "boolean/soundness.h"
#include "polygon/build_shape.h"
#include "polygon/closing_edge.h"
#include "support/arrangement_oracle.h"
#include "support/failing_allocator.h"
#include "support/flat.h"
#include "support/polygons.h"
#include "triangulation/area_sweep.h"
#include "triangulation/engine.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using support::AddHole;
using support::Read;
using support::ReadBack;
using support::SetMain;
using support::Xyz;
using zelvan::test::Random;

Xyz XyzOf(const zelvan::test::Ring& ring, double factor = 1) {
  Xyz xyz;
  for (const auto& [x, y] : ring) xyz.insert(xyz.end(), {x * factor, y * factor, 9});
  return xyz;
}
// Of any size, its points on no grid.
Xyz RandomStar(Random& random, int n, double size) {
  return XyzOf(zelvan::test::Star(random, 99999, n), size / 99999);
}

// Sessions of random calls, short and long, judged as the fuzzer judges its own; its judge throws.
TEST(Guarantee, NothingEscapes) {
  for (std::uint64_t seed = 0; seed < 3100; ++seed) {
    Random random(seed);
    std::vector<std::uint8_t> bytes(random.Below(seed < 3000 ? 400u : 10000u));
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random.Bits() >> 24);
    EXPECT_NO_THROW(LLVMFuzzerTestOneInput(bytes.data(), bytes.size())) << seed;
  }
}

// What cuts contours that cross themselves in any manner, as by their closing edges: links and
// intervals of the sweep, and records of the insertion. Sweep.NumbersAndWorkAreBounded has the
// events of the Booleans.
TEST(Guarantee, EveryCallEnds) {
  struct Insertion : VORNEX::TRIAGLOBS {
    [[nodiscard]] std::pair<double, double> Taken() const {
      return {nodePool.Count(), trapPool.Count()};
    }
  };
  for (std::uint64_t seed = 0; seed < 2000 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const std::int32_t side = 4 << random.Below(16);
    zelvan::test::Ring ring(static_cast<std::size_t>(3 + random.Below(seed % 16 == 0 ? 400 : 40)));
    for (auto& p : ring) p = zelvan::test::PointIn(random, side);
    if (random.Below(2) == 0)
      ring = zelvan::test::SimplePolygon(random, side, 3 + random.Below(60));
    ring.erase(std::unique(ring.begin(), ring.end()), ring.end());
    while (ring.size() > 1 && ring.front() == ring.back()) ring.pop_back();
    if (ring.size() < 3) continue;
    const double n = static_cast<double>(ring.size()), logarithm = std::log2(n);
    const zelvan::OwnedRing area = zelvan::test::RingOf({{ring}});
    VORNEX::SweepCounts counts;
    const bool isCut = VORNEX::TriangulateBySweep(*area.first, {.counts = &counts});
    EXPECT_LE(static_cast<double>(counts.links), 4 * n);
    EXPECT_LE(static_cast<double>(counts.intervals), 4 * n * (1 + logarithm));
    Insertion insertion;
    try {
      insertion.Run(area.first);
    } catch (...) {
      EXPECT_FALSE(isCut);
      EXPECT_EQ(ERR::Clear(), ERR::FAIL);
    }
    const auto [nodes, trapezoids] = insertion.Taken();
    EXPECT_LE(trapezoids, 3 * n + 1);
    EXPECT_LE(nodes, 8 * n * (1 + logarithm));
  }
}

// Grid coordinates and input coordinates are the same numbers here, and the judge counts exactly.
TEST(Guarantee, AreaIsExact) {
  constexpr double far = zelvan::GRID_MAX;
  int accepted = 0;
  for (std::uint64_t seed = 0; seed < 200; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const Xyz hole = XyzOf(zelvan::test::SimplePolygon(random, zelvan::GRID_MAX, 40));
    ASSERT_EQ(SetMain({0, 0, 0, far, 0, 0, far, far, 0, 0, far, 0}), 1);
    if (AddHole(hole) + Substruct() + Triangulate() < 3) continue;
    ++accepted;
    EXPECT_EQ(support::CheckFlatMesh(Read()), "");
  }
  EXPECT_GT(accepted, 150);
}

// Contours with parts finer than a step of their grid, which is 1: one point lies far off.
Xyz FinerThanTheGrid(Random& random) {
  Xyz xyz;
  const auto add = [&](double x, double y) { xyz.insert(xyz.end(), {x, y, 0}); };
  const int n = 10 + random.Below(300);
  const double pitch = random.Between(0.05, 1.5);
  switch (random.Below(4)) {
    case 0:  // more spikes than steps around
      xyz = RandomStar(random, n, random.Between(3.0, 60.0));
      for (int k = 3 * (n / 8); k < 3 * (n / 8) + 2; ++k) xyz[static_cast<std::size_t>(k)] *= 1e5;
      break;
    case 1: {  // a comb, and a coast: steps without teeth
      const double high = random.Below(2) == 0 ? 1e4 : 2.0;
      add(-1e6, -pitch);
      add(0, -1e5);
      for (int i = 0; i < n; ++i) {
        add(pitch * (n - i), (i % 2 == 0 ? 0.0 : high) + random.Between(0.0, 1.0));
      }
      break;
    }
    default: {  // a band rolled up tight
      const double inner = random.Between(0.3, 0.9) * pitch;
      const auto point = [&](double angle, double out) {
        const double r = 2 + pitch * angle / 6.283185307179586 + out;
        add(r * std::cos(angle), r * std::sin(angle));
      };
      for (int i = 0; i < n; ++i) point(0.3 * i, 0);
      add(1e6 * std::cos(0.3 * n), 1e6 * std::sin(0.3 * n));
      for (int i = n; i-- > 0;) point(0.3 * i, inner);
    }
  }
  return xyz;
}

// Contacts in doubles already, from corner to corner of a lattice that the grid holds; some go
// round twice.
Xyz OnALattice(Random& random, int size) {
  Xyz xyz = {0, 0, 0, 1.0 * size, 1.0 * size, 0};
  for (int n = random.Between(1, random.Below(4) == 0 ? 12 : 6); n > 0; --n) {
    xyz.insert(xyz.end(), {1.0 * random.Below(size + 1), 1.0 * random.Below(size + 1), 0});
  }
  std::rotate(xyz.begin(), xyz.end() - 3, xyz.end());
  const Xyz once = xyz;
  if (random.Below(8) == 0) xyz.insert(xyz.end(), once.begin(), once.end());
  return xyz;
}

zelvan::PointList PointsOf(const Xyz& xyz) {
  zelvan::PointList points;
  for (std::size_t k = 0; k < xyz.size(); k += 3) points.push_back({xyz[k], xyz[k + 1], 0});
  return points;
}

// The main polygon's edges, or those of its mirror image, and the number of its triangles.
std::pair<oracle::Boundary, int> Answers(bool mirrored) {
  zelvan::test::Areas areas = zelvan::test::AreasOf(zelvan::ProcessWorkspace().Main()->areas);
  for (zelvan::test::Rings& rings : areas) {
    if (mirrored) rings = zelvan::test::Symmetric(rings, 1, -1);
  }
  return {oracle::Cut(areas, {}), Triangulate() == 1 ? Read().faceCount : -1};
}

// What is sound on its grid stays to the bit; what is not becomes the region of its positive
// winding numbers. So do the contour the other way round and its mirror images, where they are
// accepted, and where no point is removed, since the first one then decides which.
TEST(Guarantee, ContoursThatDoNotCrossHaveTriangles) {
  const std::vector<int> lattices = {3, 5, 11, 15};  // divisors of GRID_MAX
  const std::vector<Xyz> given = {{3, 0, 0, 15, 12, 0, 3, 6, 0, 6, 12, 0, 3, 9, 0},
                                  {6, 6, 0, 15, 6, 0, 15, 15, 0, 6, 6, 0, 15, 6, 0, 15, 15, 0}};
  int replaced = 0;
  int kept = 0;
  int others = 0;
  for (std::uint64_t seed = 0; seed < 12000; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const bool isExact = seed >= given.size() && seed % 8 != 0;
    const int size = random.Pick(lattices);
    const Xyz xyz = seed < given.size() ? given[static_cast<std::size_t>(seed)]
                    : isExact           ? OnALattice(random, size)
                                        : FinerThanTheGrid(random);
    if (SetMain(xyz) == 0) continue;
    const auto snapped = zelvan::BuildShape(zelvan::ValidatedContour(PointsOf(xyz)));
    const zelvan::Shape& main = *zelvan::ProcessWorkspace().Main();
    const bool sound = snapped->areas == nullptr || zelvan::IsSound(snapped->areas);
    const auto ring = zelvan::test::Flatten(zelvan::test::AreasOf(snapped->areas));
    const bool turned = !ring.empty() && zelvan::test::TwiceArea(ring[0]) < 0;
    zelvan::PointList left = PointsOf(xyz);
    zelvan::RemoveCollinear(left);
    const bool stays = sound || zelvan::ClosingEdgeCrosses(left);
    ++(stays ? kept : replaced);
    const zelvan::test::Areas areas = zelvan::test::AreasOf(main.areas);
    if (stays) {
      ASSERT_EQ(areas, zelvan::test::AreasOf(snapped->areas));
    } else {
      const auto rule = turned ? oracle::Rule::Negative : oracle::Rule::Positive;
      const oracle::Arrangement bent = oracle::Snap(ring, {});
      ASSERT_EQ(oracle::Cut(areas, bent.hot), oracle::BoundaryOf(bent, 0, {rule, rule}));
      ASSERT_TRUE(zelvan::IsSound(main.areas));
    }
    const bool isEmpty = main.areas == nullptr;
    const auto answers = Answers(false);
    ASSERT_TRUE((stays && !sound) || (answers.second >= 0) == !isEmpty);
    ASSERT_EQ(answers.second >= 0 ? support::CheckFlatMesh(Read()) : "", "");
    if (left.size() < xyz.size() / 3) continue;
    for (unsigned way = 1; way < (isExact ? 4 : 2); ++way) {
      Xyz other = xyz;
      if ((way & 1) != 0) std::reverse(other.begin(), other.end());
      for (std::size_t k = 0; k < xyz.size(); k += 3) {
        if ((way & 1) != 0) std::swap(other[k], other[k + 2]);
        if ((way & 2) != 0) other[k] = size - other[k];
      }
      if (SetMain(other) == 0) continue;
      ASSERT_TRUE(Answers((way & 2) != 0) == answers) << way;
      ++others;
    }
  }
  EXPECT_TRUE(replaced > 300 && kept > 300 && others > 5000);
}

TEST(Guarantee, MeshIsConsistent) {
  Random random(13);
  for (int round = 0; round < 40; ++round) {
    for (const zelvan::test::Rings& rings : zelvan::test::LargePolygons(random, 500)) {
      int done = SetMain(XyzOf(rings[0]));
      for (std::size_t hole = 1; hole < rings.size(); ++hole) done += AddHole(XyzOf(rings[hole]));
      ASSERT_EQ(done + Substruct() + Triangulate(), static_cast<int>(rings.size()) + 2);
      ASSERT_EQ(support::CheckFlatMesh(Read()), "");
    }
  }
}

TEST(Guarantee, SnapIsBounded) {
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const Xyz star =
        RandomStar(random, 3 + random.Below(60), std::ldexp(1.0, random.Between(-3, 40)));
    if (SetMain(star) == 0) continue;
    const ReadBack r = Read();
    if (r.vertices.size() != star.size()) continue;  // a point was collinear
    const zelvan::Shape& main = *zelvan::ProcessWorkspace().Main();
    const double bounds[] = {main.boxMax.x - main.boxMin.x, main.boxMax.y - main.boxMin.y};
    for (std::size_t k = 0; k < star.size(); ++k) {
      const double bound = k % 3 < 2 ? bounds[k % 3] / 1048575 / 2 * (1 + 1e-9) : 0;
      EXPECT_LE(std::fabs(r.vertices[k] - (k % 3 < 2 ? star[k] : 0.0)), bound);
    }
  }
}

TEST(Guarantee, SameBytes) {
  Random random(11);
  const Xyz star = RandomStar(random, 500, 1e4);
  std::srand(42);
  const int first = std::rand();
  std::srand(42);
  ASSERT_EQ(SetMain(star) + Triangulate(), 2);
  const ReadBack once = Read();
  EXPECT_TRUE(Triangulate() == 1 && Read() == once);
  EXPECT_TRUE(SetMain(star) + Triangulate() == 2 && Read() == once);
  EXPECT_EQ(std::rand(), first) << "the host's generator is untouched";
}

// A step that fails can be taken again: the queue is then what it was, and the main polygon as
// some first ones of the queue make it.
TEST(Guarantee, FailureLeavesNothingBehind) {
  Random random(12);
  const Xyz star = RandomStar(random, 24, 2e3);
  std::vector<Xyz> queue = {{100, 300, 0, 3000, 400, 0, 1000, 1800, 0}};
  for (double y = 300; y < 1800; y += 250) {  // some meet the first one, others nothing
    queue.push_back({2400, y, 0, 2500, y, 0, 2500, y + 100, 0});
  }
  // Touches itself.
  const Xyz removed = {950, 960, 0, 1050, 960, 0, 1060, 1060, 0, 1000, 960, 0, 940, 1060, 0};
  std::vector<std::function<int()>> steps = {[&] { return SetMain(star); }};
  for (const Xyz& one : queue) steps.emplace_back([&] { return AddHole(one); });
  const std::size_t atUnion = steps.size();
  steps.insert(steps.end(), {Union, [&] { return AddHole(removed); }, Substruct, Triangulate});
  const auto isDone = [&](std::size_t& at) {
    while (at < steps.size() && steps[at]() == 1) ++at;
    return at == steps.size();
  };
  std::vector<ReadBack> states;    // with so many of the queue united
  std::vector<ReadBack> expected;  // if all are united then
  for (std::size_t n = 0; n < queue.size(); ++n) {
    SetMain(star);
    for (std::size_t i = 0; i < n; ++i) AddHole(queue[i]);
    ASSERT_EQ(Union(), 1);
    states.push_back(Read());
    std::size_t at = 1;
    ASSERT_TRUE(isDone(at));
    expected.push_back(Read());
  }
  SetMainContour(0, nullptr);
  std::size_t at = 0;
  std::vector<int> failed(states.size());  // Unions that got so far
  const std::size_t failures = support::FailEachInTurn(
      [&] { return isDone(at = 0); },
      [&](bool struck) {  // a sort may do without its buffer; everything else must show
        EXPECT_TRUE(struck || at == steps.size());
        EXPECT_TRUE(at > 0 || Read() == ReadBack());
        const auto state = std::find(states.begin(), states.end(), Read()) - states.begin();
        const bool isFirst = at != atUnion;
        ASSERT_LT(isFirst ? 0u : static_cast<std::size_t>(state), states.size());
        EXPECT_TRUE(isDone(at));
        EXPECT_EQ(Read(), expected[isFirst ? 0 : static_cast<std::size_t>(state)]);
        if (!isFirst) ++failed[static_cast<std::size_t>(state)];
        SetMainContour(0, nullptr);
      });
  EXPECT_GT(failures, 300u);
  EXPECT_LT(std::ranges::count(failed, 0), 3);
}

}  // namespace
