// The stages of the overlay engine (overlay.h).
#include "overlay/overlay.h"

#include <utility>

#include "overlay/bending.h"
#include "overlay/rings.h"
#include "overlay/sweep.h"

namespace zelvan::overlay {

namespace {

constexpr std::size_t kMostKept = std::size_t{8} << 20;  // bytes

}  // namespace

struct Overlay::Arrays {
  EdgeSet edges;
  Sweep sweep;
  Bending bending;
};

// Of the thread, while no overlay has them.
std::unique_ptr<Overlay::Arrays>& Overlay::Kept() noexcept {
  thread_local std::unique_ptr<Arrays> kept;
  return kept;
}

Overlay::Overlay() : arrays_(std::move(Kept())) {
  if (arrays_ == nullptr) arrays_ = std::make_unique<Arrays>();
  arrays_->edges.Clear();
}

Overlay::~Overlay() {
  const std::size_t bytes =
      arrays_->edges.Bytes() + arrays_->sweep.Bytes() + arrays_->bending.Bytes();
  if (bytes <= kMostKept) Kept() = std::move(arrays_);
}

EdgeSet& Overlay::Edges() noexcept {
  return arrays_->edges;
}

FlatRegion Overlay::Run(const Selection& selection) {
  auto& [edges, sweep, bending] = *arrays_;
  edges.SortVertices();
  sweep.Run(edges, selection, Sweep::Search::kPixels);
  if (!sweep.IsExact()) {
    bending.Split(edges, sweep);
    sweep.Run(edges, selection, Sweep::Search::kNothing);
  }
  return RegionWithin(sweep.TheBoundary());
}

}  // namespace zelvan::overlay
