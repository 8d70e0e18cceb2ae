// Distances from boundaries (region_distance.h).
#include "polygon/region_distance.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <tuple>
#include <vector>

namespace zelvan {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::uint32_t kNoEdge = ~std::uint32_t{0};

WorldBox Placed(const TreeInPlane& region, EdgeTree::Node node) noexcept {
  const GridBox& box = region.tree.BoxOf(node);
  return {region.place(box.min), region.place(box.max)};
}

// From one interval to the other.
double Gap(double min, double max, double otherMin, double otherMax) noexcept {
  return std::max({0.0, otherMin - max, min - otherMax});
}

double SquaredGap(const WorldBox& a, const WorldBox& b) noexcept {
  const double x = Gap(a.min.x, a.max.x, b.min.x, b.max.x);
  const double y = Gap(a.min.y, a.max.y, b.min.y, b.max.y);
  return x * x + y * y;
}

// No place of one box is farther from one of the other along both axes together.
double Reach(const WorldBox& a, const WorldBox& b) noexcept {
  return std::max(a.max.x, b.max.x) - std::min(a.min.x, b.min.x) + std::max(a.max.y, b.max.y) -
         std::min(a.min.y, b.min.y);
}

// How far boxes may be that cannot be left out. Differences of coordinates are off by 2^-53 of the
// reach at most, what is made of them by a few times as much.
class Limit {
 public:
  explicit Limit(double reach) noexcept : slack_(reach * 0x1p-48) {}

  void LowerTo(double squared) noexcept {
    const double farthest = std::sqrt(squared) * (1.0 + 0x1p-40) + slack_;
    squared_ = farthest * farthest;
  }
  [[nodiscard]] bool Allows(double squaredGap) const noexcept { return squaredGap <= squared_; }

 private:
  double slack_;
  double squared_ = kInfinity;
};

// Nodes with their distances, the nearest last.
struct Candidate {
  double gap;
  EdgeTree::Node node;
};

class PointSearch {
 public:
  PointSearch(const TreeInPlane& region, WorldPoint p) noexcept
      : region_(region), at_{p, p}, limit_(Reach(Placed(region, region.tree.Root()), at_)) {}

  NearestEdge Run() noexcept {
    Put(region_.tree.Root());
    while (size_ > 0) {
      const Candidate next = stack_[--size_];
      if (!limit_.Allows(next.gap)) continue;
      next.node.level == 0 ? LookAtEdges(next.node) : Open(next.node);
    }
    return best_;
  }

 private:
  void Put(EdgeTree::Node node) noexcept {
    const double gap = SquaredGap(Placed(region_, node), at_);
    if (limit_.Allows(gap)) stack_[size_++] = {gap, node};
  }

  void Open(EdgeTree::Node node) noexcept {
    const std::size_t first = size_;
    region_.tree.ForEachChild(node, [this](EdgeTree::Node child) { Put(child); });
    std::sort(stack_.begin() + static_cast<std::ptrdiff_t>(first),
              stack_.begin() + static_cast<std::ptrdiff_t>(size_),
              [](const Candidate& a, const Candidate& b) { return a.gap > b.gap; });
  }

  void LookAtEdges(EdgeTree::Node leaf) noexcept {
    region_.tree.ForEachEdge(leaf, [this](std::uint32_t edge, GridPoint from, GridPoint to) {
      const EdgeDistance distance = DistanceToEdge(region_.place(from), region_.place(to), at_.min);
      if (std::tie(distance.squared, edge) >= std::tie(best_.distance.squared, best_.edge)) return;
      best_ = {distance, edge};
      limit_.LowerTo(distance.squared);
    });
  }

  const TreeInPlane& region_;
  WorldBox at_;
  Limit limit_;
  NearestEdge best_{{kInfinity, {0.0, 0.0}}, kNoEdge};
  std::array<Candidate, std::size_t{EdgeTree::kFan} * EdgeTree::kLevels> stack_;
  std::size_t size_ = 0;
};

class PairSearch {
 public:
  PairSearch(const TreeInPlane& a, const TreeInPlane& b) noexcept
      : a_(a), b_(b), limit_(Reach(Placed(a, a.tree.Root()), Placed(b, b.tree.Root()))) {}

  NearestPair Run() {
    Put(a_.tree.Root(), b_.tree.Root());
    while (!heap_.empty()) {
      std::pop_heap(heap_.begin(), heap_.end(), IsFarther);
      const Both next = heap_.back();
      heap_.pop_back();
      if (!limit_.Allows(next.gap)) break;
      Open(next);
    }
    return best_;
  }

 private:
  struct Both {
    double gap;
    EdgeTree::Node a;
    EdgeTree::Node b;
  };
  // Of equally far ones lower ones come first, so that edges are reached soon.
  static bool IsFarther(const Both& p, const Both& q) noexcept {
    return std::tuple(p.gap, p.a.level + p.b.level) > std::tuple(q.gap, q.a.level + q.b.level);
  }

  void Put(EdgeTree::Node a, EdgeTree::Node b) {
    const double gap = SquaredGap(Placed(a_, a), Placed(b_, b));
    if (!limit_.Allows(gap)) return;
    heap_.push_back({gap, a, b});
    std::push_heap(heap_.begin(), heap_.end(), IsFarther);
  }

  void Open(const Both& both) {
    if (both.a.level == 0 && both.b.level == 0) {
      LookAtEdges(both.a, both.b);
    } else if (both.a.level >= both.b.level) {
      a_.tree.ForEachChild(both.a, [&](EdgeTree::Node child) { Put(child, both.b); });
    } else {
      b_.tree.ForEachChild(both.b, [&](EdgeTree::Node child) { Put(both.a, child); });
    }
  }

  void LookAtEdges(EdgeTree::Node a, EdgeTree::Node b) noexcept {
    a_.tree.ForEachEdge(a, [&](std::uint32_t e, GridPoint a0, GridPoint a1) {
      b_.tree.ForEachEdge(b, [&](std::uint32_t f, GridPoint b0, GridPoint b1) {
        const NearestPair pair =
            DistanceOfEdges(a_.place(a0), a_.place(a1), b_.place(b0), b_.place(b1));
        if (std::tie(pair.squared, e, f) >= std::tie(best_.squared, edgeOfA_, edgeOfB_)) return;
        best_ = pair;
        edgeOfA_ = e;
        edgeOfB_ = f;
        limit_.LowerTo(pair.squared);
      });
    });
  }

  const TreeInPlane& a_;
  const TreeInPlane& b_;
  Limit limit_;
  NearestPair best_{kInfinity, {0.0, 0.0}, {0.0, 0.0}};
  std::uint32_t edgeOfA_ = kNoEdge;
  std::uint32_t edgeOfB_ = kNoEdge;
  std::vector<Both> heap_;
};

}  // namespace

NearestEdge FindNearest(const TreeInPlane& region, WorldPoint p) noexcept {
  return PointSearch(region, p).Run();
}

NearestPair FindNearestPair(const TreeInPlane& a, const TreeInPlane& b) {
  return PairSearch(a, b).Run();
}

NearestPair DistanceOfEdges(WorldPoint a0, WorldPoint a1, WorldPoint b0, WorldPoint b1) noexcept {
  NearestPair best{kInfinity, a0, b0};
  const auto take = [&best](const EdgeDistance& distance, WorldPoint first, WorldPoint second) {
    if (distance.squared < best.squared) best = {distance.squared, first, second};
  };
  for (const WorldPoint p : {a0, a1}) {
    const EdgeDistance distance = DistanceToEdge(b0, b1, p);
    take(distance, p, distance.place);
  }
  for (const WorldPoint p : {b0, b1}) {
    const EdgeDistance distance = DistanceToEdge(a0, a1, p);
    take(distance, distance.place, p);
  }
  return best;
}

}  // namespace zelvan
