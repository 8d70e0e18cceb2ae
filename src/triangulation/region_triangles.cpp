// From flat arrays to flat arrays (region_triangles.h). A polygon's triangles go into the result
// at once, and are made Delaunay there. What else is needed stands in arrays that all polygons
// share.
#include "triangulation/region_triangles.h"

#include <zelvan/error.h>

#include <new>
#include <span>
#include <vector>

#include "triangulation/chains.h"
#include "triangulation/ears.h"
#include "triangulation/flips.h"
#include "triangulation/fronts.h"
#include "triangulation/plane_sweep.h"
#include "triangulation/region_writer.h"
#include "triangulation/vertex_order.h"
#include "triangulation/walks.h"

namespace VORNEX {

namespace {

using zelvan::FlatRegion;

class RegionCutter {
 public:
  RegionCutter(const FlatRegion& region, bool delaunay, std::uint32_t* triangles,
               std::int32_t* neighbours) noexcept
      : region_(region), delaunay_(delaunay), triangles_(triangles), neighbours_(neighbours) {}

  [[nodiscard]] zelvan::RegionWork Run() {
    for (std::size_t p = 0; p < region_.Polygons(); ++p) CutPolygon(p);
    return {plainSweep_.steps() + delaunaySweep_.steps(), flipCount_, fronts_.steps()};
  }

 private:
  void CutPolygon(std::size_t polygon);
  [[nodiscard]] bool CutBySweep();
  template <class Cutter>
  [[nodiscard]] bool Sweep(PlaneSweep<Cutter, false>& sweep, Cutter& cutter);

  void Prepare(std::uint32_t triangles);
  void Finish();

  void FillVertices(bool turned);
  [[nodiscard]] bool TurningPays() const noexcept;
  std::uint32_t JoinWalks();
  template <class AnySweep>
  void ArrangeShared(std::span<std::uint32_t> order, AnySweep& sweep);

  [[nodiscard]] std::uint32_t Size() const noexcept { return end_ - first_; }
  [[nodiscard]] std::uint32_t Rings() const noexcept { return ringEnd_ - ring_; }

  const FlatRegion& region_;
  const bool delaunay_;
  std::uint32_t* triangles_;  // where the polygon's triangles go
  std::int32_t* neighbours_;
  std::uint32_t before_ = 0;  // triangles of the polygons so far

  // The polygon: its points, rings and touches.
  std::uint32_t first_ = 0;
  std::uint32_t end_ = 0;
  std::uint32_t ring_ = 0;
  std::uint32_t ringEnd_ = 0;
  std::size_t touch_ = 0;
  std::size_t touchEnd_ = 0;

  std::uint32_t made_ = 0;          // its triangles
  std::uint32_t* twins_ = nullptr;  // null where nobody asks
  std::vector<std::uint32_t> spare_;

  std::vector<SweepVertex> vertices_;
  std::vector<std::uint32_t> touching_;
  WalkJoiner joiner_;
  VertexOrder order_;
  RegionWriter writer_;
  Chains<RegionWriter> chains_{writer_};
  PlaneSweep<Chains<RegionWriter>, false> plainSweep_{chains_};
  Fronts fronts_{writer_};
  PlaneSweep<Fronts, false> delaunaySweep_{fronts_};
  Flips flips_;
  std::uint64_t flipCount_ = 0;
  Arrangement arrangement_;
};

void RegionCutter::CutPolygon(std::size_t polygon) {
  ring_ = region_.polygonOffsets[polygon];
  ringEnd_ = region_.polygonOffsets[polygon + 1];
  first_ = region_.ringOffsets[ring_];
  end_ = region_.ringOffsets[ringEnd_];
  touch_ = touchEnd_;
  while (touchEnd_ < region_.touches.size() && region_.touches[touchEnd_] < end_) ++touchEnd_;
  const std::uint32_t triangles = Size() + 2 * Rings() - 4;
  bool found = false;
  if (touch_ == touchEnd_ && triangles + 2 <= kMostForEars) {
    Prepare(triangles);
    found = CutEars(region_, polygon, triangles_, twins_);
  } else {
    found = CutBySweep();
  }
  if (!found) ERR::Raise(ERR::FAIL);
  Finish();
}

// Sets up the arrays for a number of triangles. Neighbours are the twins at first.
void RegionCutter::Prepare(std::uint32_t triangles) {
  if (triangles > kNone / 3) throw std::bad_alloc();  // sides are numbered in 32 bits
  made_ = triangles;
  const std::size_t sides = 3 * std::size_t{triangles};
  if (delaunay_ && spare_.size() < sides) spare_.resize(sides);
  twins_ = neighbours_ != nullptr ? reinterpret_cast<std::uint32_t*>(neighbours_)
           : delaunay_            ? spare_.data()
                                  : nullptr;
}

void RegionCutter::Finish() {
  const std::size_t sides = 3 * std::size_t{made_};
  if (delaunay_) {
    const Sides cut{{triangles_, sides}, {twins_, sides}};
    flipCount_ += flips_.Run(region_.points.data(), cut);
    arrangement_.Run(cut, first_, end_, neighbours_ != nullptr, spare_);
  }
  triangles_ += sides;
  if (neighbours_ != nullptr) {
    for (std::size_t side = 0; side < sides; ++side) {
      if (twins_[side] != kNone) twins_[side] = before_ + twins_[side] / 3;
    }
    neighbours_ += sides;
  }
  before_ += made_;
}

bool RegionCutter::CutBySweep() {
  FillVertices(TurningPays());
  const std::uint32_t joined = JoinWalks();
  if (joined >= Rings()) return false;
  Prepare(Size() + 2 * (Rings() - joined) - 4);
  writer_.Begin(first_, Size(), made_, triangles_, twins_);
  return delaunay_ ? Sweep(delaunaySweep_, fronts_) : Sweep(plainSweep_, chains_);
}

template <class Cutter>
bool RegionCutter::Sweep(PlaneSweep<Cutter, false>& sweep, Cutter& cutter) {
  cutter.Begin();
  sweep.Begin(vertices_);
  const std::span<std::uint32_t> order = order_.Sort(vertices_);
  if (touch_ != touchEnd_) ArrangeShared(order, sweep);
  return sweep.Run(order) && writer_.IsComplete();
}

// The sweep line passes as many intervals as it opens, at the most; those are opened by vertices
// that come before both their neighbours. Would a sweep along x meet fewer of them?
bool RegionCutter::TurningPays() const noexcept {
  std::uint32_t downward = 0;
  std::uint32_t rightward = 0;
  for (std::uint32_t i = ring_; i < ringEnd_; ++i) {
    const std::span<const GridPoint> ring = region_.Ring(i);
    bool wasBelow = GreaterThan(ring[ring.size() - 2], ring.back());
    bool wasRight = ring[ring.size() - 2] < ring.back();
    GridPoint p = ring.back();
    for (const GridPoint q : ring) {
      const bool isBelow = GreaterThan(p, q);
      const bool isRight = p < q;
      downward += isBelow && !wasBelow ? 1 : 0;
      rightward += isRight && !wasRight ? 1 : 0;
      wasBelow = isBelow;
      wasRight = isRight;
      p = q;
    }
  }
  return rightward < downward;
}

// A turn by a quarter brings what lies left to the top.
void RegionCutter::FillVertices(bool turned) {
  vertices_.resize(Size());
  for (std::uint32_t i = ring_; i < ringEnd_; ++i) {
    const std::uint32_t begin = region_.ringOffsets[i] - first_;
    const std::uint32_t end = region_.ringOffsets[i + 1] - first_;
    for (std::uint32_t v = begin; v < end; ++v) {
      const GridPoint p = region_.points[first_ + v];
      vertices_[v] = {turned ? GridPoint{p.gy, -p.gx} : p, v - 1, v + 1, kNone};
    }
    vertices_[begin].prev = end - 1;
    vertices_[end - 1].next = begin;
  }
}

// Each touch makes one walk of its rings. @return the number of walks less
std::uint32_t RegionCutter::JoinWalks() {
  std::uint32_t joined = 0;
  for (std::size_t i = touch_; i < touchEnd_;) {
    const GridPoint place = region_.points[region_.touches[i]];
    touching_.clear();
    for (; i < touchEnd_ && region_.points[region_.touches[i]] == place; ++i) {
      touching_.push_back(region_.touches[i] - first_);
    }
    joiner_.JoinAt(touching_, vertices_);
    joined += static_cast<std::uint32_t>(touching_.size() - 1);
  }
  return joined;
}

template <class AnySweep>
void RegionCutter::ArrangeShared(std::span<std::uint32_t> order, AnySweep& sweep) {
  for (std::size_t begin = 0, end = 0; begin < order.size(); begin = end) {
    const GridPoint place = vertices_[order[begin]].point;
    for (end = begin + 1; end < order.size() && vertices_[order[end]].point == place;) ++end;
    if (end > begin + 1) sweep.ArrangeShared(order.subspan(begin, end - begin));
  }
}

}  // namespace

}  // namespace VORNEX

namespace zelvan {

RegionWork CutRegion(const FlatRegion& region, bool delaunay, std::uint32_t* triangles,
                     std::int32_t* neighbours) {
  return VORNEX::RegionCutter(region, delaunay, triangles, neighbours).Run();
}

}  // namespace zelvan
