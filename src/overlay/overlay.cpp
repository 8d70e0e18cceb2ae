// The stages of the overlay engine (overlay.h).
#include "overlay/overlay.h"

#include <array>
#include <atomic>
#include <utility>

#include "overlay/drawing.h"
#include "overlay/region_drawer.h"
#include "overlay/rings.h"

namespace zelvan::overlay {

namespace {

constexpr std::size_t kMostKept = std::size_t{8} << 20;  // bytes

}  // namespace

struct Overlay::Arrays {
  EdgeSet edges;
  Sweep<RegionDrawer> sweep;
  RegionDrawer drawer;
  Bending bending;
};

// The arrays that no overlay has now. Any thread may take a set and give it back without
// waiting. No thread has storage of its own: a library that is loaded again and again, as
// hosts on Windows do, would leave it behind.
class Overlay::Shelf {
 public:
  ~Shelf() {
    while (Take() != nullptr) continue;
  }

  [[nodiscard]] std::unique_ptr<Arrays> Take() noexcept {
    Arrays* arrays = nullptr;
    for (std::atomic<Arrays*>& place : places_) {
      arrays = place.exchange(nullptr, std::memory_order_acq_rel);
      if (arrays != nullptr) break;
    }
    return std::unique_ptr<Arrays>(arrays);
  }

  void Put(std::unique_ptr<Arrays> arrays) noexcept {
    for (std::atomic<Arrays*>& place : places_) {
      Arrays* none = nullptr;
      if (!place.compare_exchange_strong(none, arrays.get(), std::memory_order_acq_rel)) continue;
      static_cast<void>(arrays.release());
      return;
    }
  }

 private:
  std::array<std::atomic<Arrays*>, 4> places_{};  // for that many threads at once
};

Overlay::Shelf Overlay::shelf;

Overlay::Overlay() : arrays_(shelf.Take()) {
  if (arrays_ == nullptr) arrays_ = std::make_unique<Arrays>();
  arrays_->edges.Clear();
}

Overlay::~Overlay() {
  const std::size_t bytes = arrays_->edges.Bytes() + arrays_->sweep.Bytes() +
                            arrays_->drawer.Bytes() + arrays_->bending.Bytes();
  if (bytes <= kMostKept) shelf.Put(std::move(arrays_));
}

EdgeSet& Overlay::Edges() noexcept {
  return arrays_->edges;
}

FlatRegion Overlay::Run(const Selection& selection) {
  auto& [edges, sweep, drawer, bending] = *arrays_;
  drawer.Select(selection);
  Draw(edges, sweep, drawer, bending);
  return RegionWithin(drawer.TheBoundary());
}

}  // namespace zelvan::overlay
