// Tracing a boundary (rings.h).
#include "overlay/rings.h"

#include <zelvan/error.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "polygon/simple_rings.h"

namespace zelvan::overlay {

namespace {

// A simple ring among the points.
struct Ring {
  std::uint32_t begin;
  std::uint32_t end;
  std::uint32_t region;
  std::uint32_t face;  // the part of the region that it bounds
  bool isOuter;
};

// Which pieces bound which region; by default all bound one.
struct Division {
  std::span<const std::uint32_t> regionOf;  // of each piece
  std::uint32_t outside = kNone;            // a part that is left out
  std::vector<std::uint32_t>* ends = nullptr;
  std::vector<std::uint32_t>* polygonOf = nullptr;
};

class Tracer {
 public:
  explicit Tracer(Boundary& boundary, const Division& division = {})
      : boundary_(boundary), pieces_(boundary.Pieces()), division_(division) {
    points_.reserve(pieces_.size());
    if (division_.polygonOf != nullptr) division_.polygonOf->assign(pieces_.size(), kNone);
  }

  // Chains come in the order of their first pieces, so of their least places. A chain that
  // turns left there, above its first piece, is an outer one.
  [[nodiscard]] FlatRegion Run() {
    for (std::uint32_t i = 0; i < pieces_.size(); ++i) {
      if (pieces_[i].next == kTraced || RegionOf(i) == kNone) continue;
      const bool isOuter = pieces_[i].parent != kNone;
      Trace(isOuter ? i : std::uint32_t{pieces_[i].next}, isOuter);
    }
    return InOrder();
  }

 private:
  static constexpr std::uint32_t kTraced = kPieceMask;

  [[nodiscard]] bool IsDivided() const noexcept { return !division_.regionOf.empty(); }
  [[nodiscard]] std::uint32_t RegionOf(std::uint32_t piece) const noexcept {
    return IsDivided() ? division_.regionOf[piece] : 0;
  }

  void Trace(std::uint32_t first, bool isOuter) {
    const auto begin = static_cast<std::uint32_t>(points_.size());
    const std::uint32_t face = boundary_.Find(first);
    const bool isOutside = IsDivided() && face == boundary_.Find(division_.outside);
    bool mayTouch = false;
    std::uint32_t i = first;
    do {
      Piece& piece = pieces_[i];
      points_.push_back(piece.origin);
      mayTouch = mayTouch || piece.mayTouch != 0;
      chain_.push_back(i);
      i = piece.next;
      if (i == kTraced || chain_.size() > pieces_.size()) ERR::Raise(ERR::FAIL);
    } while (i != first);
    const std::uint32_t region = RegionOf(first);
    if (isOutside) {
      points_.resize(begin);
    } else if (mayTouch) {
      Cut(begin, region, face);
    } else {
      const auto end = static_cast<std::uint32_t>(points_.size());
      rings_.push_back({begin, end, region, face, isOuter});
    }
    for (const std::uint32_t k : chain_) {
      pieces_[k].next = kTraced;
      if (division_.polygonOf != nullptr && !isOutside) (*division_.polygonOf)[k] = face;
    }
    chain_.clear();
  }

  // Replaces a chain that may touch itself by simple rings.
  void Cut(std::uint32_t begin, std::uint32_t region, std::uint32_t face) {
    walk_.clear();
    for (std::size_t k = 0; k < chain_.size(); ++k) {
      walk_.push_back({points_[begin + k], pieces_[chain_[k]].mayTouch != 0, IsDivided()});
    }
    points_.resize(begin);
    ForEachSimpleRing(walk_, [&](std::span<const WalkPoint> ring) {
      const auto first = static_cast<std::uint32_t>(points_.size());
      for (const WalkPoint& p : ring) {
        if (p.touches) touches_.push_back(static_cast<std::uint32_t>(points_.size()));
        points_.push_back(p.point);
      }
      const bool isOuter = Cross(ring.back().point, ring[0].point, ring[1].point) > 0;
      const auto end = static_cast<std::uint32_t>(points_.size());
      rings_.push_back({first, end, region, face, isOuter});
    });
  }

  [[nodiscard]] std::span<const GridPoint> PointsOf(const Ring& ring) const noexcept {
    return {points_.data() + ring.begin, points_.data() + ring.end};
  }

  [[nodiscard]] bool IsBefore(const Ring& a, const Ring& b) const noexcept {
    if (a.region != b.region) return a.region < b.region;
    const auto p = PointsOf(a);
    const auto q = PointsOf(b);
    if (p[0] != q[0]) return p[0] < q[0];
    if (IsDivided()) return HasSmallerCorners(a, b);
    return std::lexicographical_compare(p.begin(), p.end(), q.begin(), q.end());
  }

  // The order of a region does not depend on points that are there for its neighbours.
  [[nodiscard]] bool HasSmallerCorners(const Ring& a, const Ring& b) const noexcept {
    const auto next = [this](const Ring& ring, std::uint32_t i) {
      while (++i < ring.end && !IsOwn(ring, i)) continue;
      return i;
    };
    std::uint32_t i = a.begin;
    std::uint32_t j = b.begin;
    while (i < a.end && j < b.end && points_[i] == points_[j]) {
      i = next(a, i);
      j = next(b, j);
    }
    return j < b.end && (i == a.end || points_[i] < points_[j]);
  }

  // Is a point of a ring a corner, or does the polygon touch itself there?
  [[nodiscard]] bool IsOwn(const Ring& ring, std::uint32_t i) const noexcept {
    const GridPoint before = points_[i > ring.begin ? i - 1 : ring.end - 1];
    const GridPoint after = points_[i + 1 < ring.end ? i + 1 : ring.begin];
    return Cross(before, points_[i], after) != 0 ||
           std::binary_search(touches_.begin(), touches_.end(), i);
  }

  // Polygons by their outer rings; in each the outer ring, then the holes.
  [[nodiscard]] FlatRegion InOrder() {
    const auto isBefore = [this](const Ring& a, const Ring& b) { return IsBefore(a, b); };
    if (!std::is_sorted(rings_.begin(), rings_.end(), isBefore)) {
      std::sort(rings_.begin(), rings_.end(), isBefore);
    }
    const std::size_t polygons = NumberPolygons();
    FlatRegion region;
    region.ringOffsets.reserve(rings_.size() + 1);
    region.polygonOffsets.reserve(polygons + 1);
    if (polygons == rings_.size() && IsContiguous()) {
      region.points = std::move(points_);
      for (const Ring& ring : rings_) {
        region.ringOffsets.push_back(ring.end);
        region.polygonOffsets.push_back(static_cast<std::uint32_t>(region.Rings()));
      }
      region.touches = std::move(touches_);
      return region;
    }
    std::stable_sort(rings_.begin(), rings_.end(), [](const Ring& a, const Ring& b) {
      return std::pair(a.face, !a.isOuter) < std::pair(b.face, !b.isOuter);
    });
    region.points.reserve(points_.size());
    for (const Ring& ring : rings_) {
      if (ring.isOuter && region.Rings() > 0) ClosePolygon(region);
      CopyRing(ring, region);
    }
    if (region.Rings() > 0) ClosePolygon(region);
    return region;
  }

  // Gives each ring the rank of its polygon as its face. @return the number of polygons
  [[nodiscard]] std::size_t NumberPolygons() {
    std::vector<std::uint32_t> rank(pieces_.size());
    std::uint32_t polygons = 0;
    for (const Ring& ring : rings_) {
      if (ring.isOuter) rank[ring.face] = polygons++;
    }
    if (division_.ends != nullptr) CountPolygons();
    if (division_.polygonOf != nullptr) {
      for (std::uint32_t& face : *division_.polygonOf) face = face != kNone ? rank[face] : kNone;
    }
    for (Ring& ring : rings_) ring.face = rank[ring.face];
    return polygons;
  }

  // Of the first region, of the first two, ...
  void CountPolygons() const {
    std::vector<std::uint32_t>& ends = *division_.ends;
    ends.clear();
    std::uint32_t polygons = 0;
    for (const Ring& ring : rings_) {
      ends.resize(ring.region, polygons);
      polygons += ring.isOuter ? 1 : 0;
    }
    ends.push_back(polygons);
  }

  [[nodiscard]] bool IsContiguous() const noexcept {
    std::uint32_t end = 0;
    for (const Ring& ring : rings_) {
      if (ring.begin != end) return false;
      end = ring.end;
    }
    return true;
  }

  void CopyRing(const Ring& ring, FlatRegion& region) const {
    const auto first = static_cast<std::uint32_t>(region.points.size());
    const auto ringPoints = PointsOf(ring);
    region.points.insert(region.points.end(), ringPoints.begin(), ringPoints.end());
    region.ringOffsets.push_back(static_cast<std::uint32_t>(region.points.size()));
    for (auto t = std::lower_bound(touches_.begin(), touches_.end(), ring.begin);
         t != touches_.end() && *t < ring.end; ++t) {
      region.touches.push_back(first + (*t - ring.begin));
    }
  }

  // The touches of the polygon, which were found ring by ring, go by their places.
  static void ClosePolygon(FlatRegion& region) {
    const std::uint32_t first = region.ringOffsets[region.polygonOffsets.back()];
    const auto begin = std::lower_bound(region.touches.begin(), region.touches.end(), first);
    std::sort(begin, region.touches.end(), [&](std::uint32_t i, std::uint32_t j) {
      return std::pair(region.points[i], i) < std::pair(region.points[j], j);
    });
    region.polygonOffsets.push_back(static_cast<std::uint32_t>(region.Rings()));
  }

  Boundary& boundary_;
  std::vector<Piece>& pieces_;
  const Division division_;
  std::vector<std::uint32_t> chain_;  // the pieces of one
  std::vector<WalkPoint> walk_;
  std::vector<GridPoint> points_;
  std::vector<std::uint32_t> touches_;  // numbers of points, ascending
  std::vector<Ring> rings_;
};

}  // namespace

FlatRegion RegionWithin(Boundary& boundary) {
  return Tracer(boundary).Run();
}

FlatRegion RegionsWithin(Boundary& boundary, std::span<const std::uint32_t> regionOf,
                         std::uint32_t outside, std::vector<std::uint32_t>& ends,
                         std::vector<std::uint32_t>* polygonOf) {
  return Tracer(boundary, {regionOf, outside, &ends, polygonOf}).Run();
}

}  // namespace zelvan::overlay
