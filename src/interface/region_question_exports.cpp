// The exported functions that ask regions, measure them and make others of one.
#include <zelvan/region_c.h>

#include <algorithm>
#include <limits>

#include "interface/region_arguments.h"
#include "interface/region_measures.h"
#include "interface/region_mesh.h"
#include "interface/region_parts.h"
#include "interface/region_questions.h"

namespace {

using namespace zelvan;

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

// One of the questions to two regions.
zelvan_status Answer(const zelvan_region* a, const zelvan_region* b, std::int32_t* answer,
                     bool (*question)(const zelvan_region*, const zelvan_region*)) noexcept {
  return Guarded(nullptr, [&] {
    Require(answer != nullptr);
    *answer = question(a, b) ? 1 : 0;
  });
}

}  // namespace

zelvan_status ZELVAN_CALL zelvan_region_intersects(const zelvan_region* a, const zelvan_region* b,
                                                   int32_t* answer) {
  return Answer(a, b, answer, Intersects);
}

zelvan_status ZELVAN_CALL zelvan_region_touches(const zelvan_region* a, const zelvan_region* b,
                                                int32_t* answer) {
  return Answer(a, b, answer, Touches);
}

zelvan_status ZELVAN_CALL zelvan_region_covers(const zelvan_region* a, const zelvan_region* b,
                                               int32_t* answer) {
  return Answer(a, b, answer, Covers);
}

zelvan_status ZELVAN_CALL zelvan_region_distance(const zelvan_region* a, const zelvan_region* b,
                                                 double* distance, double* places) {
  return Guarded(nullptr, [&] {
    Require(distance != nullptr);
    const RegionDistance found = DistanceBetween(a, b);
    *distance = found.distance;
    if (places == nullptr) return;
    const double both[] = {found.first.x, found.first.y, found.second.x, found.second.y};
    std::copy(std::begin(both), std::end(both), places);
  });
}

zelvan_status ZELVAN_CALL zelvan_region_nearest(const zelvan_region* region, uint32_t options,
                                                const double* xy, uint32_t count, double* places,
                                                double* distances) {
  return Guarded(nullptr, [&] {
    Require((options & ~std::uint32_t{ZELVAN_BOUNDARY}) == 0 && (xy != nullptr || count == 0));
    const bool isBoundary = (options & ZELVAN_BOUNDARY) != 0;
    FindNearest(region, isBoundary ? Extent::kBoundary : Extent::kAll, xy, count, places,
                distances);
  });
}

double ZELVAN_CALL zelvan_region_length(const zelvan_region* region) {
  return region != nullptr ? LengthOf(*region) : 0.0;
}

int32_t ZELVAN_CALL zelvan_region_centroid(const zelvan_region* region, double* xy) {
  if (IsEmpty(region) || xy == nullptr) return 0;
  const WorldPoint p = CentroidOf(*region);
  xy[0] = p.x;
  xy[1] = p.y;
  return 1;
}

zelvan_status ZELVAN_CALL zelvan_region_hull(const zelvan_region* region,
                                             const zelvan_region** result) {
  return Guarded(nullptr, [&] {
    Require(result != nullptr);
    *result = IsEmpty(region) ? nullptr : HullRegion(*region).release();
  });
}

zelvan_status ZELVAN_CALL zelvan_region_least_box(const zelvan_region* region, double* corners) {
  return Guarded(nullptr, [&] {
    Require(corners != nullptr);
    if (IsEmpty(region)) {
      std::fill_n(corners, 8, kNoNumber);
      return;
    }
    for (const WorldPoint p : LeastBoxOf(*region)) {
      *corners++ = p.x;
      *corners++ = p.y;
    }
  });
}

zelvan_status ZELVAN_CALL zelvan_region_polygon(const zelvan_region* region, uint32_t polygon,
                                                const zelvan_region** result) {
  return Guarded(nullptr, [&] {
    Require(result != nullptr && region != nullptr && polygon < region->flat.Polygons());
    *result = PolygonOf(*region, polygon).release();
  });
}

zelvan_status ZELVAN_CALL zelvan_region_transform(const zelvan_region* region, const double* matrix,
                                                  const zelvan_grid* grid,
                                                  const zelvan_region** result) {
  return Guarded(nullptr, [&] {
    Require(result != nullptr && matrix != nullptr);
    Transform transform{};
    std::copy_n(matrix, transform.size(), transform.begin());
    const auto wanted = grid != nullptr ? std::optional(CheckedGrid(*grid)) : std::nullopt;
    *result = IsEmpty(region) ? Share(region).release()
                              : Transformed(*region, transform, wanted).release();
  });
}

zelvan_status ZELVAN_CALL zelvan_rings_triangulate(const double* xy, const uint32_t* ring_offsets,
                                                   uint32_t ring_count, int32_t rule,
                                                   const zelvan_grid* grid, uint32_t options,
                                                   const zelvan_mesh** mesh, zelvan_fault* fault) {
  return Guarded(fault, [&] {
    Require(mesh != nullptr &&
            (options & ~std::uint32_t{ZELVAN_DELAUNAY | ZELVAN_NEIGHBOURS}) == 0);
    const RingInput rings = CheckedRings(xy, ring_offsets, ring_count);
    const RegionHandle region = FromRings(rings, rule, RingTurns::kAsGiven, grid);
    *mesh =
        MeshOf(region.get(), (options & ZELVAN_DELAUNAY) != 0, (options & ZELVAN_NEIGHBOURS) != 0)
            .release();
  });
}

void ZELVAN_CALL zelvan_mesh_release(const zelvan_mesh* mesh) {
  MeshReleaser()(mesh);
}
