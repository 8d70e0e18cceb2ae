// The two formats that write polygons as rings of coordinates. An item becomes
// one multipolygon, of its triangles or of its region; rings close with their
// first point, outer ones counter-clockwise and holes clockwise.
#include <nlohmann/json.hpp>
#include <ostream>

#include "output.h"

namespace tool {
namespace {

struct Style {
  const char* open;
  const char* close;
  const char* point_open;
  const char* point_separator;
  const char* point_close;
};

constexpr Style kGeoJson{"[", "]", "[", ",", "]"};
constexpr Style kWkt{"(", ")", "", " ", ""};

void WriteRing(std::ostream& out, const Ring& ring, const Style& style) {
  out << style.open;
  for (std::size_t i = 0; i <= ring.size(); ++i) {
    const Point& p = ring[i % ring.size()];
    out << (i == 0 ? "" : ",") << style.point_open << Shortest(p.x) << style.point_separator
        << Shortest(p.y) << style.point_close;
  }
  out << style.close;
}

void WritePolygons(std::ostream& out, const std::vector<Polygon>& polygons, const Style& style) {
  out << style.open;
  const char* separator = "";
  for (const Polygon& polygon : polygons) {
    out << separator << style.open;
    WriteRing(out, polygon.outer, style);
    for (const Ring& hole : polygon.holes) {
      out << ',';
      WriteRing(out, hole, style);
    }
    out << style.close;
    separator = ",";
  }
  out << style.close;
}

std::vector<Polygon> PolygonsOf(const Item& item, Show show) {
  if (show == Show::kRegion) return item.region.Polygons();
  std::vector<Polygon> triangles;
  for (std::size_t i = 0; i < item.mesh.triangles.size(); ++i) {
    triangles.push_back({Corners(item.mesh, i), {}});
  }
  return triangles;
}

std::string Quoted(const std::string& text) {
  return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace

void WriteGeoJson(std::ostream& out, const std::vector<Item>& items, Show show) {
  out << R"({"type":"FeatureCollection","features":[)";
  const char* separator = "\n";
  for (const Item& item : items) {
    out << separator << R"({"type":"Feature","properties":{"name":)"
        << (item.name.empty() ? "null" : Quoted(item.name));
    if (item.feature != 0) {
      out << R"(,"feature":)" << item.feature << R"(,"polygon":)" << item.polygon;
    }
    out << R"(},"geometry":{"type":"MultiPolygon","coordinates":)";
    WritePolygons(out, PolygonsOf(item, show), kGeoJson);
    out << "}}";
    separator = ",\n";
  }
  out << "\n]}\n";
}

void WriteWkt(std::ostream& out, const std::vector<Item>& items, Show show) {
  for (const Item& item : items) {
    const std::vector<Polygon> polygons = PolygonsOf(item, show);
    out << "MULTIPOLYGON ";
    if (polygons.empty()) {
      out << "EMPTY";
    } else {
      WritePolygons(out, polygons, kWkt);
    }
    out << '\n';
  }
}

}  // namespace tool
