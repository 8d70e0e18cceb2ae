// GeoJSON (RFC 7946) to features.
#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string_view>

#include "gatherer.h"

namespace tool {
namespace {

using Json = nlohmann::ordered_json;

// Of a feature of GeoJSON.
Attributes AttributesOf(const Json& feature) {
  Attributes attributes;
  if (!feature.is_object()) return attributes;
  const auto text = [](const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
  };
  const auto properties = feature.find("properties");
  if (properties != feature.end() && properties->is_object()) {
    for (const auto& [name, value] : properties->items()) {
      attributes.properties.push_back({name, text(value)});
    }
  }
  const auto id = feature.find("id");
  if (id != feature.end() && id->is_primitive() && !id->is_null()) attributes.id = text(*id);
  return attributes;
}

const Json& Listed(const Json& list, const std::string& what) {
  if (!list.is_array()) throw std::runtime_error(what + " is no list");
  return list;
}

double Coordinate(const Json& value) {
  if (value.is_number()) return value.get<double>();
  throw std::runtime_error(value.is_null() ? "a coordinate is null" : "a coordinate is no number");
}

Point PointOf(const Json& point) {
  if (Listed(point, "it").size() < 2) throw std::runtime_error("a coordinate is missing");
  return {Coordinate(point[0]), Coordinate(point[1])};
}

Ring RingOf(const Json& points, const std::string& name) {
  Ring ring;
  for (const Json& point : Listed(points, name)) {
    try {
      ring.push_back(PointOf(point));
    } catch (const std::runtime_error& error) {
      throw std::runtime_error(name + ", point " + std::to_string(ring.size() + 1) + ": " +
                               error.what());
    }
  }
  return ring;
}

void AddPolygon(const Json& coordinates, Parts& parts) {
  std::vector<Ring> rings;
  try {
    for (const Json& points : Listed(coordinates, "it")) {
      rings.push_back(RingOf(points, "ring " + std::to_string(rings.size() + 1)));
    }
  } catch (const std::runtime_error& error) {
    return parts.RefusePolygon(error.what());
  }
  parts.AddPolygon(std::move(rings));
}

const Json& Member(const Json& object, const std::string& what, const char* key) {
  if (!object.is_object()) throw std::runtime_error(what + " is no object");
  const auto found = object.find(key);
  if (found == object.end()) throw std::runtime_error(what + " has no " + key);
  return *found;
}

void AddGeometry(const Json& geometry, Parts& parts, int depth) {
  const std::string what = "the geometry";
  const Json& named = Member(geometry, what, "type");
  if (!named.is_string()) throw std::runtime_error("the type of " + what + " is no text");
  const auto type = named.get<std::string>();
  const bool collection = type == "GeometryCollection";
  if (depth == kDeepest) throw std::runtime_error(what + " nests too deeply");
  const char* key = collection ? "geometries" : "coordinates";
  const Json& inside = Listed(Member(geometry, what, key), std::string("what it has as ") + key);
  if (inside.empty()) {
    parts.RefuseEmpty(type);
  } else if (collection) {
    for (const Json& one : inside) AddGeometry(one, parts, depth + 1);
  } else if (type == "Polygon") {
    AddPolygon(inside, parts);
  } else if (type == "MultiPolygon") {
    for (const Json& polygon : inside) AddPolygon(polygon, parts);
  } else {
    parts.RefuseType(type);
  }
}

Parts PartsOf(const Json& object, bool is_feature) {
  Parts parts;
  if (!is_feature) {
    AddGeometry(object, parts, 0);
    return parts;
  }
  if (!object.is_object()) throw std::runtime_error("it is no object");
  const auto geometry = object.find("geometry");
  if (geometry == object.end() || geometry->is_null()) {
    parts.Refuse("no geometry");
  } else {
    AddGeometry(*geometry, parts, 0);
  }
  return parts;
}

void AddJson(const Json& object, bool is_feature, Gatherer& gatherer) {
  Attributes attributes = is_feature ? AttributesOf(object) : Attributes{};
  std::string name = NameOf(attributes);
  try {
    Parts parts = PartsOf(object, is_feature);
    gatherer.Add(std::move(attributes), std::move(parts));
  } catch (const std::runtime_error& error) {
    gatherer.AddBroken(std::move(name), "", error.what());
  }
}

// Tells now and then how far the parser has come.
class Watched {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  Watched(const char* at, const Advance& advance) : at_(at), told_(at), advance_(&advance) {}

  reference operator*() const { return *at_; }
  Watched& operator++() {
    if (++at_ - told_ == kPeriod) {
      (*advance_)(kPeriod);
      told_ = at_;
    }
    return *this;
  }
  friend bool operator!=(const Watched& a, const Watched& b) { return a.at_ != b.at_; }

 private:
  static constexpr std::ptrdiff_t kPeriod = 1 << 16;

  const char* at_;
  const char* told_;
  const Advance* advance_;
};

// "line 3, column 14", counted from 1 in bytes.
std::string PlaceIn(std::string_view text, std::size_t position) {
  const std::string_view before = text.substr(0, position);
  const auto lines = std::count(before.begin(), before.end(), '\n');
  const std::size_t line_start = before.rfind('\n') + 1;  // 0 where there is none
  return "line " + std::to_string(lines + 1) + ", column " +
         std::to_string(before.size() - line_start + 1);
}

Json Parsed(const std::string& text, const Advance& advance) {
  try {
    const char* end = text.data() + text.size();
    return Json::parse(Watched(text.data(), advance), Watched(end, advance));
  } catch (const Json::parse_error& error) {
    const std::size_t last = std::min(std::max<std::size_t>(error.byte, 1) - 1, text.size());
    throw UnreadableFile(
        "is no JSON: " + PlaceIn(text, last) +
        (last == text.size() ? ": it ends too early" : ": this is not what comes next in JSON"));
  } catch (const Json::out_of_range&) {
    throw UnreadableFile("holds a number beyond all that a double can be");
  }
}

// What the member crs names, which GeoJSON had before 2016, and files have still.
std::string CrsOf(const Json& root) {
  const Json::json_pointer place("/crs/properties/name");
  return root.contains(place) && root[place].is_string() ? root[place].get<std::string>() : "";
}

}  // namespace

bool ReadGeoJson(const std::string& text, const Advance& advance, Gatherer& gatherer) {
  const Json root = Parsed(text, advance);
  const auto type = root.is_object() ? root.find("type") : root.end();
  if (!root.is_object() || type == root.end() || !type->is_string()) {
    throw UnreadableFile("is no GeoJSON: it has no type");
  }
  if (*type == "Topology") return false;
  gatherer.SetCrs(CrsOf(root));
  if (*type != "FeatureCollection") {
    AddJson(root, *type == "Feature", gatherer);
    return true;
  }
  const auto features = root.find("features");
  if (features == root.end() || !features->is_array()) {
    throw UnreadableFile("is no GeoJSON: its features are missing");
  }
  for (const Json& feature : *features) AddJson(feature, true, gatherer);
  return true;
}

}  // namespace tool
