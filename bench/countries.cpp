#include "countries.h"

#include <fstream>
#include <nlohmann/json.hpp>

namespace bench {
namespace {

using Json = nlohmann::json;

Xyz Ring(const Json& points) {
  Xyz contour;
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {  // the last repeats the first
    // The files have four decimals; the unit keeps narrow corners above tolerance.
    Add(contour, 1e4 * points[i][0].get<double>(), 1e4 * points[i][1].get<double>());
  }
  return contour;
}

Polygon PolygonOf(const Json& rings) {
  Polygon polygon{Ring(rings.at(0)), {}};
  for (std::size_t i = 1; i < rings.size(); ++i) polygon.holes.push_back(Ring(rings[i]));
  return polygon;
}

}  // namespace

std::vector<Polygon> ReadCountries(const std::string& path) {
  std::vector<Polygon> polygons;
  const Json world = Json::parse(std::ifstream(path));
  for (const Json& feature : world.at("features")) {
    const Json& geometry = feature.at("geometry");
    const Json& coordinates = geometry.at("coordinates");
    if (geometry.at("type") == "Polygon") {
      polygons.push_back(PolygonOf(coordinates));
    } else {
      for (const Json& rings : coordinates) polygons.push_back(PolygonOf(rings));
    }
  }
  return polygons;
}

}  // namespace bench
