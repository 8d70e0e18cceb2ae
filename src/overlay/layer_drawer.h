// The drawer of layers: the boundaries of all the ground that one set of layers covers, for each
// set.
//
// What holds here:
//  - Every active edge draws, for it has another set above than below. It draws two pieces
//    (boundary.h): an even number that runs to the right, around what lies above, and the next
//    number, which runs to the left, around what lies below.
//  - Each piece has a label, the set on its left. Around a place the piece that arrives along one
//    side of a sector is followed by the piece that leaves along the other.
//  - Pieces meet where three edges or more do, also on a straight line: so the boundaries on both
//    sides of an edge have the same points.
//  - The first two pieces stand for what lies around everything.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "overlay/boundary.h"
#include "overlay/layer_sets.h"
#include "overlay/status.h"

namespace zelvan::overlay {

/// Draws for a sweep (sweep.h says what a drawer is) of edges whose steps are `Step(set)`.
class LayerDrawer {
 public:
  /// What all around everything hangs together with.
  static constexpr std::uint32_t kOutside = 0;

  [[nodiscard]] LayerSets& Sets() noexcept { return sets_; }
  [[nodiscard]] const LayerSets& Sets() const noexcept { return sets_; }

  /// What crossing an edge adds.
  [[nodiscard]] static Windings Step(LayerSets::Name set) noexcept { return {set, 0}; }

  [[nodiscard]] Windings Sum(Windings a, Windings b) { return Step(sets_.Sum(a.first, b.first)); }
  void Clear(std::size_t edges);
  void Draw(GridPoint p, const ActiveEdge* below, const std::vector<ActiveEdge>& arriving,
            std::vector<ActiveEdge>& departing);
  void Turn(ActiveEdge& e, GridPoint p);

  [[nodiscard]] Boundary& TheBoundary() noexcept { return boundary_; }
  /// The set on the left of each piece.
  [[nodiscard]] std::span<const LayerSets::Name> Labels() const noexcept { return labels_; }

 private:
  [[nodiscard]] std::uint32_t AddPieces(LayerSets::Name above, LayerSets::Name below);
  void Connect(GridPoint p, const std::vector<ActiveEdge>& arriving,
               const std::vector<ActiveEdge>& departing);

  LayerSets sets_;
  Boundary boundary_;
  std::vector<LayerSets::Name> labels_;
  std::vector<std::uint32_t> leaving_;   // counter-clockwise around a place
  std::vector<std::uint32_t> reaching_;  // on the other side of the same edges
};

}  // namespace zelvan::overlay
