// The numbering of a shape's vertices (vertex_table.h).
#include "polygon/vertex_table.h"

#include <algorithm>
#include <utility>

#include "polygon/records.h"

namespace zelvan {

void VertexTable::Assign(std::vector<VertexNode*> vertices) {
  order_ = SortByKey(static_cast<std::uint32_t>(vertices.size()),
                     [&](std::uint32_t i) { return KeyFromTheTop(vertices[i]->grid); });
  vertices_ = std::move(vertices);
}

void VertexTable::Clear() noexcept {
  vertices_.clear();
  order_ = {};
}

std::int32_t VertexTable::Find(GridPoint point) const noexcept {
  const std::vector<std::uint32_t>& positions = order_.positions;
  const auto found = std::lower_bound(
      positions.begin(), positions.end(), KeyFromTheTop(point),
      [&](std::uint32_t i, std::uint64_t key) { return KeyFromTheTop(vertices_[i]->grid) < key; });
  if (found == positions.end() || vertices_[*found]->grid != point) return -1;
  return static_cast<std::int32_t>(*found);
}

}  // namespace zelvan
