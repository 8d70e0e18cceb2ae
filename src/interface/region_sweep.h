// The sweep under every region: the only place where regions meet the overlay engine.
#pragma once

#include <zelvan/fill_rule.h>

#include <span>

#include "overlay/overlay.h"
#include "polygon/flat_region.h"

namespace zelvan {

/// One overlay of the rings of two operands, which it uses up. All throw std::bad_alloc.
class RegionSweep {
 public:
  /// Makes room for that many points of both operands.
  void Reserve(std::size_t points) { overlay_.Edges().Reserve(points); }

  void AddFirst(std::span<const GridPoint> ring) { overlay_.Edges().AddRing(ring, {1, 0}); }
  void AddSecond(std::span<const GridPoint> ring) { overlay_.Edges().AddRing(ring, {0, 1}); }
  void AddFirst(const FlatRegion& region);
  void AddSecond(const FlatRegion& region);

  /// Throws RegionRefusal for more points than a region can have, and raises what the engine
  /// raises.
  [[nodiscard]] FlatRegion Run(overlay::Operation operation, FillRule first, FillRule second);

  /// What the rings of the first operand bound.
  [[nodiscard]] FlatRegion Run(FillRule rule) {
    return Run(overlay::Operation::kUnite, rule, rule);
  }

 private:
  overlay::Overlay overlay_;
};

}  // namespace zelvan
