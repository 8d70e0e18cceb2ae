// The two formats that write polygons as rings of coordinates. An item becomes
// one multipolygon, of its triangles or of its region; rings close with their
// first point, outer ones counter-clockwise and holes clockwise.
#include <ostream>

#include "more_formats.h"
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

// The name of a system as GeoJSON had it before 2016; none for the one that it always has now.
std::string GeoJsonCrs(const std::string& crs) {
  if (crs.empty() || crs.rfind("urn:", 0) == 0) return crs;
  const std::string name = CrsName(crs);
  const std::size_t colon = name.find(':');
  if (name == "EPSG:4326" || colon == std::string::npos) return "";
  return "urn:ogc:def:crs:" + name.substr(0, colon) + "::" + name.substr(colon + 1);
}

// The properties of the item's features; of a result that has none its name.
void WriteProperties(std::ostream& out, const Item& item) {
  if (item.attributes.properties.empty()) {
    out << R"({"name":)" << (item.name.empty() ? "null" : Quoted(item.name)) << '}';
    return;
  }
  const char* separator = "{";
  for (const Property& property : item.attributes.properties) {
    out << separator << Quoted(property.name) << ':' << property.value;
    separator = ",";
  }
  out << '}';
}

}  // namespace

void WriteGeoJson(std::ostream& out, const std::vector<Item>& items, Show show,
                  const std::string& crs) {
  out << R"({"type":"FeatureCollection",)";
  if (const std::string name = GeoJsonCrs(crs); !name.empty()) {
    out << R"("crs":{"type":"name","properties":{"name":)" << Quoted(name) << "}},";
  }
  out << R"("features":[)";
  const char* separator = "\n";
  for (const Item& item : items) {
    out << separator << R"({"type":"Feature",)";
    if (!item.attributes.id.empty()) out << R"("id":)" << item.attributes.id << ',';
    if (item.feature != 0) {
      out << R"("feature":)" << item.feature << R"(,"polygon":)" << item.polygon << ',';
    }
    out << R"("properties":)";
    WriteProperties(out, item);
    out << R"(,"geometry":{"type":"MultiPolygon","coordinates":)";
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
