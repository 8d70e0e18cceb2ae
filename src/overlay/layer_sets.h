// Sets of layers, and differences of two sets, by number.
//
// A set is a map from layers to how often each is in it: 1 in a set, 1 or -1 in the difference of
// two. Maps are Patricia tries (Morrison 1968; Okasaki and Gill 1998), whose nodes are shared:
// equal maps have equal numbers, and a sum makes new nodes along one path where little changes.
// The number of a map's negative is the negative number: a child is named by its sign, too, and
// of a map and its negative the one in which the least layer counts as positive has nodes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "overlay/edges.h"

namespace zelvan::overlay {

class LayerSets {
 public:
  /// The name of a map. kEmpty has no layers; sets, and differences in which the least layer is
  /// taken in, are above 0.
  using Name = std::int32_t;
  static constexpr Name kEmpty = 0;

  LayerSets();

  /// The set of one layer. Throws std::bad_alloc, as Sum does.
  [[nodiscard]] Name Of(std::uint32_t layer) { return Leaf(layer, 1); }

  /// Layer by layer. Takes as many steps as the smaller map has layers, times 32, at the most.
  [[nodiscard]] Name Sum(Name a, Name b);

  /// Are there two layers or more in a set?
  [[nodiscard]] bool HasSeveral(Name set) const noexcept {
    return set != kEmpty && NodeOf(set).bit != 0;
  }

  /// Appends the layers of a set, ascending.
  void AppendTo(std::vector<std::uint32_t>& layers, Name set) const;

  /// Are the layers of set a, ascending, before those of b, as sequences?
  [[nodiscard]] bool IsBefore(Name a, Name b) const noexcept;

  /// Names are of (-Names(), Names()).
  [[nodiscard]] std::size_t Names() const noexcept { return nodes_.size(); }

 private:
  // A branch has layers that agree above `bit`: with that bit 0 in `low`, with 1 in `high`.
  struct Node {
    std::uint32_t key;  // the layer of a leaf; what those of a branch have in common, then 0
    std::uint32_t bit;  // 0 in a leaf
    Name low;           // how often, in a leaf
    Name high;
    friend bool operator==(const Node&, const Node&) noexcept = default;
  };
  struct Known {
    Name a;
    Name b;
    Name sum;
  };

  [[nodiscard]] const Node& NodeOf(Name name) const noexcept {
    return nodes_[static_cast<std::size_t>(name < 0 ? -name : name)];
  }
  [[nodiscard]] Name LowOf(Name name) const noexcept {
    return name < 0 ? -NodeOf(name).low : NodeOf(name).low;
  }
  [[nodiscard]] Name HighOf(Name name) const noexcept {
    return name < 0 ? -NodeOf(name).high : NodeOf(name).high;
  }
  // Does a branch with that bit hold the layers that begin with key?
  [[nodiscard]] static bool Covers(const Node& branch, std::uint32_t key) noexcept {
    return branch.bit != 0 && (key & ~(2 * branch.bit - 1)) == branch.key;
  }

  [[nodiscard]] static std::size_t HashOf(const Node& node) noexcept;
  [[nodiscard]] Name Leaf(std::uint32_t layer, std::int32_t count);
  [[nodiscard]] Name Branch(std::uint32_t key, std::uint32_t bit, Name low, Name high);
  [[nodiscard]] Name Shared(const Node& node);
  [[nodiscard]] Name Merge(Name a, Name b);
  [[nodiscard]] std::uint32_t Least(Name set) const noexcept;
  [[nodiscard]] std::uint32_t Greatest(Name set) const noexcept;
  void Grow();

  std::vector<Node> nodes_;           // by name; the first is none
  std::vector<std::uint32_t> table_;  // names by hash, 0 where there is none; a power of two
  std::vector<Known> known_;          // sums of late, by hash
};

}  // namespace zelvan::overlay
