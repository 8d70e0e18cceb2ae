// The engine against the brute-force oracle, on grids so small that everything
// touches and overlaps. Every operation of every case must give the oracle's
// region edge for edge, as sound areas.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

#include "boolean/boolean.h"
#include "boolean/fixtures.h"
#include "boolean/hole_placement.h"
#include "boolean/soundness.h"

namespace {

using fixtures::Random;
using oracle::Areas;
using oracle::Rings;

constexpr const char* kOpNames[] = {"union", "intersection", "difference", "xor"};

// Scales the number of cases: ZELVAN_TEST_SCALE percent, 100 when not set.
std::int64_t Scaled(std::int64_t cases) {
  const char* text = std::getenv("ZELVAN_TEST_SCALE");
#ifdef ZELVAN_TEST_SCALE
  const std::int64_t scale = text != nullptr ? std::atoll(text) : ZELVAN_TEST_SCALE;
#else
  const std::int64_t scale = text != nullptr ? std::atoll(text) : 100;
#endif
  return cases * scale / 100 + 1;
}

Areas Combined(const Areas& a, const Areas& b, int op) {
  const zelvan::OwnedRing ringA = fixtures::RingOf(a);
  const zelvan::OwnedRing ringB = fixtures::RingOf(b);
  zelvan::OwnedRing result;
  EXPECT_EQ(zelvan::Boolean(ringA.first, ringB.first, result.first, zelvan::BoolOp{op}), ERR::OK);
  EXPECT_EQ(fixtures::AreasOf(ringA.first), a) << "operand changed";
  EXPECT_TRUE(zelvan::IsSound(result.first));
  return fixtures::AreasOf(result.first);
}

// Takes the holes out of a sound region and has them placed by the sweep.
Areas PlacedAgain(const Areas& areas) {
  zelvan::OwnedRing ring;
  zelvan::PendingHoles holes;
  for (const Rings& rings : areas) {
    zelvan::AppendArea(ring.first, fixtures::RingOf(Rings{rings[0]}).release());
    for (std::size_t i = rings.size(); i-- > 1;) {
      zelvan::OwnedRing hole = fixtures::RingOf(Rings{rings[i]});
      holes.Push(zelvan::OwnedContour(std::exchange(hole.first->contours, nullptr)));
    }
  }
  zelvan::PlaceHolesBySweep(ring, holes);
  Areas placed = fixtures::AreasOf(ring.first);
  for (Rings& rings : placed) std::reverse(rings.begin() + 1, rings.end());
  return placed;
}

class RandomCase {
 public:
  // Every operation in both orders; @return the union
  Areas Check(const Areas& a, const Areas& b, const std::string& name) {
    const oracle::Arrangement ab = oracle::Snap(fixtures::Flatten(a), fixtures::Flatten(b));
    const oracle::Arrangement ba = oracle::Snap(fixtures::Flatten(b), fixtures::Flatten(a));
    crossings += ab.crossings > 0;
    cancelled += ab.cancelled > 0;
    Areas united;
    for (int op = 0; op < 4; ++op) {
      Areas result = CheckOne(a, b, ab, op, name);
      CheckOne(b, a, ba, op, name + ", reversed");
      if (op == 0) united = std::move(result);
    }
    return united;
  }

  std::int64_t operations = 0;
  std::int64_t crossings = 0;
  std::int64_t cancelled = 0;
  std::int64_t holes = 0;

 private:
  Areas CheckOne(const Areas& a, const Areas& b, const oracle::Arrangement& arrangement, int op,
                 const std::string& name) {
    ++operations;
    Areas result = Combined(a, b, op);
    const bool same = oracle::Cut(result, arrangement.hot) == oracle::BoundaryOf(arrangement, op);
    const std::string faults = oracle::Faults(result, arrangement.hot);
    if (!same || !faults.empty()) {
      ADD_FAILURE() << kOpNames[op] << " of " << name << "\n"
                    << faults << "A " << fixtures::Text(fixtures::Flatten(a)) << "\nB "
                    << fixtures::Text(fixtures::Flatten(b)) << "\nresult "
                    << fixtures::Text(fixtures::Flatten(result));
    }
    if (!result.empty()) {
      EXPECT_EQ(PlacedAgain(result), result);
      for (const Rings& rings : result) holes += static_cast<std::int64_t>(rings.size()) - 1;
    }
    return result;
  }
};

TEST(BooleanRandom, EveryOperationOfEveryFamilyGivesTheOraclesRegion) {
  RandomCase random_case;
  const std::int64_t cases = Scaled(700);
  for (std::size_t i = 0; i < fixtures::kFamilies.size(); ++i) {
    for (std::size_t j = i; j < fixtures::kFamilies.size(); ++j) {
      const fixtures::Family& first = fixtures::kFamilies[i];
      const fixtures::Family& second = fixtures::kFamilies[j];
      for (std::int64_t k = 0; k < cases; ++k) {
        const std::uint64_t seed = (i * 100 + j) * 1000000 + static_cast<std::uint64_t>(k);
        Random random(seed);
        const std::int64_t size = 4 + random.Below(k % 8 == 0 ? 37 : 9);
        const auto symmetry = static_cast<unsigned>(random.Below(8));
        const Areas a{fixtures::Mirrored(first.make(random, size), symmetry, size)};
        const Areas b{fixtures::Mirrored(second.make(random, size), symmetry, size)};
        random_case.Check(
            a, b,
            std::string(first.name) + " and " + second.name + ", seed " + std::to_string(seed));
        if (::testing::Test::HasFailure()) return;
      }
    }
  }
  std::printf("%lld operations, %lld cases with crossings, %lld with cancelled edges\n",
              static_cast<long long>(random_case.operations),
              static_cast<long long>(random_case.crossings),
              static_cast<long long>(random_case.cancelled));
  EXPECT_GT(random_case.crossings, 10 * cases);
  EXPECT_GT(random_case.cancelled, 5 * cases);
  EXPECT_GT(random_case.holes, 4 * cases);
}

// Results are operands: regions with holes and several areas, which touch.
TEST(BooleanRandom, ResultsFedBackStayRightAndUniteWithThemselvesUnchanged) {
  RandomCase random_case;
  const std::int64_t chains = Scaled(400);
  std::int64_t selfUnions = 0;
  std::int64_t stable = 0;
  for (std::int64_t k = 0; k < chains; ++k) {
    const auto seed = static_cast<std::uint64_t>(900000000 + k);
    Random random(seed);
    const std::int64_t size = 4 + random.Below(17);
    const auto pick = [&] {
      const auto n = static_cast<std::int64_t>(fixtures::kFamilies.size());
      return Areas{
          fixtures::kFamilies[static_cast<std::size_t>(random.Below(n))].make(random, size)};
    };
    Areas region = pick();
    for (int step = 0; step < 4 && !region.empty(); ++step) {
      const Areas other = pick();
      const std::string name = "chain, seed " + std::to_string(seed);
      const Areas united = random_case.Check(region, other, name);
      const Areas twice = random_case.Check(united, united, name + ", with itself");
      // Rounding again may pull edges to vertices that the first rounding moved near;
      // where it does not, nothing changes.
      const auto again = oracle::Snap(fixtures::Flatten(united), {});
      const bool isStable = oracle::Cut(united, again.hot) == oracle::BoundaryOf(again, 0);
      EXPECT_EQ(twice == united, isStable) << name;
      stable += isStable;
      ++selfUnions;
      region = Combined(region, other, static_cast<int>(random.Below(4)));
    }
    if (::testing::Test::HasFailure()) return;
  }
  std::printf("%lld operations\n", static_cast<long long>(random_case.operations));
  EXPECT_GT(2 * stable, selfUnions);
}

}  // namespace
