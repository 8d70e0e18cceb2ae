// The overlay engine: regions from rings, by fill rules and operations (docs/ARCHITECTURE.md).
#pragma once

#include <memory>

#include "overlay/edges.h"
#include "overlay/selection.h"
#include "polygon/flat_region.h"

namespace zelvan::overlay {

/// One overlay. Its arrays, if they are not too large, are kept for later ones; several overlays
/// may be under way at once, in one thread or in many.
class Overlay {
 public:
  /// Throws std::bad_alloc.
  Overlay();
  Overlay(const Overlay&) = delete;
  Overlay& operator=(const Overlay&) = delete;
  ~Overlay();

  /// To be filled with rings.
  [[nodiscard]] EdgeSet& Edges() noexcept;

  /// The region of the places that a selection holds; to be called once. Throws
  /// std::bad_alloc; raises ERR::FAIL if the boundary does not close, which is a contradiction.
  [[nodiscard]] FlatRegion Run(const Selection& selection);

 private:
  struct Arrays;
  class Shelf;
  static Shelf shelf;

  std::unique_ptr<Arrays> arrays_;
};

}  // namespace zelvan::overlay
