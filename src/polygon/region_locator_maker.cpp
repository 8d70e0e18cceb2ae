// How the index is made that tells where points lie (region_locator.h).
#include <algorithm>
#include <bit>
#include <tuple>
#include <utility>

#include "memory/word_sort.h"
#include "polygon/region_locator.h"
#include "polygon/sweep_axis.h"

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
    TakePoints();
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

  void TakePoints() {
    AxisLengths lengths;
    for (std::size_t i = 0; i < region_.Rings(); ++i) lengths.Add(region_.Ring(i));
    GridBox box{region_.points.front(), region_.points.front()};
    for (const GridPoint p : region_.points) GrowBox(box, p);
    const AxisLengths open = lengths.Per(box);
    to_.isTurned_ = open.y > open.x;
    to_.middle_ = Turned(to_.middle_, to_.isTurned_);
    points_.reserve(region_.points.size());
    for (const GridPoint p : region_.points) points_.push_back(Turned(p, to_.isTurned_));
  }

  [[nodiscard]] std::size_t Slabs() const noexcept { return to_.heights_.size() - 1; }

  void CutSlabs() {
    const auto words =
        SortedBy(points_.size(), [&](std::size_t i) { return KeyOf(points_[i].gy); });
    const auto pointOf = [](std::uint64_t word) { return static_cast<std::uint32_t>(word); };
    const auto heightOf = [&](std::uint64_t word) { return points_[pointOf(word)].gy; };
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
    std::vector<std::uint32_t> next(points_.size());
    for (std::size_t ring = 0; ring < region_.Rings(); ++ring) {
      const std::uint32_t end = region_.ringOffsets[ring + 1];
      for (std::uint32_t i = region_.ringOffsets[ring]; i < end; ++i) next[i] = i + 1;
      next[end - 1] = region_.ringOffsets[ring];
    }
    const auto middle = [&](std::size_t i) {
      return KeyOf(points_[i].gx / 2 + points_[next[i]].gx / 2);
    };
    to_.edges_.reserve(next.size());
    edgeLevels_.reserve(next.size());
    for (const std::uint64_t word : SortedBy(next.size(), middle)) {
      std::uint32_t low = static_cast<std::uint32_t>(word);
      std::uint32_t high = next[low];
      const auto key = [&](std::uint32_t i) { return std::pair(points_[i].gy, points_[i].gx); };
      if (key(high) < key(low)) std::swap(low, high);
      to_.edges_.push_back({points_[low], points_[high]});
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
  std::vector<GridPoint> points_;   // the axes as the index has them
  std::vector<Level> levels_;       // of the points
  std::vector<Levels> edgeLevels_;  // of the edges' ends
  std::vector<std::size_t> hungBegins_;
  std::vector<std::uint32_t> hung_;  // the edges of each node
};

RegionLocator::RegionLocator(const FlatRegion& region, WorldPoint middle) : middle_(middle) {
  Maker(region, *this).Run();
}

}  // namespace zelvan
