// Where points lie in a region (region_locator.h).
#include "polygon/region_locator.h"

#include <algorithm>
#include <iterator>
#include <tuple>

#include "polygon/input_predicates.h"
#include "polygon/sweep_axis.h"

namespace zelvan {

int RegionLocator::SideOf(WorldPoint asked) const noexcept {
  const WorldPoint p = Turned(asked, isTurned_);
  const auto above =
      std::upper_bound(heights_.begin(), heights_.end(), p.y,
                       [this](double y, std::int32_t height) { return y < middle_.y + height; });
  if (above == heights_.begin()) return -1;
  if (p.y == middle_.y + *std::prev(above) && IsOnShelf(p)) return 0;
  if (above == heights_.end()) return -1;
  const auto slab = static_cast<std::size_t>(above - heights_.begin()) - 1;

  std::size_t before = 0;  // edges to the left of the point
  for (std::size_t i = endings_[slab]; i < endings_[slab + 1]; ++i) {
    const Edge& edge = edges_[ending_[i]];
    if (p.y < middle_.y + edge.low.gy || p.y > middle_.y + edge.high.gy) continue;
    const int side = SideOfEdge(edge, p);
    if (side == 0) return 0;
    if (side > 0 && p.y < middle_.y + edge.high.gy) ++before;
  }

  std::size_t node = leaves_ + slab;
  std::span<const Entry> list = ListOf(node);
  bool isOn = false;
  const auto isRightOf = [&](const Entry& entry) {
    const int side = SideOfEdge(edges_[entry.edge], p);
    isOn = isOn || side == 0;
    return side > 0;
  };
  auto place = static_cast<std::size_t>(std::partition_point(list.begin(), list.end(), isRightOf) -
                                        list.begin());
  for (;;) {
    if (isOn) return 0;
    const std::size_t fromAbove =
        place < list.size() ? list[place].fromAbove : ListOf(node / 2).size() / kStride;
    before += place - fromAbove;
    node /= 2;
    if (node == 0) break;
    list = ListOf(node);
    place = fromAbove * kStride;
    while (place < list.size() && isRightOf(list[place])) ++place;
  }
  return before % 2 != 0 ? 1 : -1;
}

bool RegionLocator::IsLeftOf(const Edge& e, const Edge& f) noexcept {
  if (std::max(e.low.gx, e.high.gx) < std::min(f.low.gx, f.high.gx)) return true;
  std::int64_t side =
      e.low.gy >= f.low.gy ? Cross(f.low, f.high, e.low) : -Cross(e.low, e.high, f.low);
  if (side == 0) {
    side = e.high.gy <= f.high.gy ? Cross(f.low, f.high, e.high) : -Cross(e.low, e.high, f.high);
  }
  return side > 0;
}

WorldPoint RegionLocator::PlaceOf(GridPoint p) const noexcept {
  return {middle_.x + p.gx, middle_.y + p.gy};
}

// 1 where the point lies to the right of an edge that has its height, 0 on the edge, -1 to the
// left.
int RegionLocator::SideOfEdge(const Edge& edge, WorldPoint p) const noexcept {
  const WorldPoint low = PlaceOf(edge.low);
  const WorldPoint high = PlaceOf(edge.high);
  if (p.x > std::max(low.x, high.x)) return 1;
  if (p.x < std::min(low.x, high.x)) return -1;
  return SideSign(low, high, p);
}

bool RegionLocator::IsOnShelf(WorldPoint p) const noexcept {
  const auto after = std::upper_bound(shelves_.begin(), shelves_.end(), p,
                                      [this](WorldPoint q, const Shelf& shelf) {
                                        const WorldPoint left = PlaceOf({shelf.left, shelf.y});
                                        return std::tie(q.y, q.x) < std::tie(left.y, left.x);
                                      });
  if (after == shelves_.begin()) return false;
  const WorldPoint right = PlaceOf({std::prev(after)->right, std::prev(after)->y});
  return p.y == right.y && p.x <= right.x;
}

std::span<const RegionLocator::Entry> RegionLocator::ListOf(std::size_t node) const noexcept {
  return {entries_.data() + lists_[node], lists_[node + 1] - lists_[node]};
}

}  // namespace zelvan
