// Where points lie in a region (region_locator.h).
#include "polygon/region_locator.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <tuple>

#include "memory/word_sort.h"
#include "polygon/input_predicates.h"

namespace zelvan {

namespace {

// Positions in ascending order of keys of 32 bits.
template <class KeyAt>
std::vector<std::uint64_t> SortedBy(std::size_t count, KeyAt keyAt) {
  std::vector<std::uint64_t> words(count);
  std::vector<std::uint64_t> scratch;
  for (std::size_t i = 0; i < count; ++i) words[i] = std::uint64_t{keyAt(i)} << 32 | i;
  SortWords(words, scratch, 32, 32);
  return words;
}

// Ascends with the number.
constexpr std::uint32_t KeyOf(std::int32_t v) noexcept {
  return static_cast<std::uint32_t>(v) ^ (std::uint32_t{1} << 31);
}

// Deals items out to lists, one behind the other: `deal` calls its argument with list and item,
// and does so twice alike. List i begins at begins[i].
template <class Item, class Deal>
void DealOut(std::size_t lists, std::vector<std::size_t>& begins, std::vector<Item>& items,
             Deal deal) {
  begins.assign(lists + 2, 0);
  deal([&](std::size_t list, Item) { ++begins[list + 2]; });
  for (std::size_t i = 2; i < begins.size(); ++i) begins[i] += begins[i - 1];
  items.resize(begins.back());
  deal([&](std::size_t list, Item item) { items[begins[list + 1]++] = item; });
  begins.pop_back();
}

}  // namespace

class RegionLocator::Maker {
 public:
  Maker(const FlatRegion& region, RegionLocator& locator) noexcept
      : region_(region), to_(locator) {}

  void Run() {
    CutSlabs();
    CollectEdges();
    LayShelves();
    DealOut(Slabs(), to_.endings_, to_.ending_, [this](auto give) { GiveToSlabs(give); });
    to_.leaves_ = std::bit_ceil(Slabs());
    DealOut(2 * to_.leaves_, hungBegins_, hung_, [this](auto give) { GiveToNodes(give); });
    for (std::size_t node = 1; node < 2 * to_.leaves_; ++node) SortNode(node);
    HandDown();
  }

 private:
  static constexpr std::size_t kPerSlab = 8;  // vertices on its lower height and inside

  // Where a vertex lies: on height i for 2 i, above it in its slab for 2 i + 1.
  using Level = std::uint32_t;
  struct Levels {
    Level low;
    Level high;
  };
  static constexpr bool IsInside(Level level) noexcept { return level % 2 != 0; }

  [[nodiscard]] std::size_t Slabs() const noexcept { return to_.heights_.size() - 1; }

  void CutSlabs() {
    const auto words =
        SortedBy(region_.points.size(), [&](std::size_t i) { return KeyOf(region_.points[i].gy); });
    const auto pointOf = [](std::uint64_t word) { return static_cast<std::uint32_t>(word); };
    const auto heightOf = [&](std::uint64_t word) { return region_.points[pointOf(word)].gy; };
    levels_.resize(words.size());
    to_.heights_.reserve(words.size() / kPerSlab + 2);
    std::size_t first = 0;  // vertex of the slab
    for (std::size_t i = 0, end = 0; i < words.size(); i = end) {
      const std::int32_t y = heightOf(words[i]);
      while (end < words.size() && heightOf(words[end]) == y) ++end;
      const bool isHeight = i == 0 || end == words.size() || end - first > kPerSlab;
      if (isHeight) {
        to_.heights_.push_back(y);
        first = i;
      }
      const auto height = static_cast<Level>(to_.heights_.size() - 1);
      for (std::size_t k = i; k < end; ++k) {
        levels_[pointOf(words[k])] = 2 * height + (isHeight ? 0 : 1);
      }
    }
  }

  void CollectEdges() {
    std::vector<std::uint32_t> next(region_.points.size());
    for (std::size_t ring = 0; ring < region_.Rings(); ++ring) {
      const std::uint32_t end = region_.ringOffsets[ring + 1];
      for (std::uint32_t i = region_.ringOffsets[ring]; i < end; ++i) next[i] = i + 1;
      next[end - 1] = region_.ringOffsets[ring];
    }
    const auto middle = [&](std::size_t i) {
      return KeyOf(region_.points[i].gx / 2 + region_.points[next[i]].gx / 2);
    };
    to_.edges_.reserve(next.size());
    edgeLevels_.reserve(next.size());
    for (const std::uint64_t word : SortedBy(next.size(), middle)) {
      std::uint32_t low = static_cast<std::uint32_t>(word);
      std::uint32_t high = next[low];
      const auto key = [&](std::uint32_t i) {
        return std::pair(region_.points[i].gy, region_.points[i].gx);
      };
      if (key(high) < key(low)) std::swap(low, high);
      to_.edges_.push_back({region_.points[low], region_.points[high]});
      edgeLevels_.push_back({levels_[low], levels_[high]});
    }
  }

  // Of every height between slabs: edges along it, and vertices, in disjoint parts.
  void LayShelves() {
    std::vector<Shelf>& shelves = to_.shelves_;
    for (std::size_t i = 0; i < to_.edges_.size(); ++i) {
      const auto [low, high] = to_.edges_[i];
      if (IsInside(edgeLevels_[i].high)) continue;
      shelves.push_back({high.gy, low.gy == high.gy ? low.gx : high.gx, high.gx});
    }
    std::sort(shelves.begin(), shelves.end(), [](const Shelf& a, const Shelf& b) {
      return std::tie(a.y, a.left) < std::tie(b.y, b.left);
    });
    std::size_t count = 0;
    for (const Shelf& shelf : shelves) {
      if (count > 0 && shelves[count - 1].y == shelf.y && shelf.left <= shelves[count - 1].right) {
        shelves[count - 1].right = std::max(shelves[count - 1].right, shelf.right);
      } else {
        shelves[count++] = shelf;
      }
    }
    shelves.resize(count);
  }

  template <class Give>
  void GiveToSlabs(Give give) const {
    for (std::uint32_t edge = 0; edge < edgeLevels_.size(); ++edge) {
      const auto [low, high] = edgeLevels_[edge];
      if (IsInside(low)) give(low / 2, edge);
      if (IsInside(high) && !(IsInside(low) && low / 2 == high / 2)) give(high / 2, edge);
    }
  }

  template <class Give>
  void GiveToNodes(Give give) const {
    for (std::uint32_t edge = 0; edge < edgeLevels_.size(); ++edge) {
      const auto [low, high] = edgeLevels_[edge];
      std::size_t first = to_.leaves_ + (std::size_t{low} + 1) / 2;
      std::size_t end = to_.leaves_ + high / 2;
      for (; first < end; first /= 2, end /= 2) {
        if (first % 2 != 0) give(first++, edge);
        if (end % 2 != 0) give(--end, edge);
      }
    }
  }

  // Edges come by their middles, which is often their order.
  void SortNode(std::size_t node) {
    const auto begin = hung_.begin() + static_cast<std::ptrdiff_t>(hungBegins_[node]);
    const auto end = hung_.begin() + static_cast<std::ptrdiff_t>(hungBegins_[node + 1]);
    const auto isLeft = [&](std::uint32_t e, std::uint32_t f) {
      return IsLeftOf(to_.edges_[e], to_.edges_[f]);
    };
    if (!std::is_sorted(begin, end, isLeft)) std::sort(begin, end, isLeft);
  }

  [[nodiscard]] bool HasSlabs(std::size_t node) const noexcept {
    while (node < to_.leaves_) node *= 2;
    return node - to_.leaves_ < Slabs();
  }

  void HandDown() {
    to_.lists_.assign(2 * to_.leaves_ + 1, 0);
    for (std::size_t node = 1; node < 2 * to_.leaves_; ++node) {
      const std::size_t above = to_.ListOf(node / 2).size() / kStride;
      to_.lists_[node + 1] = to_.lists_[node] + hungBegins_[node + 1] - hungBegins_[node] +
                             (HasSlabs(node) ? above : 0);
    }
    to_.entries_.resize(to_.lists_.back());
    for (std::size_t node = 1; node < 2 * to_.leaves_; ++node) MergeWithAbove(node);
  }

  void MergeWithAbove(std::size_t node) {
    const std::span<const Entry> above = to_.ListOf(node / 2);
    const std::size_t handed = HasSlabs(node) ? above.size() / kStride : 0;
    std::size_t own = hungBegins_[node];
    std::size_t taken = 0;
    for (std::size_t i = to_.lists_[node]; i < to_.lists_[node + 1]; ++i) {
      const bool hasOwn = own < hungBegins_[node + 1];
      const std::uint32_t mine = hasOwn ? hung_[own] : 0;
      const std::uint32_t other = taken < handed ? above[taken * kStride + kStride - 1].edge : 0;
      const bool takesOwn =
          hasOwn && (taken == handed || IsLeftOf(to_.edges_[mine], to_.edges_[other]));
      to_.entries_[i] = {takesOwn ? mine : other, static_cast<std::uint32_t>(taken)};
      ++(takesOwn ? own : taken);
    }
  }

  const FlatRegion& region_;
  RegionLocator& to_;
  std::vector<Level> levels_;       // of the points
  std::vector<Levels> edgeLevels_;  // of the edges' ends
  std::vector<std::size_t> hungBegins_;
  std::vector<std::uint32_t> hung_;  // the edges of each node
};

RegionLocator::RegionLocator(const FlatRegion& region, WorldPoint middle) : middle_(middle) {
  Maker(region, *this).Run();
}

int RegionLocator::SideOf(WorldPoint p) const noexcept {
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
