// Moves between grids (regrid.h).
#include "boolean/regrid.h"

#include <cstdint>
#include <vector>

#include "boolean/operand.h"
#include "boolean/soundness.h"
#include "polygon/contour.h"
#include "polygon/grid_mapping.h"

namespace zelvan {

namespace {

template <class Visit>
void ForEachVertexOf(const Area* ring, Visit visit) {
  ForEachContour(ring, [&](const Contour* contour) { ForEachVertex(contour, visit); });
}

bool HasEqualNeighbours(const Area* ring) noexcept {
  bool found = false;
  ForEachVertexOf(ring, [&](const VertexNode* v) { found |= v->grid == v->next->grid; });
  return found;
}

bool IsProper(const WorldBox& box) noexcept {
  return box.min.x < box.max.x && box.min.y < box.max.y;
}

}  // namespace

bool IsSame(const WorldBox& a, const WorldBox& b) noexcept {
  return a.min.x == b.min.x && a.min.y == b.min.y && a.max.x == b.max.x && a.max.y == b.max.y;
}

// Unsnapping keeps the order of coordinates, so the corners suffice; the ends of the
// grid are the corners of its box without rounding, so a box that is filled stays.
WorldBox WorldBoxOf(const Area* ring, const WorldBox& gridBox) noexcept {
  const GridBox box = BoxOfRing(ring);
  WorldBox world{Unsnap(box.min, gridBox.min, gridBox.max),
                 Unsnap(box.max, gridBox.min, gridBox.max)};
  constexpr std::int32_t last = GRID_MAX - GRID_OFFSET;
  if (box.min.gx == -GRID_OFFSET) world.min.x = gridBox.min.x;
  if (box.min.gy == -GRID_OFFSET) world.min.y = gridBox.min.y;
  if (box.max.gx == last) world.max.x = gridBox.max.x;
  if (box.max.gy == last) world.max.y = gridBox.max.y;
  return world;
}

Area* CopyOnGrid(const Area* ring, const WorldBox& from, const WorldBox& to) {
  OwnedRing copy(CopyAreas(ring));
  if (IsSame(from, to)) return copy.release();
  UnsnapRing(copy.first, from.min, from.max);
  SnapRing(copy.first, to.min, to.max);
  return copy.release();
}

// Vertices only ever fall together when doubles cannot tell them apart: the own
// grid is at least as fine as the one before. A vertex that lies on another edge
// can be moved across it.
WorldBox MoveToOwnGrid(Area* ring, const WorldBox& box) {
  if (ring == nullptr) return box;
  const WorldBox own = WorldBoxOf(ring, box);
  if (IsSame(own, box) || !IsProper(own)) return box;
  std::vector<GridPoint> before;
  bool moved = false;
  ForEachVertexOf(ring, [&](const VertexNode* v) { before.push_back(v->grid); });
  ForEachVertexOf(ring, [&](VertexNode* v) {
    const GridPoint old = v->grid;
    v->grid = Snap(Unsnap(old, box.min, box.max), own.min, own.max);
    moved |= v->grid != old;
  });
  if (moved && (HasEqualNeighbours(ring) || !IsSound(ring))) {
    std::size_t i = 0;
    ForEachVertexOf(ring, [&](VertexNode* v) { v->grid = before[i++]; });
    return box;
  }
  ForEachContour(ring, FitBox);
  return own;
}

}  // namespace zelvan
