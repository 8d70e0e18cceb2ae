// Bundles: edges that run on each other from one place on.
//
// The members of a bundle stand in a leftist heap (Crane 1972) by their upper ends, so that two
// bundles become one in logarithmic time, and n edges that run on each other cost n log n
// however they nest.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "overlay/edges.h"

namespace zelvan::overlay {

class Bundles {
 public:
  /// A bundle of one edge. Throws std::bad_alloc.
  [[nodiscard]] std::uint32_t Make(GridPoint high, Windings step) {
    nodes_.push_back({high, step, kNone, kNone, 1});
    return static_cast<std::uint32_t>(nodes_.size() - 1);
  }

  /// Both bundles as one.
  [[nodiscard]] std::uint32_t Join(std::uint32_t a, std::uint32_t b) noexcept {
    if (a == kNone) return b;
    if (b == kNone) return a;
    if (nodes_[b].high < nodes_[a].high) std::swap(a, b);
    Member& top = nodes_[a];
    top.right = Join(top.right, b);  // a right spine has at most log n members
    if (RankOf(top.left) < RankOf(top.right)) std::swap(top.left, top.right);
    top.rank = RankOf(top.right) + 1;
    return a;
  }

  /// Where the first member ends.
  [[nodiscard]] GridPoint NearestEnd(std::uint32_t bundle) const noexcept {
    return nodes_[bundle].high;
  }

  /// Takes the members out that end at p and subtracts them from the sum of all.
  /// @param drawer  knows the sums of steps (sweep.h); may throw
  /// @return the bundle of the others, or kNone
  template <class Drawer>
  [[nodiscard]] std::uint32_t DropEnding(std::uint32_t bundle, GridPoint p, Windings& sum,
                                         Drawer& drawer) {
    while (bundle != kNone && nodes_[bundle].high == p) {
      sum = drawer.Sum(sum, -nodes_[bundle].step);
      bundle = Join(nodes_[bundle].left, nodes_[bundle].right);
    }
    return bundle;
  }

  [[nodiscard]] bool IsSingle(std::uint32_t bundle) const noexcept {
    return nodes_[bundle].left == kNone && nodes_[bundle].right == kNone;
  }

  void Clear() noexcept { nodes_.clear(); }
  [[nodiscard]] std::size_t Bytes() const noexcept { return BytesOf(nodes_); }

 private:
  struct Member {
    GridPoint high;
    Windings step;
    std::uint32_t left;
    std::uint32_t right;
    std::uint32_t rank;  // length of the right spine
  };

  [[nodiscard]] std::uint32_t RankOf(std::uint32_t member) const noexcept {
    return member != kNone ? nodes_[member].rank : 0;
  }

  std::vector<Member> nodes_;
};

}  // namespace zelvan::overlay
