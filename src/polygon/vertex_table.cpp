// The numbering of a shape's vertices (vertex_table.h).
#include "polygon/vertex_table.h"

#include <utility>

#include "polygon/hash.h"
#include "polygon/records.h"

namespace zelvan {

namespace {

std::size_t HashOf(GridPoint p) noexcept {
  return static_cast<std::size_t>(
      MixPair(static_cast<std::uint32_t>(p.gx), static_cast<std::uint32_t>(p.gy)));
}

}  // namespace

void VertexTable::Assign(std::vector<VertexNode*> vertices) {
  std::vector<std::int32_t> slots(HashSlots(vertices.size()), -1);
  std::vector<std::int32_t> repeated;
  const std::size_t mask = slots.size() - 1;
  for (std::size_t i = 0; i < vertices.size(); ++i) {
    const GridPoint point = vertices[i]->grid;
    std::size_t s = HashOf(point) & mask;
    while (slots[s] >= 0 && vertices[static_cast<std::size_t>(slots[s])]->grid != point) {
      s = (s + 1) & mask;
    }
    if (slots[s] < 0) {
      slots[s] = static_cast<std::int32_t>(i);
    } else {
      repeated.push_back(static_cast<std::int32_t>(i));
    }
  }
  vertices_ = std::move(vertices);
  repeated_ = std::move(repeated);
  slots_ = std::move(slots);
}

void VertexTable::Clear() noexcept {
  vertices_.clear();
  repeated_.clear();
  slots_.clear();
}

std::int32_t VertexTable::Find(GridPoint point) const noexcept {
  if (slots_.empty()) return -1;
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t s = HashOf(point) & mask; slots_[s] >= 0; s = (s + 1) & mask) {
    if (vertices_[static_cast<std::size_t>(slots_[s])]->grid == point) return slots_[s];
  }
  return -1;
}

}  // namespace zelvan
