// A tree of boxes over the edges of a ring, which tells whether some edges in a row come near a
// place.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "polygon/grid.h"

namespace zelvan::offset {

class ChainBoxes {
 public:
  /// Edge i leads from point i to the next one, the last edge to point 0. The points must stay.
  /// Throws std::bad_alloc.
  void Build(std::span<const GridPoint> ring);

  /// Does one of the edges from `first` on, before `end`, come nearer to a place than a radius?
  [[nodiscard]] bool ComesNear(std::size_t first, std::size_t end, WorldPoint place,
                               double radius) const noexcept;

 private:
  static constexpr std::size_t kFan = 8;

  struct Disc {
    WorldPoint centre;
    double square;
  };
  [[nodiscard]] bool EdgeComesNear(std::size_t edge, const Disc& disc) const noexcept;
  [[nodiscard]] bool BlockComesNear(std::size_t level, std::size_t block,
                                    const Disc& disc) const noexcept;
  [[nodiscard]] std::size_t SizeOf(std::size_t level) const noexcept {
    return level == 0 ? ring_.size() : levels_[level - 1].size();
  }

  std::span<const GridPoint> ring_;
  std::vector<std::vector<GridBox>> levels_;  // blocks of 8, 64, ... edges
};

}  // namespace zelvan::offset
