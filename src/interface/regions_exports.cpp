// The exported functions on many regions (zelvan/regions_c.h): arguments are checked here,
// failures become statuses, and no exception leaves.
#include <zelvan/regions_c.h>

#include <algorithm>
#include <limits>

#include "interface/region_arguments.h"
#include "interface/region_operations.h"
#include "interface/region_side.h"
#include "interface/region_table.h"
#include "interface/region_wkb.h"

namespace {

using namespace zelvan;

using Handles = std::span<const zelvan_region* const>;

Handles CheckedHandles(const zelvan_region* const* regions, std::uint32_t count) {
  Require(regions != nullptr || count == 0);
  return {regions, count};
}

// Offsets into a list of that many entries.
template <class Offset>
std::span<const Offset> CheckedOffsets(const Offset* offsets, std::size_t count) {
  Require(offsets != nullptr && count < std::numeric_limits<std::uint32_t>::max());
  const std::span<const Offset> checked(offsets, count + 1);
  Require(checked.front() == 0 && std::is_sorted(checked.begin(), checked.end()));
  return checked;
}

// Work that says which region it is at.
template <class Work>
zelvan_status GuardedAt(std::uint32_t* failed, Work work) noexcept {
  std::uint32_t at = std::numeric_limits<std::uint32_t>::max();
  const zelvan_status status = Guarded(nullptr, [&] { work(at); });
  const bool isNamed = at != std::numeric_limits<std::uint32_t>::max();
  if (status != ZELVAN_OK && isNamed && failed != nullptr) *failed = at;
  return status;
}

}  // namespace

zelvan_status ZELVAN_CALL zelvan_regions_create(const double* xy, const uint32_t* ring_offsets,
                                                const uint32_t* polygon_offsets,
                                                const uint32_t* region_offsets, uint32_t count,
                                                const zelvan_grid* grid,
                                                const zelvan_region** regions, uint32_t* failed) {
  return GuardedAt(failed, [&](std::uint32_t& at) {
    if (count == 0) return;
    Require(regions != nullptr);
    RegionTable table{xy, {}, {}, CheckedOffsets(region_offsets, count)};
    table.polygons = CheckedOffsets(polygon_offsets, table.regions.back());
    table.rings = CheckedOffsets(ring_offsets, table.polygons.back());
    Require(table.rings.back() <= std::numeric_limits<std::int32_t>::max(), ZELVAN_TOO_LARGE);
    Require(xy != nullptr || table.rings.back() == 0);
    GiveAway(RegionsOf(table, grid, at), regions);
  });
}

zelvan_status ZELVAN_CALL zelvan_regions_from_wkb(const uint8_t* bytes, const uint64_t* offsets,
                                                  uint32_t count, const zelvan_grid* grid,
                                                  const zelvan_region** regions, uint32_t* left_out,
                                                  uint32_t* failed) {
  return GuardedAt(failed, [&](std::uint32_t& at) {
    WkbPolygons polygons;
    if (count != 0) {
      Require(regions != nullptr);
      const auto starts = CheckedOffsets(offsets, count);
      Require((bytes != nullptr || starts.back() == 0) &&
              starts.back() <= std::numeric_limits<std::size_t>::max());
      for (std::uint32_t i = 0; i < count; ++i) {
        at = i;
        const auto start = static_cast<std::size_t>(starts[i]);
        polygons.Add({bytes + start, static_cast<std::size_t>(starts[i + 1]) - start});
      }
      GiveAway(RegionsOf(polygons.Table(), grid, at), regions);
    }
    if (left_out != nullptr) *left_out = polygons.LeftOut();
  });
}

zelvan_status ZELVAN_CALL zelvan_regions_to_wkb(const zelvan_region* const* regions, uint32_t count,
                                                uint64_t* offsets, uint8_t* bytes) {
  return Guarded(nullptr, [&] {
    const Handles all = CheckedHandles(regions, count);
    Require(offsets != nullptr);
    if (bytes == nullptr) {
      *offsets = 0;
      for (const zelvan_region* region : all) {
        const std::uint64_t start = *offsets;
        *++offsets = start + WkbSize(region);
      }
      return;
    }
    std::uint64_t size = 0;
    for (const zelvan_region* region : all) size += WkbSize(region);
    Require(offsets[count] == size);
    for (const zelvan_region* region : all) bytes = WriteWkb(region, bytes);
  });
}

void ZELVAN_CALL zelvan_regions_retain(const zelvan_region* const* regions, uint32_t count) {
  if (regions == nullptr) return;
  for (std::uint32_t i = 0; i < count; ++i) static_cast<void>(Share(regions[i]).release());
}

void ZELVAN_CALL zelvan_regions_release(const zelvan_region* const* regions, uint32_t count) {
  if (regions == nullptr) return;
  for (std::uint32_t i = 0; i < count; ++i) Release(regions[i]);
}

zelvan_status ZELVAN_CALL zelvan_regions_combine(int32_t operation, const zelvan_region* const* a,
                                                 uint32_t a_count, const zelvan_region* const* b,
                                                 uint32_t b_count, const zelvan_region** results,
                                                 uint32_t* failed) {
  return GuardedAt(failed, [&](std::uint32_t& at) {
    const Handles first = CheckedHandles(a, a_count);
    const Handles second = CheckedHandles(b, b_count);
    Require(a_count == b_count || a_count == 1 || b_count == 1);
    const overlay::Operation checked = OperationOf(operation);
    const std::uint32_t count = a_count == 1 ? b_count : a_count;
    Require(results != nullptr || count == 0);
    std::vector<RegionHandle> made;
    made.reserve(count);
    for (at = 0; at < count; ++at) {
      made.push_back(Combine(checked, first[a_count == 1 ? 0 : at], second[b_count == 1 ? 0 : at]));
    }
    GiveAway(std::move(made), results);
  });
}

zelvan_status ZELVAN_CALL zelvan_regions_measure(const zelvan_region* const* regions,
                                                 uint32_t count, double* areas, double* boxes,
                                                 uint32_t* lost) {
  return Guarded(nullptr, [&] {
    for (const zelvan_region* region : CheckedHandles(regions, count)) {
      if (areas != nullptr) *areas++ = zelvan_region_area(region);
      if (lost != nullptr) *lost++ = LostOf(region);
      if (boxes == nullptr) continue;
      if (zelvan_region_bounds(region, boxes) == 0) {
        std::fill_n(boxes, 4, std::numeric_limits<double>::quiet_NaN());
      }
      boxes += 4;
    }
  });
}

zelvan_status ZELVAN_CALL zelvan_regions_contains(const zelvan_region* const* regions,
                                                  uint32_t count, const double* xy,
                                                  uint32_t point_count, int8_t* sides) {
  return Guarded(nullptr, [&] {
    const Handles all = CheckedHandles(regions, count);
    Require(point_count == count || point_count == 1);
    Require(count == 0 || (xy != nullptr && sides != nullptr));
    for (const zelvan_region* region : all) {
      *sides = -1;
      if (region != nullptr) FindSides(*region, xy, 1, sides);
      ++sides;
      if (point_count != 1) xy += 2;
    }
  });
}

zelvan_status ZELVAN_CALL zelvan_regions_counts(const zelvan_region* const* regions, uint32_t count,
                                                zelvan_counts* counts) {
  return Guarded(nullptr, [&] {
    Require(counts != nullptr);
    *counts = CountsOf(CheckedHandles(regions, count));
  });
}

zelvan_status ZELVAN_CALL zelvan_regions_read(const zelvan_region* const* regions, uint32_t count,
                                              const zelvan_counts* room, double* xy,
                                              uint32_t* ring_offsets, uint32_t* polygon_offsets,
                                              uint32_t* region_offsets) {
  return Guarded(nullptr, [&] {
    const Handles all = CheckedHandles(regions, count);
    const zelvan_counts counts = CountsOf(all);
    Require(room != nullptr && room->polygons == counts.polygons && room->rings == counts.rings &&
            room->vertices == counts.vertices);
    Require((xy != nullptr || counts.vertices == 0) && ring_offsets != nullptr &&
            polygon_offsets != nullptr && region_offsets != nullptr);
    WriteTable(all, {xy, ring_offsets, polygon_offsets, region_offsets});
  });
}
