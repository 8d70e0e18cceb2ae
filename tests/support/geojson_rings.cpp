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

// An array of numbers is a point; one of points a ring, of rings a polygon.
class Coordinates {
 public:
  explicit Coordinates(std::string_view text) : at_(text.data()), end_(at_ + text.size()) {
    Array();
  }
  std::vector<RingPolygon> polygons;

 private:
  // @return the depth below: 0 for a point
  int Array() {
    ++at_;  // [
    if (*at_ != '[') {
      Point();
      return 0;
    }
    int below = 0;
    while (*at_ != ']') {
      if (*at_ == '\0') throw std::runtime_error("unfinished coordinates");
      if (*at_ == ',') {
        ++at_;
      } else {
        below = Array();
      }
    }
    ++at_;  // ]
    if (below == 0) polygon_.push_back(std::exchange(ring_, {}));
    if (below == 1) polygons.push_back(std::exchange(polygon_, {}));
    if (below == 0) polygon_.back().resize(polygon_.back().size() - 3);  // repeats the first
    return below + 1;
  }

  void Point() {
    for (int axis = 0; axis < 2; ++axis) {
      // Rounded exactly, whatever the platform's own functions do.
      double coordinate = 0;
#ifdef __EMSCRIPTEN__  // whose from_chars reads no doubles, and whose strtod is exact
      char* behind = nullptr;
      coordinate = std::strtod(at_, &behind);
      at_ = behind + 1;
#else
      at_ = std::from_chars(at_, end_, coordinate).ptr + 1;  // behind , or ]
#endif
      ring_.push_back(coordinate);
    }
    ring_.push_back(0.0);
  }

  const char* at_;
  [[maybe_unused]] const char* end_;
  Ring ring_;
  RingPolygon polygon_;
};

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
    country.polygons = Coordinates(std::string_view(line).substr(at + coordinates.size())).polygons;
    countries.push_back(std::move(country));
  }
  return countries;
}

}  // namespace support
