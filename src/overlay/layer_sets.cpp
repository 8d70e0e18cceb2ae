// Shared tries (layer_sets.h).
#include "overlay/layer_sets.h"

#include <bit>
#include <new>
#include <utility>

namespace zelvan::overlay {

namespace {

constexpr std::size_t kKnownSums = 1024;  // a power of two

std::size_t Mixed(std::uint64_t a, std::uint64_t b) noexcept {
  std::uint64_t h = (a * 0x9E3779B97F4A7C15U) ^ (b * 0xC2B2AE3D27D4EB4FU);
  h ^= h >> 32;
  h *= 0xD6E8FEB86659FD93U;
  return static_cast<std::size_t>(h ^ (h >> 32));
}

}  // namespace

std::size_t LayerSets::HashOf(const Node& node) noexcept {
  const auto word = [](auto a, auto b) {
    return std::uint64_t{static_cast<std::uint32_t>(a)} << 32 | static_cast<std::uint32_t>(b);
  };
  return Mixed(word(node.key, node.bit), word(node.low, node.high));
}

LayerSets::LayerSets() : nodes_(1), table_(64, 0), known_(kKnownSums, Known{}) {}

LayerSets::Name LayerSets::Leaf(std::uint32_t layer, std::int32_t count) {
  if (count == 0) return kEmpty;
  return count > 0 ? Shared({layer, 0, count, 0}) : -Shared({layer, 0, -count, 0});
}

LayerSets::Name LayerSets::Branch(std::uint32_t key, std::uint32_t bit, Name low, Name high) {
  if (low == kEmpty) return high;
  if (high == kEmpty) return low;
  return low > 0 ? Shared({key, bit, low, high}) : -Shared({key, bit, -low, -high});
}

// The one node like this.
LayerSets::Name LayerSets::Shared(const Node& node) {
  const std::size_t mask = table_.size() - 1;
  std::size_t place = HashOf(node) & mask;
  for (; table_[place] != 0; place = (place + 1) & mask) {
    if (nodes_[table_[place]] == node) return static_cast<Name>(table_[place]);
  }
  if (nodes_.size() > INT32_MAX) throw std::bad_alloc();
  nodes_.push_back(node);
  table_[place] = static_cast<std::uint32_t>(nodes_.size() - 1);
  const auto name = static_cast<Name>(nodes_.size() - 1);
  if (2 * nodes_.size() > table_.size()) Grow();
  return name;
}

void LayerSets::Grow() {
  std::vector<std::uint32_t> table(2 * table_.size(), 0);
  const std::size_t mask = table.size() - 1;
  for (std::uint32_t i = 1; i < nodes_.size(); ++i) {
    std::size_t place = HashOf(nodes_[i]) & mask;
    while (table[place] != 0) place = (place + 1) & mask;
    table[place] = i;
  }
  table_.swap(table);
}

LayerSets::Name LayerSets::Sum(Name a, Name b) {
  if (a == kEmpty) return b;
  if (b == kEmpty) return a;
  if (a == -b) return kEmpty;
  Known& known = known_[Mixed(static_cast<std::uint32_t>(a), static_cast<std::uint32_t>(b)) &
                        (kKnownSums - 1)];
  if (known.a != a || known.b != b) {
    const Name sum = Merge(a, b);
    known = {a, b, sum};
  }
  return known.sum;
}

LayerSets::Name LayerSets::Merge(Name a, Name b) {
  if (a == kEmpty) return b;
  if (b == kEmpty) return a;
  if (a == -b) return kEmpty;
  if (NodeOf(a).bit < NodeOf(b).bit) std::swap(a, b);
  const Node p = NodeOf(a);  // copies: nodes may move
  const Node q = NodeOf(b);
  if (p.key == q.key && p.bit == q.bit) {
    if (p.bit == 0) return Leaf(p.key, LowOf(a) + LowOf(b));
    const Name low = Merge(LowOf(a), LowOf(b));
    return Branch(p.key, p.bit, low, Merge(HighOf(a), HighOf(b)));
  }
  if (Covers(p, q.key)) {
    if ((q.key & p.bit) == 0) return Branch(p.key, p.bit, Merge(LowOf(a), b), HighOf(a));
    return Branch(p.key, p.bit, LowOf(a), Merge(HighOf(a), b));
  }
  const std::uint32_t bit = std::bit_floor(p.key ^ q.key);
  const std::uint32_t key = p.key & ~(2 * bit - 1);
  return (p.key & bit) == 0 ? Branch(key, bit, a, b) : Branch(key, bit, b, a);
}

void LayerSets::AppendTo(std::vector<std::uint32_t>& layers, Name set) const {
  if (set == kEmpty) return;
  const Node& node = NodeOf(set);
  if (node.bit == 0) {
    layers.push_back(node.key);
    return;
  }
  AppendTo(layers, node.low);  // 32 deep at the most
  AppendTo(layers, node.high);
}

std::uint32_t LayerSets::Least(Name set) const noexcept {
  while (NodeOf(set).bit != 0) set = NodeOf(set).low;
  return NodeOf(set).key;
}

std::uint32_t LayerSets::Greatest(Name set) const noexcept {
  while (NodeOf(set).bit != 0) set = NodeOf(set).high;
  return NodeOf(set).key;
}

// The least layer that is in one of both only decides: the set that has it comes first, unless
// the other one ends before it.
bool LayerSets::IsBefore(Name a, Name b) const noexcept {
  const Name sets[] = {a, b};
  const auto decide = [&](std::uint32_t layer, bool isInFirst) {
    const Name other = sets[isInFirst ? 1 : 0];
    return isInFirst == (other != kEmpty && Greatest(other) > layer);
  };
  while (a != b) {
    if (a == kEmpty || b == kEmpty) return decide(Least(a != kEmpty ? a : b), a != kEmpty);
    const Node& p = NodeOf(a);
    const Node& q = NodeOf(b);
    if (p.key == q.key && p.bit == q.bit) {
      const bool isLow = p.low != q.low;
      a = isLow ? p.low : p.high;
      b = isLow ? q.low : q.high;
    } else if (p.bit > q.bit && Covers(p, q.key)) {
      if ((q.key & p.bit) != 0) return decide(Least(p.low), true);
      if (p.low == b) return decide(Least(p.high), true);
      a = p.low;
    } else if (q.bit > p.bit && Covers(q, p.key)) {
      if ((p.key & q.bit) != 0) return decide(Least(q.low), false);
      if (q.low == a) return decide(Least(q.high), false);
      b = q.low;
    } else {
      return decide(p.key < q.key ? Least(a) : Least(b), p.key < q.key);
    }
  }
  return false;
}

}  // namespace zelvan::overlay
