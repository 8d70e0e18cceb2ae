// Areas from rings of points (area_builder.h).
#include "polygon/area_builder.h"

#include <zelvan/error.h>

#include "polygon/contour.h"

namespace zelvan {

namespace {

std::uint32_t CountWithoutRepeats(std::span<const GridPoint> ring) noexcept {
  std::uint32_t count = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    if (ring[i] != (i > 0 ? ring[i - 1] : ring.back())) ++count;
  }
  return count;
}

}  // namespace

Contour* AreaBuilder::Add(std::span<const GridPoint> ring) {
  const std::uint32_t count = CountWithoutRepeats(ring);
  if (count < 3) return nullptr;
  Contour* const contour = NewContourInBlock(count);
  if (contour == nullptr) ERR::Raise(ERR::NOMEM);
  *end_ = contour;
  end_ = &contour->next;
  VertexNode* vertex = contour->head;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    if (ring[i] == (i > 0 ? ring[i - 1] : ring.back())) continue;
    vertex->grid = ring[i];
    vertex = vertex->next;
  }
  return contour;
}

void AreaBuilder::Add(const FlatRegion& region) {
  for (std::size_t i = 0; i < region.Rings(); ++i) Add(region.Ring(i));
}

}  // namespace zelvan
