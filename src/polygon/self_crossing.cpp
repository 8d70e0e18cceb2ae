// The self-crossing test of input contours (self_crossing.h), but for its sweep.
#include "polygon/self_crossing.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "polygon/input_predicates.h"

namespace zelvan {

namespace {

// A binary tree of closed boxes over the chain, in an array: node k has the
// children 2k and 2k + 1, the leaves are runs of kRun segments.
class BoxTree {
 public:
  explicit BoxTree(const PointList& list) : list_(list), segments_(list.size() - 1) {
    while (leaves_ * kRun < segments_) leaves_ *= 2;
    boxes_.assign(2 * leaves_, Box{});
    for (std::size_t i = 0; i < segments_; ++i) {
      Grow(boxes_[leaves_ + i / kRun], list[i]);
      Grow(boxes_[leaves_ + i / kRun], list[i + 1]);
    }
    for (std::size_t k = leaves_; k-- > 1;) boxes_[k] = Union(boxes_[2 * k], boxes_[2 * k + 1]);
  }

  [[nodiscard]] bool AnyCrossing() const {
    std::vector<std::pair<std::size_t, std::size_t>> open{{1, 1}};
    while (!open.empty()) {
      const auto [u, v] = open.back();  // on one level, u <= v
      open.pop_back();
      if (!Meet(boxes_[u], boxes_[v])) continue;
      if (u >= leaves_) {
        if (LeavesCross(u - leaves_, v - leaves_)) return true;
        continue;
      }
      open.insert(open.end(), {{2 * u, 2 * v}, {2 * u, 2 * v + 1}, {2 * u + 1, 2 * v + 1}});
      if (u != v) open.emplace_back(2 * u + 1, 2 * v);
    }
    return false;
  }

 private:
  static constexpr std::size_t kRun = 8;

  struct Box {
    double x0 = 1, y0 = 1, x1 = 0, y1 = 0;  // empty: upper below lower
    [[nodiscard]] bool Empty() const { return x1 < x0; }
  };

  static void Grow(Box& box, const InputPoint& p) { box = Union(box, Box{p.x, p.y, p.x, p.y}); }
  static Box Union(const Box& a, const Box& b) {
    if (a.Empty()) return b;
    if (b.Empty()) return a;
    return {std::min(a.x0, b.x0), std::min(a.y0, b.y0), std::max(a.x1, b.x1), std::max(a.y1, b.y1)};
  }
  static bool Meet(const Box& a, const Box& b) {
    return !a.Empty() && !b.Empty() && a.x0 <= b.x1 && b.x0 <= a.x1 && a.y0 <= b.y1 && b.y0 <= a.y1;
  }

  [[nodiscard]] bool LeavesCross(std::size_t u, std::size_t v) const {
    const std::size_t uEnd = std::min((u + 1) * kRun, segments_);
    const std::size_t vEnd = std::min((v + 1) * kRun, segments_);
    for (std::size_t i = u * kRun; i < uEnd; ++i) {
      for (std::size_t j = std::max(i + 2, v * kRun); j < vEnd; ++j) {
        if (SegmentsCross(list_[i], list_[i + 1], list_[j], list_[j + 1])) return true;
      }
    }
    return false;
  }

  const PointList& list_;
  std::size_t segments_;
  std::size_t leaves_ = 1;
  std::vector<Box> boxes_;
};

}  // namespace

bool HasSelfCrossingByBoxes(const PointList& list) {
  return list.size() >= 4 && BoxTree(list).AnyCrossing();
}

ChainContact FindContact(const PointList& list) {
  const ChainContact contact = FindContactBySweep(list, true);
  if (contact != ChainContact::kTouch) return contact;
  return HasSelfCrossingByBoxes(list) ? ChainContact::kCrossing : ChainContact::kNone;
}

}  // namespace zelvan
