// The tree of boxes over edges (edge_tree.h).
#include "polygon/edge_tree.h"

#include <utility>

namespace zelvan {

namespace {

// The low 32 bits, each followed by a 0.
std::uint64_t Spread(std::uint64_t v) noexcept {
  v = (v | v << 16) & 0x0000ffff0000ffff;
  v = (v | v << 8) & 0x00ff00ff00ff00ff;
  v = (v | v << 4) & 0x0f0f0f0f0f0f0f0f;
  v = (v | v << 2) & 0x3333333333333333;
  return (v | v << 1) & 0x5555555555555555;
}

std::uint64_t MortonCode(const GridBox& box) noexcept {
  const auto middle = [](std::int32_t a, std::int32_t b) {
    const std::int64_t sum = std::int64_t{a} + b + (std::int64_t{1} << 32);  // above 0
    return static_cast<std::uint64_t>(sum >> 1);
  };
  return Spread(middle(box.min.gx, box.max.gx)) | Spread(middle(box.min.gy, box.max.gy)) << 1;
}

}  // namespace

EdgeTree::EdgeTree(const FlatRegion& region) : region_(region) {
  CutRuns();
  SortRuns();
  Stack();
}

void EdgeTree::CutRuns() {
  runs_.reserve(region_.points.size() / kRun + region_.Rings());
  for (std::size_t ring = 0; ring < region_.Rings(); ++ring) {
    const std::uint32_t begin = region_.ringOffsets[ring];
    const std::uint32_t end = region_.ringOffsets[ring + 1];
    for (std::uint32_t i = begin; i < end; i += kRun) {
      const std::uint32_t last = end - i > kRun ? i + kRun : end;
      runs_.push_back({i, last, last < end ? last : begin});
    }
  }
}

GridBox EdgeTree::BoxOf(const Run& run) const noexcept {
  const GridPoint last = region_.points[run.after];
  GridBox box{last, last};
  for (std::uint32_t i = run.first; i < run.end; ++i) GrowBox(box, region_.points[i]);
  return box;
}

void EdgeTree::SortRuns() {
  std::vector<std::pair<std::uint64_t, Run>> order;
  order.reserve(runs_.size());
  for (const Run& run : runs_) order.emplace_back(MortonCode(BoxOf(run)), run);
  std::sort(order.begin(), order.end(), [](const auto& a, const auto& b) {
    return a.first != b.first ? a.first < b.first : a.second.first < b.second.first;
  });
  for (std::size_t i = 0; i < runs_.size(); ++i) runs_[i] = order[i].second;
}

void EdgeTree::Stack() {
  boxes_.reserve(runs_.size() + runs_.size() / (kFan - 1) + kLevels);
  for (const Run& run : runs_) boxes_.push_back(BoxOf(run));
  levels_.push_back(0);
  while (boxes_.size() - levels_.back() > 1) {
    const auto end = static_cast<std::uint32_t>(boxes_.size());
    for (std::uint32_t i = levels_.back(); i < end; ++i) {
      if ((i - levels_.back()) % kFan == 0) boxes_.push_back(boxes_[i]);
      GrowBox(boxes_.back(), boxes_[i].min);
      GrowBox(boxes_.back(), boxes_[i].max);
    }
    levels_.push_back(end);
  }
}

}  // namespace zelvan
