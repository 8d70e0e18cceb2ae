// Drawing layers (layer_drawer.h).
#include "overlay/layer_drawer.h"

#include <zelvan/error.h>

#include "overlay/exact.h"

namespace zelvan::overlay {

void LayerDrawer::Clear(std::size_t edges) {
  boundary_.Clear();
  boundary_.Reserve(2 * edges + 2);
  labels_.clear();
  labels_.reserve(2 * edges + 2);
  static_cast<void>(AddPieces(LayerSets::kEmpty, LayerSets::kEmpty));
}

std::uint32_t LayerDrawer::AddPieces(LayerSets::Name above, LayerSets::Name below) {
  if (above < LayerSets::kEmpty)
    ERR::Raise(ERR::FAIL);  // there is ground that less than nothing covers
  const std::uint32_t piece = boundary_.Add(true);
  static_cast<void>(boundary_.Add(false));
  labels_.push_back(above);
  labels_.push_back(below);
  return piece;
}

void LayerDrawer::Turn(ActiveEdge& e, GridPoint p) {
  const std::uint32_t piece = boundary_.GoOn(e.piece, p);
  static_cast<void>(boundary_.GoOn(e.piece + 1, p));
  for (const std::uint32_t side : {0U, 1U}) {
    const LayerSets::Name label = labels_[e.piece + side];
    labels_.push_back(label);
  }
  e.piece = piece;
}

void LayerDrawer::Draw(GridPoint p, const ActiveEdge* below,
                       const std::vector<ActiveEdge>& arriving,
                       std::vector<ActiveEdge>& departing) {
  if (arriving.empty() && departing.empty()) return;
  if (arriving.size() == 1 && departing.size() == 1 &&
      SideOf(arriving[0].low, p, departing[0].high) == 0) {
    departing[0].below = arriving[0].below;
    departing[0].piece = arriving[0].piece;
    departing[0].face = arriving[0].face;
    return;
  }
  Windings set = below != nullptr ? Sum(below->below, below->step) : Windings{};
  std::uint32_t face = below != nullptr ? below->face : kOutside;
  const std::uint32_t faceAbove = arriving.empty() ? face : arriving.back().face;
  for (ActiveEdge& e : departing) {
    e.below = set;
    set = Sum(set, e.step);
    e.piece = face = AddPieces(set.first, e.below.first);
    e.face = face;
  }
  if (face != faceAbove) boundary_.Unite(face, faceAbove);
  Connect(p, arriving, departing);
}

void LayerDrawer::Connect(GridPoint p, const std::vector<ActiveEdge>& arriving,
                          const std::vector<ActiveEdge>& departing) {
  leaving_.clear();
  reaching_.clear();
  for (const ActiveEdge& e : departing) {
    leaving_.push_back(e.piece);
    reaching_.push_back(e.piece + 1);
  }
  for (auto e = arriving.rbegin(); e != arriving.rend(); ++e) {
    leaving_.push_back(e->piece + 1);
    reaching_.push_back(e->piece);
  }
  const std::size_t count = leaving_.size();
  for (std::size_t i = 0; i < count; ++i) {  // three sectors are of three sets
    boundary_.Follow(p, reaching_[i + 1 < count ? i + 1 : 0], leaving_[i], count > 3);
  }
}

}  // namespace zelvan::overlay
