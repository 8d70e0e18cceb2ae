// The exported functions on regions: arguments are checked here, failures become statuses, and
// no exception leaves.
#include <zelvan/region_c.h>

#include <algorithm>
#include <cmath>

#include "interface/region.h"
#include "interface/region_arguments.h"
#include "interface/region_move.h"
#include "interface/region_offset.h"
#include "interface/region_operations.h"
#include "interface/region_side.h"
#include "interface/ring_area.h"
#include "triangulation/region_triangles.h"

namespace {

using namespace zelvan;

constexpr const char* kMessages[] = {
    "done",
    "there is not enough memory",
    "a coordinate is infinite or no number",
    "a point lies outside the grid, or no grid extends so far",
    "this is no grid: its step is no power of two, or its origin no multiple of it, or too far",
    "an argument is not valid",
    "there are more vertices than 2147483647",
    "a contradiction inside the library",
    "the coarser grid would lose a polygon or a hole, or more than 1/1024 of its area",
};

bool IsRoomFor(const zelvan_region* region, const zelvan_counts* room) noexcept {
  const zelvan_counts counts = CountsOf(region);
  return room != nullptr && room->polygons == counts.polygons && room->rings == counts.rings &&
         room->vertices == counts.vertices && room->triangles == counts.triangles;
}

}  // namespace

const char* ZELVAN_CALL zelvan_status_message(zelvan_status status) {
  return status >= ZELVAN_OK && status <= ZELVAN_TOO_COARSE ? kMessages[status]
                                                            : "this is no status";
}

zelvan_status ZELVAN_CALL zelvan_grid_covering(const double* xy, uint32_t count,
                                               zelvan_grid* grid) {
  return Guarded(nullptr, [&] {
    Require(grid != nullptr && (xy != nullptr || count == 0));
    const std::uint32_t offsets[] = {0, count};
    const RingInput points{xy, offsets};
    *grid = GridCovering({&points, 1}).Data();
  });
}

zelvan_status ZELVAN_CALL zelvan_grid_check(const zelvan_grid* grid) {
  return Guarded(nullptr, [&] {
    Require(grid != nullptr);
    static_cast<void>(CheckedGrid(*grid));
  });
}

zelvan_status ZELVAN_CALL zelvan_grid_common(const zelvan_region* const* regions, uint32_t count,
                                             zelvan_grid* grid) {
  return Guarded(nullptr, [&] {
    Require(grid != nullptr && (regions != nullptr || count == 0));
    *grid = GridFor({regions, count}).Data();
  });
}

zelvan_status ZELVAN_CALL zelvan_region_create(const double* xy, const uint32_t* ring_offsets,
                                               uint32_t ring_count, int32_t rule,
                                               const zelvan_grid* grid,
                                               const zelvan_region** region, zelvan_fault* fault) {
  return Guarded(fault, [&] {
    Require(region != nullptr);
    const RingInput rings = CheckedRings(xy, ring_offsets, ring_count);
    *region = FromRings(rings, rule, RingTurns::kAsGiven, grid).release();
  });
}

zelvan_status ZELVAN_CALL zelvan_region_unite_rings(const double* xy, const uint32_t* ring_offsets,
                                                    uint32_t ring_count, const zelvan_grid* grid,
                                                    const zelvan_region** region,
                                                    zelvan_fault* fault) {
  return Guarded(fault, [&] {
    Require(region != nullptr);
    const RingInput rings = CheckedRings(xy, ring_offsets, ring_count);
    *region = FromRings(rings, ZELVAN_NON_ZERO, RingTurns::kCounterClockwise, grid).release();
  });
}

zelvan_status ZELVAN_CALL zelvan_rings_combine(int32_t operation, const double* xy_a,
                                               const uint32_t* offsets_a, uint32_t rings_a,
                                               int32_t rule_a, const double* xy_b,
                                               const uint32_t* offsets_b, uint32_t rings_b,
                                               int32_t rule_b, const zelvan_grid* grid,
                                               const zelvan_region** region, zelvan_fault* fault) {
  return Guarded(fault, [&] {
    Require(region != nullptr);
    const RingInput rings[] = {CheckedRings(xy_a, offsets_a, rings_a),
                               CheckedRings(xy_b, offsets_b, rings_b)};
    const RingOperand a{rings[0], RuleOf(rule_a)};
    const RingOperand b{rings[1], RuleOf(rule_b)};
    const RegionGrid checked = grid != nullptr ? CheckedGrid(*grid) : GridCovering(rings);
    *region = CombineRings(OperationOf(operation), a, b, checked).release();
  });
}

const zelvan_region* ZELVAN_CALL zelvan_region_retain(const zelvan_region* region) {
  return Share(region).release();
}

void ZELVAN_CALL zelvan_region_release(const zelvan_region* region) {
  Release(region);
}

zelvan_status ZELVAN_CALL zelvan_region_combine(int32_t operation, const zelvan_region* a,
                                                const zelvan_region* b,
                                                const zelvan_region** result) {
  return Guarded(nullptr, [&] {
    Require(result != nullptr);
    *result = Combine(OperationOf(operation), a, b).release();
  });
}

zelvan_status ZELVAN_CALL zelvan_region_unite(const zelvan_region* const* regions, uint32_t count,
                                              const zelvan_region** result) {
  return Guarded(nullptr, [&] {
    Require(result != nullptr && (regions != nullptr || count == 0));
    *result = UniteRegions({regions, count}).release();
  });
}

zelvan_status ZELVAN_CALL zelvan_region_offset(const zelvan_region* region, double distance,
                                               int32_t join, double miter_limit, double tolerance,
                                               const zelvan_region** result) {
  return Guarded(nullptr, [&] {
    Require(result != nullptr && std::isfinite(distance));
    Require(std::isfinite(tolerance) && tolerance >= 0.0);
    *result = OffsetRegion(region, distance, {StyleOf(join, miter_limit), tolerance}).release();
  });
}

zelvan_status ZELVAN_CALL zelvan_region_on_grid(const zelvan_region* region,
                                                const zelvan_grid* grid,
                                                const zelvan_region** result) {
  return Guarded(nullptr, [&] {
    Require(grid != nullptr && result != nullptr);
    *result = OnGrid(region, CheckedGrid(*grid), MoveCost::kAny).release();
  });
}

uint32_t ZELVAN_CALL zelvan_region_lost(const zelvan_region* region) {
  return LostOf(region);
}

int32_t ZELVAN_CALL zelvan_region_equal(const zelvan_region* a, const zelvan_region* b) {
  return IsSame(a, b) ? 1 : 0;
}

void ZELVAN_CALL zelvan_region_counts(const zelvan_region* region, zelvan_counts* counts) {
  if (counts != nullptr) *counts = CountsOf(region);
}

void ZELVAN_CALL zelvan_region_grid(const zelvan_region* region, zelvan_grid* grid) {
  if (grid != nullptr) *grid = (IsEmpty(region) ? RegionGrid() : region->grid).Data();
}

double ZELVAN_CALL zelvan_region_area(const zelvan_region* region) {
  if (region == nullptr) return 0.0;
  const double step = region->grid.Step();
  return TwiceAreaOf(region->flat).Double() * 0.5 * step * step;
}

int32_t ZELVAN_CALL zelvan_region_bounds(const zelvan_region* region, double* box) {
  if (IsEmpty(region) || box == nullptr) return 0;
  const WorldBox bounds = BoundsOf(*region);
  box[0] = bounds.min.x;
  box[1] = bounds.min.y;
  box[2] = bounds.max.x;
  box[3] = bounds.max.y;
  return 1;
}

zelvan_status ZELVAN_CALL zelvan_region_prepare(const zelvan_region* region) {
  return Guarded(nullptr, [&] {
    if (region != nullptr) Prepare(*region);
  });
}

zelvan_status ZELVAN_CALL zelvan_region_contains(const zelvan_region* region, const double* xy,
                                                 uint32_t count, int8_t* sides) {
  return Guarded(nullptr, [&] {
    Require(count == 0 || (xy != nullptr && sides != nullptr));
    if (region == nullptr) {
      std::fill_n(sides, count, std::int8_t{-1});
    } else {
      FindSides(*region, xy, count, sides);
    }
  });
}

zelvan_status ZELVAN_CALL zelvan_region_read(const zelvan_region* region, const zelvan_counts* room,
                                             double* xy, uint32_t* ring_offsets,
                                             uint32_t* polygon_offsets) {
  return Guarded(nullptr, [&] {
    Require(IsRoomFor(region, room));
    if (region == nullptr) {
      if (ring_offsets != nullptr) *ring_offsets = 0;
      if (polygon_offsets != nullptr) *polygon_offsets = 0;
      return;
    }
    const FlatRegion& flat = region->flat;
    if (ring_offsets != nullptr) {
      std::copy(flat.ringOffsets.begin(), flat.ringOffsets.end(), ring_offsets);
    }
    if (polygon_offsets != nullptr) {
      std::copy(flat.polygonOffsets.begin(), flat.polygonOffsets.end(), polygon_offsets);
    }
    if (xy == nullptr) return;
    for (const GridPoint point : flat.points) {
      const WorldPoint p = region->grid.PlaceOf(point);
      *xy++ = p.x;
      *xy++ = p.y;
    }
  });
}

zelvan_status ZELVAN_CALL zelvan_region_triangulate(const zelvan_region* region, uint32_t options,
                                                    const zelvan_counts* room, uint32_t* triangles,
                                                    int32_t* neighbours) {
  return Guarded(nullptr, [&] {
    Require(IsRoomFor(region, room) && (options & ~std::uint32_t{ZELVAN_DELAUNAY}) == 0);
    if (IsEmpty(region)) return;
    Require(triangles != nullptr);
    CutRegion(region->flat, (options & ZELVAN_DELAUNAY) != 0, triangles, neighbours);
  });
}
