// The rings of a GeoJSON file's polygons, read without a library: enough for the
// map in data/, whose features stand one on a line.
#pragma once

#include <string>
#include <vector>

namespace support {

using Ring = std::vector<double>;       // (x, y, 0) triples, the closing point left out
using RingPolygon = std::vector<Ring>;  // the outer ring, then the holes

struct Country {
  std::string name;
  std::vector<RingPolygon> polygons;
};

/// Every feature of the file. Throws std::runtime_error when it cannot be read.
[[nodiscard]] std::vector<Country> ReadCountries(const std::string& path);

}  // namespace support
