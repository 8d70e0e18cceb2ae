// The rings of the map in data/ (geojson_rings.h).
#include "support/geojson_rings.h"

#include <charconv>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace support {

namespace {

// A number, rounded exactly, whatever the platform's own functions do; `at` moves behind it.
double NumberAt(const char*& at, const char* end) {
  double number = 0;
#ifdef __EMSCRIPTEN__  // whose from_chars reads no doubles, and whose strtod is exact
  static_cast<void>(end);
  char* behind = nullptr;
  number = std::strtod(at, &behind);
  at = behind;
#else
  at = std::from_chars(at, end, number).ptr;
#endif
  return number;
}

// An array of numbers is a point; one of points a ring, of rings a polygon. The brackets that
// close in a row tell what ends.
std::vector<RingPolygon> PolygonsOf(std::string_view text) {
  std::vector<RingPolygon> polygons;
  RingPolygon polygon;
  Ring ring;
  int closed = 0;
  const char* const end = text.data() + text.size();
  for (const char* at = text.data(); *at != '}';) {
    if (at == end) throw std::runtime_error("unfinished coordinates");
    if (*at == ']') {
      if (++closed == 2) {
        ring.resize(ring.size() - 3);  // repeats the first
        polygon.push_back(std::exchange(ring, {}));
      }
      if (closed == 3) polygons.push_back(std::exchange(polygon, {}));
      ++at;
    } else if (*at == '[' || *at == ',') {
      if (*at == '[') closed = 0;
      ++at;
    } else {
      ring.push_back(NumberAt(at, end));
      if (ring.size() % 3 == 2) ring.push_back(0.0);
    }
  }
  return polygons;
}

}  // namespace

std::vector<Country> ReadCountries(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error("cannot read " + path);
  const std::string name = "\"name\":\"";
  const std::string coordinates = "\"coordinates\":";
  std::vector<Country> countries;
  for (std::string line; std::getline(file, line);) {
    const std::size_t at = line.find(coordinates);
    if (at == std::string::npos) continue;
    Country country;
    if (const std::size_t n = line.find(name); n != std::string::npos) {
      const std::size_t begin = n + name.size();
      country.name = line.substr(begin, line.find('"', begin) - begin);
    }
    country.polygons = PolygonsOf(std::string_view(line).substr(at + coordinates.size()));
    countries.push_back(std::move(country));
  }
  return countries;
}

}  // namespace support
