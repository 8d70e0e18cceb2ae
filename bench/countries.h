// The polygons of a GeoJSON file of countries.
#pragma once

#include <string>
#include <vector>

#include "job.h"

namespace bench {

/// All polygons of Polygons and MultiPolygons, in units of 1e-4 degrees.
std::vector<Polygon> ReadCountries(const std::string& path);

}  // namespace bench
