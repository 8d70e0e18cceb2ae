// Faults of a coverage, from the overlay of its regions (region_overlay.h).
#include <cmath>
#include <utility>

#include "interface/region_overlay.h"
#include "interface/region_refusal.h"
#include "interface/ring_area.h"

namespace zelvan {

namespace {

// 2 area / perimeter of a polygon, in steps.
double WidthOf(const FlatRegion& flat, std::size_t polygon) noexcept {
  WideSum area;
  double perimeter = 0.0;
  for (std::uint32_t i = flat.polygonOffsets[polygon]; i < flat.polygonOffsets[polygon + 1]; ++i) {
    const auto ring = flat.Ring(i);
    area.Add(TwiceAreaOf(ring));
    GridPoint before = ring.back();
    for (const GridPoint p : ring) {
      const double dx = static_cast<double>(p.gx) - static_cast<double>(before.gx);
      const double dy = static_cast<double>(p.gy) - static_cast<double>(before.gy);
      perimeter += std::sqrt(dx * dx + dy * dy);
      before = p;
    }
  }
  return area.Double() / perimeter;
}

class Check {
 public:
  explicit Check(const LayersOnGrid& layers)
      : layers_(layers), faults_(std::make_unique<zelvan_overlay>()) {
    faults_->isCheck = true;
  }

  [[nodiscard]] double Width(const FlatRegion& flat, std::size_t polygon) const noexcept {
    return WidthOf(flat, polygon) * layers_.grid.Step();
  }

  void Add(std::int32_t kind, const FlatRegion& flat, std::size_t polygon,
           std::span<const std::uint32_t> inputs) {
    overlay::NumberLists& lists = faults_->inputs;
    lists.numbers.insert(lists.numbers.end(), inputs.begin(), inputs.end());
    lists.Close();
    faults_->kinds.push_back(kind);
    faults_->widths.push_back(Width(flat, polygon));
    faults_->regions.push_back(
        MakeRegion(layers_.grid, Polygons(flat, polygon, polygon + 1), layers_.LostOf(inputs)));
  }

  [[nodiscard]] OverlayHandle Take() noexcept { return std::move(faults_); }

 private:
  const LayersOnGrid& layers_;
  OverlayHandle faults_;
};

}  // namespace

OverlayHandle CheckCoverage(std::span<const zelvan_region* const> regions, double gapWidth,
                            double sliverWidth) {
  const LayersOnGrid layers = OnOneGrid(regions);
  const overlay::Gaps gaps = gapWidth > 0.0 ? overlay::Gaps::kWanted : overlay::Gaps::kIgnored;
  const overlay::LayerParts parts = PartsOf(layers, gaps);
  Check check(layers);
  for (std::size_t i = 0; i < parts.Parts(); ++i) {
    if (parts.layers[i].size() < 2) continue;
    for (std::uint32_t p = parts.ends[i]; p < parts.ends[i + 1]; ++p) {
      check.Add(ZELVAN_OVERLAP, parts.flat, p, parts.layers[i]);
    }
  }
  for (std::size_t i = 0; i < parts.around.Size(); ++i) {
    const std::size_t polygon = parts.ends.back() + i;
    if (check.Width(parts.flat, polygon) > gapWidth) continue;
    check.Add(ZELVAN_GAP, parts.flat, polygon, parts.around[i]);
  }
  for (std::uint32_t i = 0; i < layers.regions.size() && sliverWidth > 0.0; ++i) {
    if (IsEmpty(layers.regions[i].get())) continue;
    const FlatRegion& flat = layers.regions[i]->flat;
    for (std::size_t p = 0; p < flat.Polygons(); ++p) {
      if (check.Width(flat, p) < sliverWidth) check.Add(ZELVAN_SLIVER, flat, p, {&i, 1});
    }
  }
  return check.Take();
}

}  // namespace zelvan
