// VertexTable: the numbering of a shape's vertices, with a search by place.
//
// Entry i is vertex i. Find gives what a scan from entry 0 for a grid point would
// give, the lowest entry that holds it, by bisection. The order is made by Assign; the
// grid points must not change while the table is searched.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "polygon/grid.h"
#include "polygon/key_sort.h"

namespace zelvan {

struct VertexNode;

class VertexTable {
 public:
  VertexTable() = default;

  /// Takes over a list of vertices in grid form and orders it. On std::bad_alloc
  /// the table is unchanged.
  void Assign(std::vector<VertexNode*> vertices);

  /// Empties the table.
  void Clear() noexcept;

  /// Position of the first vertex at `point`, or -1.
  [[nodiscard]] std::int32_t Find(GridPoint point) const noexcept;

  /// The vertices from the highest point to the lowest (KeyFromTheTop).
  [[nodiscard]] const KeyOrder& fromTheTop() const noexcept { return order_; }

  [[nodiscard]] std::size_t size() const noexcept { return vertices_.size(); }
  [[nodiscard]] bool empty() const noexcept { return vertices_.empty(); }
  [[nodiscard]] VertexNode* operator[](std::size_t i) const noexcept { return vertices_[i]; }
  [[nodiscard]] auto begin() const noexcept { return vertices_.begin(); }
  [[nodiscard]] auto end() const noexcept { return vertices_.end(); }

 private:
  std::vector<VertexNode*> vertices_;
  KeyOrder order_;
};

}  // namespace zelvan
