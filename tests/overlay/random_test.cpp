// The overlay engine against the arrangement oracle, on rings of 2 to 31 bits: the same arrays,
// which their rings give again. A case that fails is printed as C++ code, made small, with its
// seed. ZELVAN_TEST_SCALE is the share of the cases in per cent.
#include <gtest/gtest.h>

#include "overlay/overlay.h"
#include "overlay/ring_cases.h"

namespace {

using namespace zelvan::test;
using zelvan::FillRule;
using zelvan::FlatRegion;
using zelvan::overlay::Operation;

FlatRegion ByOverlay(std::span<const Ring> a, FillRule ruleA, std::span<const Ring> b,
                     FillRule ruleB, int op) {
  constexpr Operation kOperations[] = {Operation::kUnite, Operation::kIntersect,
                                       Operation::kSubtract, Operation::kExclusiveOr};
  zelvan::overlay::Overlay overlay;
  for (const Ring& ring : a) overlay.Edges().AddRing(ring, {1, 0});
  for (const Ring& ring : b) overlay.Edges().AddRing(ring, {0, 1});
  return overlay.Run({kOperations[op], ruleA, ruleB});
}

TEST(OverlayRandom, EveryOperationIsTheOracles) {
  const std::uint64_t cases = Scaled(20000);
  for (std::uint64_t seed = 0; seed < cases; ++seed) ASSERT_EQ(WrongInSeed(seed, ByOverlay), "");
}

}  // namespace
