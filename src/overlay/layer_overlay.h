// The overlay of layers: for each set of them that covers some ground, the region that just these
// cover (docs/ARCHITECTURE.md).
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "polygon/flat_region.h"

namespace zelvan::overlay {

/// Lists of numbers, one after the other.
struct NumberLists {
  std::vector<std::uint32_t> offsets{0};
  std::vector<std::uint32_t> numbers;

  [[nodiscard]] std::size_t Size() const noexcept { return offsets.size() - 1; }
  [[nodiscard]] std::span<const std::uint32_t> operator[](std::size_t i) const noexcept {
    return {numbers.data() + offsets[i], numbers.data() + offsets[i + 1]};
  }
  /// Ends a list, of what was appended to `numbers`. Throws std::bad_alloc, also for 2^32 numbers.
  void Close();
};

/// What lies where. Regions are in canonical order (polygon/flat_region.h), each on its own, but
/// have every point at which an edge of another begins or ends: what two of them share are edges.
struct LayerParts {
  NumberLists layers;                  ///< of each part, ascending; parts by these
  FlatRegion flat;                     ///< the polygons of all parts, then the gaps
  std::vector<std::uint32_t> ends{0};  ///< numbers of polygons: where each part begins, and the end
  NumberLists around;                  ///< of each gap the layers next to it, ascending

  [[nodiscard]] std::size_t Parts() const noexcept { return layers.Size(); }

  /// Throws std::bad_alloc.
  [[nodiscard]] FlatRegion Region(std::size_t part) const {
    return Polygons(flat, ends[part], ends[part + 1]);
  }
};

/// Bounded components of what no layer covers.
enum class Gaps { kIgnored, kWanted };

/// One overlay.
class LayerOverlay {
 public:
  /// Throws std::bad_alloc, as all do.
  LayerOverlay();
  LayerOverlay(const LayerOverlay&) = delete;
  LayerOverlay& operator=(const LayerOverlay&) = delete;
  ~LayerOverlay();

  /// Makes room for that many points of all layers.
  void Reserve(std::size_t points);

  /// Adds a layer, one of a number of its own.
  void Add(const FlatRegion& region, std::uint32_t layer);

  /// To be called once. Raises ERR::FAIL if a boundary does not close, which is a contradiction.
  [[nodiscard]] LayerParts Run(Gaps gaps);

 private:
  struct Arrays;
  std::unique_ptr<Arrays> arrays_;
};

}  // namespace zelvan::overlay
