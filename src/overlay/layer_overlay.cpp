// The stages of an overlay of layers (layer_overlay.h).
#include "overlay/layer_overlay.h"

#include <algorithm>
#include <new>
#include <utility>

#include "overlay/drawing.h"
#include "overlay/layer_drawer.h"
#include "overlay/rings.h"

namespace zelvan::overlay {

namespace {

using Names = std::vector<LayerSets::Name>;

// The sets on the left of pieces, in the order of parts.
Names SetsOf(const LayerDrawer& drawer) {
  std::vector<bool> isThere(drawer.Sets().Names(), false);
  Names sets;
  for (const LayerSets::Name set : drawer.Labels()) {
    if (set == LayerSets::kEmpty || isThere[static_cast<std::size_t>(set)]) continue;
    isThere[static_cast<std::size_t>(set)] = true;
    sets.push_back(set);
  }
  std::sort(sets.begin(), sets.end(), [&drawer](LayerSets::Name a, LayerSets::Name b) {
    return drawer.Sets().IsBefore(a, b);
  });
  return sets;
}

// The number of the part that each piece bounds; that of no layer comes last.
std::vector<std::uint32_t> PartsOf(const LayerDrawer& drawer, const Names& sets, Gaps gaps) {
  std::vector<std::uint32_t> partOf(drawer.Sets().Names(), kNone);
  std::uint32_t part = 0;
  for (const LayerSets::Name set : sets) partOf[static_cast<std::size_t>(set)] = part++;
  if (gaps == Gaps::kWanted) partOf[LayerSets::kEmpty] = part;
  std::vector<std::uint32_t> parts;
  parts.reserve(drawer.Labels().size());
  for (const LayerSets::Name set : drawer.Labels()) {
    parts.push_back(partOf[static_cast<std::size_t>(set)]);
  }
  for (std::uint32_t i = 0; i < 2; ++i) parts[LayerDrawer::kOutside + i] = kNone;
  return parts;
}

// The layers next to each polygon from `first` on.
NumberLists LayersAround(const LayerDrawer& drawer, std::span<const std::uint32_t> polygonOf,
                         std::uint32_t first) {
  std::vector<std::pair<std::uint32_t, LayerSets::Name>> pairs;  // a polygon, a set next to it
  for (std::uint32_t i = 0; i < polygonOf.size(); ++i) {
    if (polygonOf[i] != kNone && polygonOf[i] >= first) {
      pairs.emplace_back(polygonOf[i], drawer.Labels()[i ^ 1U]);
    }
  }
  std::sort(pairs.begin(), pairs.end());
  pairs.erase(std::unique(pairs.begin(), pairs.end()), pairs.end());
  NumberLists around;
  for (auto pair = pairs.begin(); pair != pairs.end();) {
    const std::uint32_t polygon = pair->first;
    const std::size_t begin = around.numbers.size();
    for (; pair != pairs.end() && pair->first == polygon; ++pair) {
      drawer.Sets().AppendTo(around.numbers, pair->second);
    }
    const auto list = around.numbers.begin() + static_cast<std::ptrdiff_t>(begin);
    std::sort(list, around.numbers.end());
    around.numbers.erase(std::unique(list, around.numbers.end()), around.numbers.end());
    around.Close();
  }
  return around;
}

}  // namespace

void NumberLists::Close() {
  if (numbers.size() >= kNone) throw std::bad_alloc();
  offsets.push_back(static_cast<std::uint32_t>(numbers.size()));
}

struct LayerOverlay::Arrays {
  EdgeSet edges;
  LayerDrawer drawer;
};

LayerOverlay::LayerOverlay() : arrays_(std::make_unique<Arrays>()) {}

LayerOverlay::~LayerOverlay() = default;

void LayerOverlay::Reserve(std::size_t points) {
  arrays_->edges.Reserve(points);
}

void LayerOverlay::Add(const FlatRegion& region, std::uint32_t layer) {
  const Windings step = LayerDrawer::Step(arrays_->drawer.Sets().Of(layer));
  for (std::size_t i = 0; i < region.Rings(); ++i) arrays_->edges.AddRing(region.Ring(i), step);
}

LayerParts LayerOverlay::Run(Gaps gaps) {
  auto& [edges, drawer] = *arrays_;
  {
    Sweep<LayerDrawer> sweep;
    Bending bending;
    Draw(edges, sweep, drawer, bending);
  }
  LayerParts parts;
  const Names sets = SetsOf(drawer);
  for (const LayerSets::Name set : sets) {
    drawer.Sets().AppendTo(parts.layers.numbers, set);
    parts.layers.Close();
  }
  std::vector<std::uint32_t> ends;
  std::vector<std::uint32_t> polygonOf;
  parts.flat =
      RegionsWithin(drawer.TheBoundary(), PartsOf(drawer, sets, gaps), LayerDrawer::kOutside, ends,
                    gaps == Gaps::kWanted ? &polygonOf : nullptr);
  ends.resize(sets.size(), ends.empty() ? 0 : ends.back());
  parts.ends.insert(parts.ends.end(), ends.begin(), ends.end());
  if (gaps == Gaps::kWanted) parts.around = LayersAround(drawer, polygonOf, parts.ends.back());
  return parts;
}

}  // namespace zelvan::overlay
