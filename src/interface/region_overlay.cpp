// Overlays of regions (region_overlay.h).
#include "interface/region_overlay.h"

#include <limits>

#include "interface/region_move.h"
#include "interface/region_refusal.h"

namespace zelvan {

std::uint32_t LayersOnGrid::LostOf(std::span<const std::uint32_t> inputs) const noexcept {
  std::uint32_t lost = 0;
  for (const std::uint32_t i : inputs) lost = AddLosses(lost, zelvan::LostOf(regions[i].get()));
  return lost;
}

LayersOnGrid OnOneGrid(std::span<const zelvan_region* const> regions) {
  LayersOnGrid layers{GridFor(regions), {}};
  layers.regions.reserve(regions.size());
  for (const zelvan_region* region : regions) {
    layers.regions.push_back(OnGrid(region, layers.grid, MoveCost::kFaithful));
  }
  return layers;
}

overlay::LayerParts PartsOf(const LayersOnGrid& layers, overlay::Gaps gaps) {
  std::size_t points = 0;
  for (const RegionHandle& region : layers.regions) points += CountsOf(region.get()).vertices;
  Require(points <= std::numeric_limits<std::int32_t>::max(), ZELVAN_TOO_LARGE);
  overlay::LayerOverlay overlay;
  overlay.Reserve(points);
  std::uint32_t layer = 0;
  for (const RegionHandle& region : layers.regions) {
    if (!IsEmpty(region.get())) overlay.Add(region->flat, layer);
    ++layer;
  }
  overlay::LayerParts parts = overlay.Run(gaps);
  Require(parts.flat.points.size() <= std::numeric_limits<std::int32_t>::max(), ZELVAN_TOO_LARGE);
  return parts;
}

OverlayHandle OverlayRegions(std::span<const zelvan_region* const> regions) {
  const LayersOnGrid layers = OnOneGrid(regions);
  overlay::LayerParts parts = PartsOf(layers, overlay::Gaps::kIgnored);
  auto made = std::make_unique<zelvan_overlay>();
  made->regions.reserve(parts.Parts());
  for (std::size_t i = 0; i < parts.Parts(); ++i) {
    const std::uint32_t lost = layers.LostOf(parts.layers[i]);
    made->regions.push_back(MakeRegion(layers.grid, parts.Region(i), lost));
  }
  made->inputs = std::move(parts.layers);
  return made;
}

}  // namespace zelvan
