#include "input.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

#include "parts.h"

namespace tool {
namespace {

using Json = nlohmann::json;

// Readers of nested text recurse; real data nests five or six deep.
constexpr int kDeepest = 100;

constexpr const char* kBlanks = " \t\r\n";

std::string ReadText(const std::string& file) {
  std::ifstream opened;
  if (file != kStandard) opened.open(file, std::ios::binary);
  std::istream& stream = file == kStandard ? std::cin : opened;
  if (!stream) throw UnreadableFile("cannot be opened");
  std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  if (stream.bad()) throw UnreadableFile("cannot be read");
  if (text.find_first_not_of(kBlanks) == std::string::npos) throw UnreadableFile("is empty");
  return text;
}

bool NestsTooDeep(std::string_view text) {
  int depth = 0;
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (quoted && c == '\\') {
      ++i;
    } else if (c == '"') {
      quoted = !quoted;
    } else if (!quoted && (c == '(' || c == '[' || c == '{')) {
      if (++depth > kDeepest) return true;
    } else if (!quoted && (c == ')' || c == ']' || c == '}')) {
      --depth;
    }
  }
  return false;
}

// The name of a feature: a property called so in any of the usual spellings,
// else its id.
std::string NameOf(const Json& feature) {
  const auto text = [](const Json& value) {
    return value.is_string() ? value.get<std::string>() : value.dump();
  };
  if (const auto properties = feature.find("properties");
      properties != feature.end() && properties->is_object()) {
    for (const char* key : {"name", "NAME", "Name", "title", "id"}) {
      const auto found = properties->find(key);
      if (found != properties->end() && found->is_primitive() && !found->is_null()) {
        return text(*found);
      }
    }
  }
  const auto id = feature.find("id");
  return id != feature.end() && id->is_primitive() && !id->is_null() ? text(*id) : "";
}

// Gathers the features of one file, one geometry after the other.
class Gatherer {
 public:
  Gatherer(Input& input, const std::vector<std::string>& only) : input_(input), only_(only) {}

  template <typename Read>
  void Add(std::string name, Read read) {
    Feature feature{input_.file, ++number_, std::move(name), {}};
    if (!only_.empty() && std::find(only_.begin(), only_.end(), feature.name) == only_.end()) {
      return;
    }
    if (!only_.empty()) input_.chosen.push_back(feature.name);
    try {
      Parts parts = read();
      for (std::string& reason : parts.refused) Refuse(feature, std::move(reason), kNothing);
      feature.polygons = std::move(parts.polygons);
      if (!feature.polygons.empty()) input_.features.push_back(std::move(feature));
    } catch (const std::runtime_error& error) {
      Refuse(feature, error.what(), "what it holds");
    }
  }

 private:
  void Refuse(const Feature& feature, std::string reason, const char* lost) {
    input_.refusals.push_back({input_.file, feature.Label(), std::move(reason), lost});
  }

  Input& input_;
  const std::vector<std::string>& only_;
  std::size_t number_ = 0;
};

Ring RingOf(const Json& points) {
  Ring ring;
  for (const Json& point : points) {
    ring.push_back({point.at(0).get<double>(), point.at(1).get<double>()});
  }
  return ring;
}

void AddPolygon(const Json& coordinates, Parts& parts) {
  std::vector<Ring> rings;
  for (const Json& points : coordinates) rings.push_back(RingOf(points));
  parts.AddPolygon(std::move(rings));
}

void AddGeometry(const Json& geometry, Parts& parts) {
  const auto type = geometry.at("type").get<std::string>();
  const bool collection = type == "GeometryCollection";
  const Json& inside = geometry.at(collection ? "geometries" : "coordinates");
  if (inside.empty()) {
    parts.RefuseEmpty(type);
  } else if (collection) {
    for (const Json& one : inside) AddGeometry(one, parts);
  } else if (type == "Polygon") {
    AddPolygon(inside, parts);
  } else if (type == "MultiPolygon") {
    for (const Json& polygon : inside) AddPolygon(polygon, parts);
  } else {
    parts.RefuseType(type);
  }
}

Parts ReadGeometry(const Json& geometry) {
  Parts parts;
  try {
    AddGeometry(geometry, parts);
  } catch (const Json::exception& error) {
    throw std::runtime_error(error.what());
  }
  return parts;
}

Parts ReadFeature(const Json& feature) {
  if (!feature.is_object()) throw std::runtime_error("not an object");
  const auto geometry = feature.find("geometry");
  if (geometry == feature.end() || geometry->is_null()) return {{}, {"no geometry"}};
  return ReadGeometry(*geometry);
}

void ReadGeoJson(const std::string& text, Gatherer& gatherer) {
  Json root;
  try {
    root = Json::parse(text);
  } catch (const Json::exception& error) {
    throw UnreadableFile(std::string("is no JSON: ") + error.what());
  }
  const auto type = root.is_object() ? root.find("type") : root.end();
  if (!root.is_object() || type == root.end() || !type->is_string()) {
    throw UnreadableFile("is no GeoJSON: it has no type");
  }
  if (*type == "FeatureCollection") {
    const auto features = root.find("features");
    if (features == root.end() || !features->is_array()) {
      throw UnreadableFile("is no GeoJSON: its features are missing");
    }
    for (const Json& feature : *features) {
      gatherer.Add(feature.is_object() ? NameOf(feature) : "",
                   [&] { return ReadFeature(feature); });
    }
  } else if (*type == "Feature") {
    gatherer.Add(NameOf(root), [&] { return ReadFeature(root); });
  } else {
    gatherer.Add("", [&] { return ReadGeometry(root); });
  }
}

bool IsWholeWkt(const std::string& text, int depth) {
  if (depth > 0) return false;
  std::string upper;
  for (const char c : text) upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return upper.find('(') != std::string::npos || upper.find("EMPTY") != std::string::npos;
}

// A geometry is the lines until its parentheses close. Where they never do,
// every line from there on stands for itself, so that one broken geometry does
// not swallow the others.
std::vector<std::string> SplitWkt(const std::string& text) {
  std::vector<std::string> geometries;
  std::vector<std::string> open;
  std::string joined;
  int depth = 0;
  std::size_t start = 0;
  while (start < text.size()) {
    const std::size_t end = std::min(text.find('\n', start), text.size());
    std::string line = text.substr(start, end - start);
    start = end + 1;
    const std::size_t first = line.find_first_not_of(" \t\r");
    if (first == std::string::npos || line[first] == '#') continue;
    depth += static_cast<int>(std::count(line.begin(), line.end(), '(')) -
             static_cast<int>(std::count(line.begin(), line.end(), ')'));
    joined += line + ' ';
    open.push_back(std::move(line));
    if (IsWholeWkt(joined, depth)) {
      geometries.push_back(std::exchange(joined, {}));
      open.clear();
      depth = 0;
    }
  }
  geometries.insert(geometries.end(), open.begin(), open.end());
  return geometries;
}

void ReadWkt(const std::string& text, Gatherer& gatherer) {
  for (std::string geometry : SplitWkt(text)) {
    if (const auto semicolon = geometry.find(';');
        geometry.rfind("SRID", 0) == 0 && semicolon != std::string::npos) {
      geometry.erase(0, semicolon + 1);
    }
    gatherer.Add("", [&] { return ReadWktGeometry(geometry); });
  }
}

}  // namespace

std::string Lost(const std::string& kind, const Polygon& polygon) {
  std::array<char, 32> area{};
  std::snprintf(area.data(), area.size(), "area %.9g", Area(polygon));
  return "a " + kind + " of " + (IsFinite(polygon) ? area.data() : "unknown area");
}

std::string PlaceOf(const Feature& feature, std::size_t polygon) {
  std::string place = feature.Label();
  if (feature.polygons.size() > 1) place += ", polygon " + std::to_string(polygon + 1);
  return place;
}

Input ReadInput(const std::string& file, const Options& options) {
  const std::string extension = Extension(file);
  const std::string text = ReadText(file);
  if (NestsTooDeep(text)) throw UnreadableFile("nests too deeply");
  const bool json = file == kStandard ? text[text.find_first_not_of(kBlanks)] == '{'
                                      : extension == ".geojson" || extension == ".json";
  Input input;
  input.file = file == kStandard ? "standard input" : file;
  Gatherer gatherer(input, options.only);
  if (json) {
    ReadGeoJson(text, gatherer);
  } else if (extension == ".wkt" || file == kStandard) {
    ReadWkt(text, gatherer);
  } else {
    throw UnreadableFile("has an unknown extension: .geojson, .json and .wkt are read");
  }
  return input;
}

}  // namespace tool
