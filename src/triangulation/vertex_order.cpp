// Sorting the vertices of a sweep (vertex_order.h).
#include "triangulation/vertex_order.h"

#include <algorithm>
#include <bit>

namespace VORNEX {

namespace {

int WidthOf(std::int32_t extent) noexcept {
  return static_cast<int>(std::bit_width(static_cast<std::uint32_t>(extent)));
}

// Highest first: both coordinates are counted down from the largest of any vertex.
struct Keys {
  explicit Keys(std::span<const SweepVertex> vertices) noexcept : top(vertices[0].point) {
    GridPoint bottom = top;
    for (const SweepVertex& v : vertices) {
      top = {std::max(top.gx, v.point.gx), std::max(top.gy, v.point.gy)};
      bottom = {std::min(bottom.gx, v.point.gx), std::min(bottom.gy, v.point.gy)};
    }
    xBits = WidthOf(top.gx - bottom.gx);
    bits = xBits + WidthOf(top.gy - bottom.gy);
  }

  [[nodiscard]] std::uint64_t operator()(GridPoint p) const noexcept {
    const auto x = static_cast<std::uint32_t>(top.gx - p.gx);
    const auto y = static_cast<std::uint32_t>(top.gy - p.gy);
    return std::uint64_t{y} << xBits | x;
  }

  GridPoint top;
  int xBits;
  int bits;
};

}  // namespace

std::span<std::uint32_t> VertexOrder::Sort(std::span<const SweepVertex> vertices) {
  const auto n = static_cast<std::uint32_t>(vertices.size());
  const Keys keyOf(vertices);
  sorter_.Sort(n, keyOf.bits, [&](std::uint32_t v) { return keyOf(vertices[v].point); });
  order_.resize(n);
  for (std::uint32_t k = 0; k < n; ++k) order_[k] = sorter_[k];
  return order_;
}

}  // namespace VORNEX
