// The polygons of data/countries-50m.geojson, degrees as ten-thousandths of one.
#pragma once

#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "contours.h"

namespace bench {

inline Polygon PolygonOf(const nlohmann::json& rings) {
  Polygon polygon;
  for (const auto& ring : rings) {
    Xyz contour;
    for (const auto& point : ring) {
      Add(contour, 1e4 * point.at(0).get<double>(), 1e4 * point.at(1).get<double>());
    }
    contour.resize(contour.size() - 3);  // the last point repeats the first
    polygon.push_back(contour);
  }
  return polygon;
}

inline std::vector<Polygon> Countries(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error("cannot read " + path);
  const auto document = nlohmann::json::parse(file);
  std::vector<Polygon> polygons;
  for (const auto& feature : document.at("features")) {
    const auto& geometry = feature.at("geometry");
    const auto& coordinates = geometry.at("coordinates");
    if (geometry.at("type") == "Polygon") {
      polygons.push_back(PolygonOf(coordinates));
    } else {
      for (const auto& rings : coordinates) polygons.push_back(PolygonOf(rings));
    }
  }
  return polygons;
}

}  // namespace bench
