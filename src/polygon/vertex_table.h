// VertexTable: the numbering of a shape's vertices, with a search by place.
//
// Entry i is vertex i. Find gives what a scan from entry 0 for a grid point would
// give, the lowest entry that holds it, from a hash index in expected constant
// time. The index is made by Assign; the grid points must not change while the
// table is searched.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "polygon/grid.h"

namespace zelvan {

struct VertexNode;

class VertexTable {
 public:
  VertexTable() = default;

  /// Takes over a list of vertices in grid form and indexes it. On std::bad_alloc
  /// the table is unchanged.
  void Assign(std::vector<VertexNode*> vertices);

  /// Empties the table.
  void Clear() noexcept;

  /// Position of the first vertex at `point`, or -1.
  [[nodiscard]] std::int32_t Find(GridPoint point) const noexcept;

  /// Positions that Find does not give, for the lack of being the first on their point,
  /// in ascending order.
  [[nodiscard]] const std::vector<std::int32_t>& repeated() const noexcept { return repeated_; }

  [[nodiscard]] std::size_t size() const noexcept { return vertices_.size(); }
  [[nodiscard]] bool empty() const noexcept { return vertices_.empty(); }
  [[nodiscard]] VertexNode* operator[](std::size_t i) const noexcept { return vertices_[i]; }
  [[nodiscard]] auto begin() const noexcept { return vertices_.begin(); }
  [[nodiscard]] auto end() const noexcept { return vertices_.end(); }

 private:
  std::vector<VertexNode*> vertices_;
  std::vector<std::int32_t> repeated_;
  std::vector<std::int32_t> slots_;  // open addressing; -1 where free; a power of two long
};

}  // namespace zelvan
