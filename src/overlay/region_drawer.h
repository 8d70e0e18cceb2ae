// The drawer of one region: of the places that a selection holds.
#pragma once

#include <cstddef>
#include <vector>

#include "overlay/boundary.h"
#include "overlay/selection.h"
#include "overlay/status.h"

namespace zelvan::overlay {

/// Draws for a sweep (sweep.h says what a drawer is). An active edge has a piece where it bounds
/// the region.
class RegionDrawer {
 public:
  RegionDrawer() = default;
  explicit RegionDrawer(const Selection& selection) noexcept : selection_(selection) {}

  void Select(const Selection& selection) noexcept { selection_ = selection; }

  [[nodiscard]] static Windings Sum(Windings a, Windings b) noexcept { return a + b; }

  void Clear(std::size_t edges) {
    boundary_.Clear();
    boundary_.Reserve(edges);
  }
  void Draw(GridPoint p, const ActiveEdge* below, const std::vector<ActiveEdge>& arriving,
            std::vector<ActiveEdge>& departing);
  void Turn(ActiveEdge& e, GridPoint p) { e.piece = boundary_.GoOn(e.piece, p); }

  [[nodiscard]] Boundary& TheBoundary() noexcept { return boundary_; }
  [[nodiscard]] std::size_t Bytes() const noexcept { return boundary_.Bytes(); }

 private:
  Selection selection_;
  Boundary boundary_;
  std::vector<std::uint32_t> leftPieces_;
  std::vector<std::uint32_t> rightPieces_;
};

}  // namespace zelvan::overlay
