// The engine against the brute-force oracle, on grids so small that everything
// touches and overlaps. Every operation of every case must give the oracle's
// region edge for edge, as sound areas. ZELVAN_TEST_SCALE is the share of the cases in per cent.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>

#include "boolean/boolean.h"
#include "boolean/exact.h"
#include "boolean/hole_placement.h"
#include "boolean/operand.h"
#include "boolean/snapped_contour.h"
#include "boolean/soundness.h"
#include "boolean/sweep.h"
#include "support/arrangement_oracle.h"
#include "support/mesh_checker.h"
#include "triangulation/area_sweep.h"

namespace {

using namespace zelvan::test;
using zelvan::WindingRule;

#ifndef ZELVAN_TEST_SCALE
#define ZELVAN_TEST_SCALE 100
#endif

std::int64_t Scaled(std::int64_t cases) {
  const char* text = std::getenv("ZELVAN_TEST_SCALE");
  return cases * (text != nullptr ? std::atoll(text) : ZELVAN_TEST_SCALE) / 100 + 1;
}

// The oracle's names of the rules.
oracle::Rules RulesOf(WindingRule rule) {
  constexpr oracle::Rule kRules[] = {oracle::Rule::EvenOdd, oracle::Rule::Positive,
                                     oracle::Rule::Negative};
  return {kRules[static_cast<int>(rule)], kRules[static_cast<int>(rule)]};
}

Areas Combined(const Areas& a, const Areas& b, int op, WindingRule rule = WindingRule::kOdd) {
  zelvan::SweepRecords records;  // outlive the copies
  const zelvan::OwnedRing ringA = RingOf(a);
  const zelvan::OwnedRing ringB = RingOf(b);
  const zelvan::OwnedRing copyA(zelvan::CopyAreas(ringA.first));
  const zelvan::OwnedRing copyB(zelvan::CopyAreas(ringB.first));
  zelvan::OwnedRing result;
  const auto code =
      rule == WindingRule::kOdd
          ? zelvan::Boolean(ringA.first, ringB.first, result.first, zelvan::BoolOp{op})
          : zelvan::CombineCopies(copyA.first, copyB.first, result.first, zelvan::BoolOp{op},
                                  records, rule);
  EXPECT_EQ(code, ERR::OK);
  EXPECT_EQ(zelvan::test::AreasOf(ringA.first), a) << "operand changed";
  EXPECT_TRUE(zelvan::IsSound(result.first));
  // Areas that can be cut have their own holes inside. Contacts are of every kind, most of them
  // where edges alternate: no reason to give up.
  zelvan::ForEachArea(result.first, [](zelvan::Area* area) {
    EXPECT_TRUE(VORNEX::TriangulateBySweep(*area));
    EXPECT_EQ(zelvan::test::CheckTriangles(*area), "");
  });
  if (op == 3 && result.first != nullptr) {
    EXPECT_EQ(zelvan::test::CutInAllWays(result.first, true).wrong, "");
    const zelvan::OwnedRing copy(zelvan::CopyAreas(result.first));
    EXPECT_EQ(zelvan::test::AreasOf(copy.first), zelvan::test::AreasOf(result.first));
  }
  return zelvan::test::AreasOf(result.first);
}

// Takes the holes out of a sound region and has them placed by the sweep, or one by one, or as
// takes less.
Areas PlacedAgain(const Areas& areas, decltype(zelvan::PlaceHolesBySweep)& place) {
  zelvan::OwnedRing ring;
  zelvan::PendingHoles holes;
  for (const Rings& rings : areas) {
    zelvan::AppendArea(ring.first, RingOf({{rings[0]}}).release());
    for (std::size_t i = rings.size(); i-- > 1;) {
      zelvan::OwnedRing hole = RingOf({{rings[i]}});
      holes.emplace_back(std::exchange(hole.first->contours, nullptr));
    }
  }
  const std::size_t pairs = place(ring, holes);
  std::size_t vertices = 0;
  for (const Ring& r : Flatten(areas)) vertices += r.size() + 1;
  EXPECT_TRUE(place == zelvan::PlaceHolesByTests || pairs <= 16 * vertices);
  Areas placed = zelvan::test::AreasOf(ring.first);
  for (Rings& rings : placed) std::reverse(rings.begin() + 1, rings.end());
  return placed;
}

class RandomCase {
 public:
  // Every operation in both orders; @return the union
  Areas Check(const Areas& a, const Areas& b, const std::string& name,
              WindingRule rule = WindingRule::kOdd) {
    const oracle::Arrangement ab = oracle::Snap(Flatten(a), Flatten(b));
    oracle::Arrangement ba = ab;
    for (oracle::Edge& e : ba.edges) {
      std::swap(e.left[0], e.left[1]);
      std::swap(e.right[0], e.right[1]);
    }
    crossings += ab.crossings > 0;
    cancelled += ab.cancelled > 0;
    Areas united;
    for (int op = 0; op < 4; ++op) {
      Areas result = CheckOne(a, b, ab, op, name, rule);
      CheckOne(b, a, ba, op, name + ", reversed", rule);
      if (op == 0) united = std::move(result);
    }
    return united;
  }

  std::int64_t crossings = 0;
  std::int64_t cancelled = 0;
  std::int64_t holes = 0;

 private:
  Areas CheckOne(const Areas& a, const Areas& b, const oracle::Arrangement& arrangement, int op,
                 const std::string& name, WindingRule rule) {
    Areas result = Combined(a, b, op, rule);
    const bool same =
        oracle::Cut(result, arrangement.hot) == oracle::BoundaryOf(arrangement, op, RulesOf(rule));
    if (!same || ::testing::Test::HasFailure()) {
      ADD_FAILURE() << "operation " << op << " of " << name << "\n"
                    << "A " << Text(Flatten(a)) << "\nB " << Text(Flatten(b)) << "\nresult "
                    << Text(Flatten(result));
    }
    if (!result.empty()) {
      EXPECT_EQ(PlacedAgain(result, zelvan::PlaceHolesBySweep), result);
      EXPECT_EQ(PlacedAgain(result, zelvan::PlaceHolesByTests), result);
      for (const Rings& rings : result) holes += static_cast<std::int64_t>(rings.size()) - 1;
    }
    return result;
  }
};

// Polygons of two families, as regions or among other rings under a random rule.
TEST(BooleanRandom, EveryOperationOfEveryFamilyUnderEveryRuleGivesTheOraclesRegion) {
  RandomCase random_case;
  const std::int64_t cases = Scaled(800);
  for (std::size_t i = 0; i < kFamilies.size(); ++i) {
    for (std::size_t j = i; j < kFamilies.size(); ++j) {
      for (std::int64_t k = 0; k < cases; ++k) {
        const std::uint64_t seed = (i * 100 + j) * 1000000 + static_cast<std::uint64_t>(k);
        Random random(seed);
        const std::int32_t size = 4 + random.Below(k % 8 == 0 ? 37 : 9);
        const unsigned symmetry = random.Below(8u);
        Areas a{zelvan::test::Symmetric(kFamilies[i].make(random, size), symmetry, size)};
        Areas b{zelvan::test::Symmetric(kFamilies[j].make(random, size), symmetry, size)};
        const auto rule = k % 4 == 0 ? WindingRule::kOdd : WindingRule(random.Below(3));
        const std::int32_t most = k % 16 == 1 ? 12 : 3;
        if (k % 4 != 0) {
          a.push_back(zelvan::test::Mess(random, size, 1 + random.Below(most), b[0]));
          b.push_back(zelvan::test::Mess(random, size, 1 + random.Below(most), a[1]));
        }
        random_case.Check(a, b,
                          std::string(kFamilies[i].name) + " and " + kFamilies[j].name + ", rule " +
                              std::to_string(static_cast<int>(rule)) + ", seed " +
                              std::to_string(seed),
                          rule);
        if (::testing::Test::HasFailure()) return;
      }
    }
  }
  EXPECT_GT(random_case.crossings, 10 * cases);
  EXPECT_GT(random_case.cancelled, 5 * cases);
  EXPECT_GT(random_case.holes, 4 * cases);
}

// Results are operands: regions with holes and several areas, which touch.
TEST(BooleanRandom, ResultsFedBackStayRightAndUniteWithThemselvesUnchanged) {
  RandomCase random_case;
  std::int64_t selfUnions = 0;
  std::int64_t stable = 0;
  for (std::int64_t k = Scaled(400); k > 0; --k) {
    const auto seed = static_cast<std::uint64_t>(900000000 + k);
    Random random(seed);
    const std::int32_t size = 4 + random.Below(17);
    const auto pick = [&] { return Areas{random.Pick(kFamilies).make(random, size)}; };
    Areas region = pick();
    for (int step = 0; step < 4 && !region.empty(); ++step) {
      const Areas other = pick();
      const std::string name = "chain, seed " + std::to_string(seed);
      const Areas united = random_case.Check(region, other, name);
      const Areas twice = random_case.Check(united, united, name + ", with itself");
      // Rounding again may pull edges to vertices that the first rounding moved near;
      // where it does not, nothing changes.
      const auto again = oracle::Snap(Flatten(united), {});
      const bool isStable = oracle::Cut(united, again.hot) == oracle::BoundaryOf(again, 0);
      EXPECT_EQ(twice == united, isStable) << name;
      stable += isStable;
      ++selfUnions;
      region = Combined(region, other, random.Below(4));
    }
    if (::testing::Test::HasFailure()) return;
  }
  EXPECT_GT(2 * stable, selfUnions);
}

// The edges of a region, which its vertices fix, whatever its contours' heads and order.
oracle::Boundary EdgesOf(const Areas& areas) {
  return oracle::Cut(areas, {});
}

// n boxes of `side` at the most on a grid of `size`, in any direction. All crossings of their edges
// are grid points.
Rings AxisParallel(Random& random, std::int32_t size, std::int32_t side, std::int64_t n) {
  Rings rings;
  for (; n > 0; --n) {
    const auto [x, y] = zelvan::test::PointIn(random, size - side);
    const std::int32_t w = 2 + random.Below(side / 2);
    const std::int32_t h = 2 + random.Below(side / 2);
    Ring ring = zelvan::test::Box(x, y, x + w, y + h);
    if (random.Below(2) == 0) std::reverse(ring.begin(), ring.end());
    rings.push_back(ring);
  }
  return rings;
}

// Laws between operations on hundreds of rings, where no oracle reaches. Nothing is
// rounded but in the first law, which holds all the same.
TEST(BooleanRandom, LawsHoldOnManyRings) {
  for (std::uint64_t seed = 0; seed < 16; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    const auto rule = WindingRule(seed % 3);
    const std::int64_t n = 200 + Scaled(600);
    const Rings tangle = zelvan::test::Mess(random, 500000, 30, {});
    const Areas wildA{tangle};
    const Areas wildB{zelvan::test::Mess(random, 500000, 30, tangle)};
    EXPECT_EQ(EdgesOf(Combined(wildA, wildB, 0, rule)), EdgesOf(Combined(wildB, wildA, 0, rule)));

    const Areas a{AxisParallel(random, 40000, 1500, n)};
    const Areas b{AxisParallel(random, 40000, 1500, n)};
    const Areas both = Combined(a, b, 1, rule);
    const Areas less = Combined(a, b, 2, rule);
    const Areas regionA = Combined(a, a, 0, rule);
    EXPECT_FALSE(both.empty() || less.empty());
    EXPECT_EQ(EdgesOf(less), EdgesOf(Combined(regionA, both, 2)));
    EXPECT_EQ(EdgesOf(Combined(a, b, 3, rule)),
              EdgesOf(Combined(less, Combined(b, a, 2, rule), 0)));
  }
}

// A single contour is sound where it is its own region, as one walk; near ones are left open
// that rounding would bend. Cheaper looks say the same, and plain ones are never bent.
TEST(Soundness, IsToBeOnesOwnRegion) {
  int counts[2][2] = {};
  for (std::int64_t k = Scaled(40000); k > 0; --k) {
    Random random(static_cast<std::uint64_t>(k));
    const std::int32_t size = 2 + random.Below(k % 4 == 0 ? 30 : 7);
    Ring ring = k % 2 == 0 ? kFamilies[0].make(random, size)[0]
                           : zelvan::test::SimplePolygon(random, size, 3 + random.Below(6));
    if (k % 32 != 0 && TwiceArea(ring) < 0) std::reverse(ring.begin(), ring.end());
    for (zelvan::GridPoint& p : ring) p = {p.gx - size / 2, p.gy - size / 2};
    const zelvan::OwnedRing owned = RingOf({{ring}});
    const Rings walks = Flatten(Combined({{ring}}, {{ring}}, 0));
    const oracle::Arrangement snapped = oracle::Snap({ring}, {});
    const oracle::Boundary own = oracle::Cut({{ring}}, snapped.hot);
    std::size_t edges = 0;
    for (const oracle::Edge& e : snapped.edges) edges += e.copies;
    const bool isBent = snapped.crossings == 0 && edges != own.size();
    const bool isOwn = walks.size() == 1 && oracle::Cut({walks}, snapped.hot) == own;
    const bool isSound = zelvan::IsSound(owned.first);
    const bool isPlain = TwiceArea(ring) > 0 && zelvan::IsPlain(owned.first->contours);
    EXPECT_TRUE(isBent || isSound == isOwn) << Text({ring});
    EXPECT_EQ(zelvan::IsSoundContour(owned.first, false), isSound) << Text({ring});
    EXPECT_TRUE(!isPlain || isOwn) << Text({ring});
    ++counts[isSound][isPlain];
  }
  for (const int count : {counts[0][0], counts[1][0], counts[1][1]}) EXPECT_GT(count, 50);
}

// The largest numbers that a sweep meets, and no more events than segments and crossings allow.
TEST(Sweep, NumbersAndWorkAreBounded) {
  constexpr std::int32_t lo = -zelvan::GRID_OFFSET;
  constexpr std::int32_t hi = zelvan::GRID_MAX - zelvan::GRID_OFFSET;
  const zelvan::Crossing middle = zelvan::FindCrossing({lo, lo}, {hi, hi}, {lo, hi}, {hi, lo});
  EXPECT_EQ(zelvan::RoundRatio(middle.xNum, middle.den).value, 0);  // -1/2, halves upward
  EXPECT_EQ(zelvan::RoundRatio(middle.xNum, middle.den).sign, -1);
  const zelvan::Crossing far = zelvan::FindCrossing({lo, hi - 1}, {hi, hi}, {lo, hi}, {hi, hi - 1});
  EXPECT_TRUE(far.counts);
  EXPECT_EQ(zelvan::RoundRatio(far.yNum, far.den).value, hi);

  std::uint64_t crossings = 0;
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    Random random(seed);
    const std::int32_t size = seed % 3 == 0 ? 200000 : 4 + random.Below(200);
    Areas mess;
    for (int k = 0; k < 20; ++k) mess.push_back(kFamilies[0].make(random, size));
    zelvan::SweepRecords records;  // outlives the ring, whose new vertices it holds
    const zelvan::OwnedRing ring = RingOf(mess);
    zelvan::MarkOperand(ring.first, true);
    zelvan::SegmentTable table;
    zelvan::FillSegments(table, ring.first);
    zelvan::Sweep sweep(records);
    sweep.Run(table);
    const std::uint64_t n = table.size();
    EXPECT_LE(sweep.CrossingCount(), n * (n - 1) / 2) << "seed " << seed;
    EXPECT_LE(sweep.EventCount(), 5 * n + 2 * sweep.CrossingCount()) << "seed " << seed;
    crossings += sweep.CrossingCount();
  }
  EXPECT_GT(crossings, 50000u);

  // Frames that each start above all others, or below.
  for (const int up : {-1, 1}) {
    constexpr int kSteps = 2000;
    Areas stairs;
    for (std::int32_t k = 0; k < kSteps; ++k) {
      const std::int32_t y = 20 * up * k;
      Ring hole = zelvan::test::Box(k + 1, y + 1, 49999 + k, y + 8);
      std::reverse(hole.begin(), hole.end());
      stairs.push_back({zelvan::test::Box(k, y, 50000 + k, y + 9), hole});
    }
    EXPECT_EQ(PlacedAgain(stairs, zelvan::PlaceHoles), stairs);
    const zelvan::OwnedRing ring = RingOf(stairs);
    zelvan::SegmentTable table;
    zelvan::FillSegments(table, ring.first);
    zelvan::SweepRecords records;
    zelvan::Sweep sweep(records);
    sweep.Run(table);
    EXPECT_LT(sweep.SearchSteps(), 200u * kSteps);
  }
}

}  // namespace
