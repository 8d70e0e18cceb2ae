// Regions from rings of 2 to 31 bits against the arrangement oracle: the same arrays. A case that
// fails is printed as C++ code, made small, with its seed.
#include <gtest/gtest.h>

#include <cstdlib>

#include "overlay/ring_cases.h"

namespace {

using namespace zelvan::test;
using zelvan::FillRule;
using zelvan::FlatRegion;

std::uint64_t Scaled(std::uint64_t cases) {
  const char* text = std::getenv("ZELVAN_TEST_SCALE");
  return text != nullptr ? cases * static_cast<std::uint64_t>(std::atoll(text)) / 100 + 1 : cases;
}

void ExpectRight(std::uint64_t cases, const RegionEngine& engine,
                 oracle::Bends bends = oracle::Bends::kNeeded, int mostBits = 31) {
  for (std::uint64_t seed = 0; seed < Scaled(cases); ++seed) {
    ASSERT_EQ(WrongInSeed(seed, engine, bends, mostBits), "");
  }
}

FlatRegion ByOracle(std::span<const Ring> a, FillRule ruleA, std::span<const Ring> b,
                    FillRule ruleB, int op) {
  const auto snapped =
      oracle::Snap({a.begin(), a.end()}, {b.begin(), b.end()}, oracle::Bends::kNeeded);
  return oracle::RegionOf(oracle::BoundaryOf(snapped, op, {ruleA, ruleB}));
}

// What is bent where needed alone is bent once and for all.
TEST(OverlayRandom, TheOraclesRegionsMadeAgainAreThemselves) {
  ExpectRight(2000, ByOracle);
}

}  // namespace
