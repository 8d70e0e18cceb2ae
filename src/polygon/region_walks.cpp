// Boundary walks of polygons (region_walks.h).
#include "polygon/region_walks.h"

#include <algorithm>
#include <span>
#include <utility>

namespace zelvan {

namespace {

// An edge at a place where rings touch, as seen from there.
struct Arm {
  std::uint32_t point;  // of the ring, in that place
  GridPoint direction;
  bool leaves;
};

// Counter-clockwise from straight right; no two arms have one direction.
bool IsBefore(const Arm& a, const Arm& b) noexcept {
  const auto isLower = [](GridPoint d) { return d.gy < 0 || (d.gy == 0 && d.gx < 0); };
  if (isLower(a.direction) != isLower(b.direction)) return isLower(b.direction);
  return Cross({0, 0}, a.direction, b.direction) > 0;
}

class WalkFinder {
 public:
  WalkFinder(const FlatRegion& region, std::size_t polygon)
      : region_(region), first_(region.FirstPoint(polygon)) {
    const std::size_t count = region.FirstPoint(polygon + 1) - first_;
    ringNext_.resize(count);
    ringPrevious_.resize(count);
    for (std::size_t i = region.polygonOffsets[polygon]; i < region.polygonOffsets[polygon + 1];
         ++i) {
      const std::uint32_t begin = region.ringOffsets[i] - first_;
      const std::uint32_t end = region.ringOffsets[i + 1] - first_;
      for (std::uint32_t k = begin; k < end; ++k) {
        ringNext_[k] = k + 1 < end ? k + 1 : begin;
        ringPrevious_[ringNext_[k]] = k;
      }
    }
    next_ = ringNext_;
    ForEachTouch(region, polygon, [&](auto points) { JoinAt(points); });
  }

  [[nodiscard]] PolygonWalks Run() {
    PolygonWalks walks;
    walks.points.reserve(next_.size());
    walks.places.reserve(next_.size());
    for (std::uint32_t k = 0; k < next_.size(); ++k) {
      const std::size_t first = walks.places.size();
      for (std::uint32_t i = k; next_[i] != kDone; i = std::exchange(next_[i], kDone)) {
        walks.points.push_back(first_ + i);
        walks.places.push_back(region_.points[first_ + i]);
      }
      walks.area.Add(std::span(walks.places).subspan(first));
    }
    return walks;
  }

 private:
  static constexpr std::uint32_t kDone = UINT32_MAX;

  // The wedge to the left of an edge that arrives ends at the next edge clockwise, which leaves.
  void JoinAt(std::span<const std::uint32_t> points) {
    std::vector<Arm> arms;
    for (const std::uint32_t point : points) {
      const std::uint32_t k = point - first_;
      arms.push_back({k, Direction(k, ringPrevious_[k]), false});
      arms.push_back({k, Direction(k, ringNext_[k]), true});
    }
    std::sort(arms.begin(), arms.end(), IsBefore);
    const Arm* clockwise = &arms.back();
    for (const Arm& arm : arms) {
      if (!arm.leaves) next_[arm.point] = ringNext_[clockwise->point];
      clockwise = &arm;
    }
  }

  [[nodiscard]] GridPoint Direction(std::uint32_t from, std::uint32_t to) const noexcept {
    const GridPoint p = region_.points[first_ + from];
    const GridPoint q = region_.points[first_ + to];
    return {q.gx - p.gx, q.gy - p.gy};
  }

  const FlatRegion& region_;
  std::uint32_t first_;  // point of the polygon, from which the others count
  std::vector<std::uint32_t> ringNext_;
  std::vector<std::uint32_t> ringPrevious_;
  std::vector<std::uint32_t> next_;  // on the walk
};

}  // namespace

PolygonWalks WalksOf(const FlatRegion& region, std::size_t polygon) {
  return WalkFinder(region, polygon).Run();
}

}  // namespace zelvan
