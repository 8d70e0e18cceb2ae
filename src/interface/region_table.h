// Many regions from one flat table of polygons, and back.
//
// All throw std::bad_alloc, what the engine raises, and RegionRefusal (region_refusal.h).
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "interface/region.h"
#include "interface/region_grid.h"

namespace zelvan {

/// Polygons of many regions. Offsets begin with 0, ascend, and each list has one more than it has
/// entries; the last one of a list is the number of entries of the list before.
struct RegionTable {
  const double* xy;
  std::span<const std::uint32_t> rings;     ///< in points
  std::span<const std::uint32_t> polygons;  ///< in rings
  std::span<const std::uint32_t> regions;   ///< in polygons
};

/// A region of each entry; the grid that covers all is taken where none is given.
/// @param at  the entry that is being made; whoever catches what is thrown finds it there
[[nodiscard]] std::vector<RegionHandle> RegionsOf(const RegionTable& table, const zelvan_grid* grid,
                                                  std::uint32_t& at);

/// Hands the regions over; nothing is thrown any more.
void GiveAway(std::vector<RegionHandle>&& regions, const zelvan_region** to) noexcept;

/// The sizes of all. Throws RegionRefusal where they take more than 32 bits.
[[nodiscard]] zelvan_counts CountsOf(std::span<const zelvan_region* const> regions);

/// Where the table of regions goes; there must be room.
struct TableRoom {
  double* xy;
  std::uint32_t* rings;
  std::uint32_t* polygons;
  std::uint32_t* regions;
};

void WriteTable(std::span<const zelvan_region* const> regions, TableRoom room) noexcept;

}  // namespace zelvan
