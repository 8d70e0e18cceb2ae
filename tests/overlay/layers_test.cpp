// Overlays of 2 to 12 layers against the arrangement oracle: the same sets, in the same order, with
// the same regions, points for neighbours included, which are regions to everything else. The seed
// of a case that fails is printed.
#include <gtest/gtest.h>

#include "overlay/layer_overlay.h"
#include "overlay/overlay.h"
#include "overlay/ring_cases.h"
#include "support/mesh_checker.h"

namespace {

using namespace zelvan;
using namespace zelvan::test;

// Valid regions of the rings of a case of regions, some cut by others, so that they share borders.
std::vector<FlatRegion> RandomLayers(std::uint64_t seed) {
  Random random(seed);
  Rings rings;
  for (const Rings& operand : RandomCase(seed).operands) {
    rings.insert(rings.end(), operand.begin(), operand.end());
  }
  std::vector<FlatRegion> layers(2 + random.Below(oracle::kMostLayers - 1));
  for (std::size_t i = 0; i < layers.size(); ++i) {
    overlay::Overlay overlay;
    for (int k = random.Below(6); k >= 0; --k) {
      overlay.Edges().AddRing(random.Pick(rings), {1, 0});
    }
    if (random.Below(3) != 0) {
      for (const Ring& ring : RingsOf(random.Pick(layers))) overlay.Edges().AddRing(ring, {0, 1});
    }
    constexpr overlay::Operation operations[] = {overlay::Operation::kUnite,
                                                 overlay::Operation::kSubtract,
                                                 overlay::Operation::kExclusiveOr};
    const FillRule rule = random.Below(2) == 0 ? FillRule::EvenOdd : FillRule::NonZero;
    layers[i] = overlay.Run({operations[random.Below(3)], rule, FillRule::NonZero});
  }
  return layers;
}

std::string WrongInLayers(const std::vector<FlatRegion>& layers) {
  std::vector<Rings> rings;
  overlay::LayerOverlay overlay;
  for (std::uint32_t i = 0; i < layers.size(); ++i) {
    rings.push_back(RingsOf(layers[i]));
    overlay.Add(layers[i], i);
  }
  const oracle::Parts right = oracle::PartsOf(oracle::Snap(rings, oracle::Bends::kNeeded));
  const overlay::LayerParts parts = overlay.Run(overlay::Gaps::kIgnored);
  if (parts.Parts() != right.size()) return "not all sets, or more";
  std::size_t i = 0;
  for (const auto& [set, region] : right) {
    const auto layersOfPart = parts.layers[i];
    if (!std::equal(set.begin(), set.end(), layersOfPart.begin(), layersOfPart.end())) {
      return "another set as number " + std::to_string(i);
    }
    if (parts.Region(i) != region) return "another region of set " + std::to_string(i);
    overlay::Overlay again;
    for (const Ring& ring : RingsOf(region)) again.Edges().AddRing(ring, {1, 0});
    const FlatRegion remade = again.Run({overlay::Operation::kUnite, FillRule::Positive, {}});
    if (!HaveSameCorners(region, remade)) return "no region, number " + std::to_string(i);
    if (const std::string faults = CheckMeshes(region); !faults.empty()) return faults;
    ++i;
  }
  return "";
}

TEST(OverlayLayers, PartsAreTheOracles) {
  const std::uint64_t cases = Scaled(4000);
  for (std::uint64_t seed = 0; seed < cases; ++seed) {
    ASSERT_EQ(WrongInLayers(RandomLayers(seed)), "") << "seed " << seed;
  }
}

}  // namespace
