// A packed tree of boxes over the edges of a region, to find what is near.
//
// What holds here:
//  - Leaves are runs of up to kRun edges of one ring, which follow each other; they stand in the
//    order of a space-filling curve through the middles of their boxes (Morton 1966).
//  - A box of each level holds those of up to kFan neighbours of the level below (Roussopoulos and
//    Leifker 1985), whose numbers need no room.
// So it takes about 5 bytes an edge, and O(n log n) steps to make.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "polygon/flat_region.h"

namespace zelvan {

class EdgeTree {
 public:
  static constexpr std::uint32_t kRun = 8;
  static constexpr std::uint32_t kFan = 8;
  static constexpr int kLevels = 12;  // at most, for 2^31 leaves

  /// A box, of level 0 those of the leaves.
  struct Node {
    std::uint32_t level;
    std::uint32_t index;
  };

  /// @param region  with at least one polygon; must outlive the tree. Throws std::bad_alloc.
  explicit EdgeTree(const FlatRegion& region);

  [[nodiscard]] Node Root() const noexcept {
    return {static_cast<std::uint32_t>(levels_.size() - 1), 0};
  }
  [[nodiscard]] const GridBox& BoxOf(Node node) const noexcept {
    return boxes_[levels_[node.level] + node.index];
  }

  /// Calls visit(child) for what a node above the leaves holds.
  template <class Visit>
  void ForEachChild(Node node, Visit visit) const {
    const std::uint32_t below = node.level - 1;
    const std::uint32_t count = levels_[node.level] - levels_[below];
    const std::uint32_t end = std::min(count, (node.index + 1) * kFan);
    for (std::uint32_t i = node.index * kFan; i < end; ++i) visit(Node{below, i});
  }

  /// Calls visit(number, from, to) for the edges of a leaf; an edge has the number of its first
  /// point.
  template <class Visit>
  void ForEachEdge(Node leaf, Visit visit) const {
    const Run& run = runs_[leaf.index];
    for (std::uint32_t i = run.first; i < run.end; ++i) {
      const std::uint32_t to = i + 1 < run.end ? i + 1 : run.after;
      visit(i, region_.points[i], region_.points[to]);
    }
  }

 private:
  struct Run {
    std::uint32_t first;  // points at which its edges begin
    std::uint32_t end;
    std::uint32_t after;  // where the last edge leads
  };

  void CutRuns();
  [[nodiscard]] GridBox BoxOf(const Run& run) const noexcept;
  void SortRuns();
  void Stack();

  const FlatRegion& region_;
  std::vector<Run> runs_;
  std::vector<GridBox> boxes_;         // level by level
  std::vector<std::uint32_t> levels_;  // where each begins
};

}  // namespace zelvan
