// Regions and well-known binary: the Open Geospatial Consortium's records of geometries, 1999,
// also in their extended form with heights and SRIDs.
//
// What holds here: a count in a record is believed only as far as bytes follow, collections nest
// kDeepest deep at most, so reading ends in time and memory that the bytes bound.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "interface/region_table.h"

namespace zelvan {

/// What records hold.
class WkbPolygons {
 public:
  /// Reads one more record; none of its bytes make an empty region. Throws RegionRefusal for what
  /// is no record of geometries that are known, std::bad_alloc.
  void Add(std::span<const std::uint8_t> record);

  [[nodiscard]] RegionTable Table() const noexcept {
    return {xy_.data(), rings_, polygons_, regions_};
  }
  /// Geometries that bound no region, passed over.
  [[nodiscard]] std::uint32_t LeftOut() const noexcept { return leftOut_; }

 private:
  class Reader;

  std::vector<double> xy_;
  std::vector<std::uint32_t> rings_{0};
  std::vector<std::uint32_t> polygons_{0};
  std::vector<std::uint32_t> regions_{0};
  std::uint32_t leftOut_ = 0;
};

/// The bytes of a region's record.
[[nodiscard]] std::uint64_t WkbSize(const zelvan_region* region) noexcept;

/// Writes these bytes. @return where they end
std::uint8_t* WriteWkb(const zelvan_region* region, std::uint8_t* to) noexcept;

}  // namespace zelvan
