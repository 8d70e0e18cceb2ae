// Files in: GeoJSON and WKT to features with polygons. What cannot be used is
// named and left out; a file that cannot be read at all is an exception.
#pragma once

#include <cstddef>
#include <functional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "geometry.h"

namespace tool {

struct Refusal {
  std::string file;
  std::string place;  // "feature 12 (Sudan), polygon 3"
  std::string reason;
  std::string lost;         // by Lost
  std::size_t feature = 0;  // that it is part of, from 1; 0 for none
};

// What a message says was lost, "a hole of area 3": its kind and its area, which may not be
// a number.
std::string Lost(const std::string& kind, double area);
inline constexpr const char* kNothing = "nothing";

struct Input {
  std::string file;
  std::vector<Feature> features;  // all of them, those without polygons, too
  std::vector<Refusal> refusals;
  std::set<std::string> passed_over;  // what means nothing here, "SRID=4326"
  std::string crs;                    // coordinate reference system; empty where none is named
};

struct UnreadableFile : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Is told how many bytes of a file have been read since it was told last.
using Advance = std::function<void(std::size_t bytes)>;

// Reads one file, .geojson or .json as GeoJSON, .wkt as any number of WKT geometries; what has
// no extension, or is standard input, as either; what more_formats.h reads besides. The size in
// bytes is 0 where it is not known. Throws UnreadableFile.
Input ReadInput(const std::string& file, std::size_t size, const Advance& advance);

// The place of a polygon, counted from 0, for messages.
std::string PlaceOf(const Feature& feature, std::size_t polygon);

}  // namespace tool
