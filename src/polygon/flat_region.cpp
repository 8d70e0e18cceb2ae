// Flat regions (flat_region.h).
#include "polygon/flat_region.h"

#include <zelvan/error.h>

#include <algorithm>
#include <utility>

#include "polygon/contour.h"
#include "polygon/simple_rings.h"

namespace zelvan {

namespace {

std::vector<WalkPoint> WalkOf(const Contour* contour) {
  std::vector<WalkPoint> walk;
  walk.reserve(contour->count);
  ForEachVertex(contour, [&](const VertexNode* v) {
    walk.push_back({v->grid, (v->flags & VERTEX_MAY_TOUCH) != 0});
  });
  return walk;
}

GridPoint PointOf(const WalkPoint& p) noexcept {
  return p.point;
}
GridPoint PointOf(GridPoint p) noexcept {
  return p;
}

template <class Points>
std::int64_t TwiceAreaOf(const Points& ring) noexcept {
  std::uint64_t sum = 0;  // as that of a region below: partial sums go round and round
  GridPoint p = PointOf(ring.back());
  for (const auto& point : ring) {
    const GridPoint q = PointOf(point);
    sum += static_cast<std::uint64_t>(std::int64_t{p.gx} * q.gy - std::int64_t{q.gx} * p.gy);
    p = q;
  }
  return static_cast<std::int64_t>(sum);
}

// The simple rings of all areas, and their order in the region.
class Flattening {
 public:
  explicit Flattening(const Area* areas) {
    ForEachArea(areas, [&](const Area* area) {
      AddArea(area);
      ++areaCount_;
    });
  }

  [[nodiscard]] FlatRegion Run() {
    Sort();
    FlatRegion region;
    region.points.reserve(points_.size());
    region.ringOffsets.reserve(rings_.size() + 1);
    region.polygonOffsets.reserve(areaCount_ + 1);
    for (const RingRange& ring : rings_) {
      if (ring.isOuter && region.Rings() > 0) ClosePolygon(region);
      for (const WalkPoint& p : PointsOf(ring)) {
        if (p.touches) region.touches.push_back(static_cast<std::uint32_t>(region.points.size()));
        region.points.push_back(p.point);
      }
      region.ringOffsets.push_back(static_cast<std::uint32_t>(region.points.size()));
    }
    if (region.Rings() > 0) ClosePolygon(region);
    return region;
  }

 private:
  struct RingRange {
    std::size_t begin;
    std::size_t end;
    std::size_t area;  // first its position in the ring of areas, then its rank
    bool isOuter;
  };

  void AddArea(const Area* area) {
    for (const Contour* c = area->contours; c != nullptr; c = c->next) {
      std::vector<WalkPoint> walk = WalkOf(c);
      ForEachSimpleRing(walk, [&](std::span<const WalkPoint> ring) {
        const std::size_t begin = points_.size();
        points_.insert(points_.end(), ring.begin(), ring.end());
        rings_.push_back({begin, points_.size(), areaCount_, TwiceAreaOf(ring) > 0});
      });
    }
  }

  // Polygons by their outer rings; in each the outer ring, then the holes.
  void Sort() {
    std::vector<const RingRange*> outer;
    for (const RingRange& ring : rings_) {
      if (ring.isOuter) outer.push_back(&ring);
    }
    std::sort(outer.begin(), outer.end(),
              [&](const RingRange* a, const RingRange* b) { return IsBefore(*a, *b); });
    std::vector<std::size_t> rank(areaCount_);
    for (std::size_t i = 0; i < outer.size(); ++i) rank[outer[i]->area] = i;
    for (RingRange& ring : rings_) ring.area = rank[ring.area];
    std::sort(rings_.begin(), rings_.end(), [&](const RingRange& a, const RingRange& b) {
      if (a.area != b.area) return a.area < b.area;
      if (a.isOuter != b.isOuter) return a.isOuter;
      return IsBefore(a, b);
    });
  }

  [[nodiscard]] std::span<const WalkPoint> PointsOf(const RingRange& ring) const noexcept {
    return {points_.data() + ring.begin, points_.data() + ring.end};
  }

  [[nodiscard]] bool IsBefore(const RingRange& a, const RingRange& b) const noexcept {
    const auto p = PointsOf(a);
    const auto q = PointsOf(b);
    return std::lexicographical_compare(
        p.begin(), p.end(), q.begin(), q.end(),
        [](const WalkPoint& v, const WalkPoint& w) { return v.point < w.point; });
  }

  // The touches of the polygon, which were found ring by ring, go by their places.
  static void ClosePolygon(FlatRegion& region) {
    const std::uint32_t first = region.ringOffsets[region.polygonOffsets.back()];
    const auto begin = std::partition_point(region.touches.begin(), region.touches.end(),
                                            [first](std::uint32_t i) { return i < first; });
    std::sort(begin, region.touches.end(), [&](std::uint32_t i, std::uint32_t j) {
      return std::pair(region.points[i], i) < std::pair(region.points[j], j);
    });
    region.polygonOffsets.push_back(static_cast<std::uint32_t>(region.Rings()));
  }

  std::vector<WalkPoint> points_;
  std::vector<RingRange> rings_;
  std::size_t areaCount_ = 0;
};

}  // namespace

FlatRegion FlattenWalks(const Area* ring) {
  return Flattening(ring).Run();
}

std::int64_t TwiceArea(const FlatRegion& region) noexcept {
  std::uint64_t sum = 0;
  for (std::size_t i = 0; i < region.Rings(); ++i) {
    sum += static_cast<std::uint64_t>(TwiceAreaOf(region.Ring(i)));
  }
  return static_cast<std::int64_t>(sum);
}

}  // namespace zelvan
