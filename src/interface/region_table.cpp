// Tables of regions (region_table.h).
#include "interface/region_table.h"

#include <limits>

#include "interface/region_arguments.h"
#include "interface/region_operations.h"
#include "interface/region_rings.h"

namespace zelvan {

namespace {

/// The regions of a table, one after the other.
class TableReader {
 public:
  TableReader(const RegionTable& table, const RegionGrid& grid) : table_(table), grid_(grid) {}

  RegionHandle Region(std::size_t i) {
    const std::uint32_t first = table_.regions[i];
    const std::uint32_t end = table_.regions[i + 1];
    if (first == end) return nullptr;
    if (end - first == 1) return Polygon(first);
    std::vector<RegionHandle> owned;
    std::vector<const zelvan_region*> parts;
    for (std::uint32_t p = first; p < end; ++p) {
      owned.push_back(Polygon(p));
      parts.push_back(owned.back().get());
    }
    return UniteRegions(parts);
  }

 private:
  // The sweep takes offsets that begin with 0.
  RegionHandle Polygon(std::uint32_t p) {
    const std::uint32_t first = table_.polygons[p];
    const std::uint32_t end = table_.polygons[p + 1];
    const std::uint32_t base = table_.rings[first];
    offsets_.clear();
    for (std::uint32_t r = first; r <= end; ++r) offsets_.push_back(table_.rings[r] - base);
    const RingInput rings{table_.xy + 2 * std::size_t{base}, offsets_};
    return RegionOfRings(rings, FillRule::EvenOdd, RingTurns::kAsGiven, grid_);
  }

  const RegionTable& table_;
  const RegionGrid& grid_;
  std::vector<std::uint32_t> offsets_;
};

// The region in which a point stands that no grid holds.
std::uint32_t RegionOfRing(const RegionTable& table, std::uint32_t ring) {
  std::uint32_t region = 0;
  while (table.polygons[table.regions[region + 1]] <= ring) ++region;
  return region;
}

RegionGrid GridOver(const RegionTable& table, std::uint32_t& at) {
  const RingInput all{table.xy, table.rings};
  try {
    return GridCovering({&all, 1});
  } catch (const RegionRefusal& refusal) {
    at = RegionOfRing(table, refusal.fault.ring);
    throw;
  }
}

}  // namespace

std::vector<RegionHandle> RegionsOf(const RegionTable& table, const zelvan_grid* grid,
                                    std::uint32_t& at) {
  const RegionGrid on = grid != nullptr ? CheckedGrid(*grid) : GridOver(table, at);
  TableReader reader(table, on);
  std::vector<RegionHandle> regions;
  regions.reserve(table.regions.size() - 1);
  for (at = 0; at + std::size_t{1} < table.regions.size(); ++at) {
    regions.push_back(reader.Region(at));
  }
  return regions;
}

void GiveAway(std::vector<RegionHandle>&& regions, const zelvan_region** to) noexcept {
  for (RegionHandle& region : regions) *to++ = region.release();
}

zelvan_counts CountsOf(std::span<const zelvan_region* const> regions) {
  zelvan_counts all{};
  const auto add = [](std::uint32_t& sum, std::uint32_t more) {
    Require(more <= std::numeric_limits<std::uint32_t>::max() - sum, ZELVAN_TOO_LARGE);
    sum += more;
  };
  for (const zelvan_region* region : regions) {
    const zelvan_counts one = CountsOf(region);
    add(all.polygons, one.polygons);
    add(all.rings, one.rings);
    add(all.vertices, one.vertices);
    add(all.triangles, one.triangles);
  }
  return all;
}

void WriteTable(std::span<const zelvan_region* const> regions, TableRoom room) noexcept {
  std::uint32_t points = 0;
  std::uint32_t rings = 0;
  std::uint32_t polygons = 0;
  *room.rings++ = *room.polygons++ = *room.regions++ = 0;
  for (const zelvan_region* region : regions) {
    if (!IsEmpty(region)) {
      const FlatRegion& flat = region->flat;
      for (const GridPoint point : flat.points) {
        const WorldPoint p = region->grid.PlaceOf(point);
        *room.xy++ = p.x;
        *room.xy++ = p.y;
      }
      for (std::size_t i = 1; i <= flat.Rings(); ++i) *room.rings++ = points + flat.ringOffsets[i];
      for (std::size_t i = 1; i <= flat.Polygons(); ++i) {
        *room.polygons++ = rings + flat.polygonOffsets[i];
      }
      points += static_cast<std::uint32_t>(flat.points.size());
      rings += static_cast<std::uint32_t>(flat.Rings());
      polygons += static_cast<std::uint32_t>(flat.Polygons());
    }
    *room.regions++ = polygons;
  }
}

}  // namespace zelvan
