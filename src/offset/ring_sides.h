// A ring whose right side grows, as the sites that the nearest place of it can be on: its edges,
// and the corners that the curve goes around.
//
// Site 2 i is edge i, from point i to the next one; site 2 i + 1 is the corner at the edge's end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "offset/side.h"
#include "polygon/grid.h"

namespace zelvan::offset {

using Site = std::uint32_t;

class RingSides {
 public:
  /// For a closed ring of at least 2 points, no two neighbours the same. The points must stay.
  /// Throws std::bad_alloc.
  void Build(std::span<const GridPoint> ring, double distance);

  [[nodiscard]] std::span<const GridPoint> Ring() const noexcept { return ring_; }
  [[nodiscard]] std::size_t Edges() const noexcept { return ring_.size(); }
  [[nodiscard]] std::size_t Following(std::size_t i) const noexcept {
    return i + 1 < ring_.size() ? i + 1 : 0;
  }
  /// Is the corner at an edge's end one that the curve goes around?
  [[nodiscard]] bool IsGoneAround(std::size_t edge) const noexcept {
    return isGoneAround_[edge] != 0;
  }
  /// Does the curve go through the ring's corners nowhere?
  [[nodiscard]] bool IsAllAround() const noexcept { return isAllAround_; }

  [[nodiscard]] static bool IsEdge(Site site) noexcept { return site % 2 == 0; }
  [[nodiscard]] GridPoint StartOf(Site edge) const noexcept { return ring_[edge / 2]; }
  /// The corner, or an edge's end.
  [[nodiscard]] GridPoint EndOf(Site site) const noexcept { return ring_[Following(site / 2)]; }
  /// Where the site's part of the curve begins and ends, seen from that point.
  [[nodiscard]] const Side& From(Site site) const noexcept { return sides_[site / 2]; }
  [[nodiscard]] const Side& To(Site site) const noexcept {
    return sides_[IsEdge(site) ? site / 2 : Following(site / 2)];
  }

 private:
  std::span<const GridPoint> ring_;
  std::vector<Side> sides_;
  std::vector<std::uint8_t> isGoneAround_;
  bool isAllAround_ = false;
};

/// Is a corner gone around? Told by the rounded arms (raw_curve.h); where these turn by more than
/// 90 degrees, by whether the second edge leaves the first one to the left.
[[nodiscard]] inline bool GoesAround(const Side& from, const Side& to, bool turnsLeft) noexcept {
  return Dot(from.arm, to.arm) > 0 ? Cross(from.arm, to.arm) > 0 : turnsLeft;
}

}  // namespace zelvan::offset
