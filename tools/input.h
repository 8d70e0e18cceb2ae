// Files in: GeoJSON and WKT to features with polygons. What cannot be used is
// named and left out; a file that cannot be read at all is an exception.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

#include "geometry.h"
#include "options.h"

namespace tool {

struct Refusal {
  std::string file;
  std::string place;  // "feature 12 (Sudan), polygon 3"
  std::string reason;
  std::string lost;  // by Lost
};

// What a message says was lost, "a hole of area 3": its kind and, where it is known,
// its area.
std::string Lost(const std::string& kind, const Polygon& polygon);
inline constexpr const char* kNothing = "nothing";

struct Input {
  std::string file;
  std::vector<Feature> features;
  std::vector<Refusal> refusals;
  std::vector<std::string> chosen;  // names out of options.only that are there
};

struct UnreadableFile : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Reads one file, .geojson or .json as GeoJSON, .wkt as one or many WKT geometries, or
// standard input as either; with options.only keeps the features of these names. Throws
// UnreadableFile.
Input ReadInput(const std::string& file, const Options& options);

// The place of a polygon, counted from 0, for messages.
std::string PlaceOf(const Feature& feature, std::size_t polygon);

}  // namespace tool
