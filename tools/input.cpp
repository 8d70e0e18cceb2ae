#include "input.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

#include "options.h"
#include "output.h"
#include "parts.h"

namespace tool {
namespace {

using Json = nlohmann::json;

constexpr const char* kBlanks = " \t\r\n";

std::string ReadText(const std::string& file) {
  std::error_code ignored;
  if (file != kStandard && std::filesystem::is_directory(file, ignored)) {
    throw UnreadableFile("is a directory");
  }
  std::ifstream opened;
  if (file != kStandard) opened.open(file, std::ios::binary);
  std::istream& stream = file == kStandard ? std::cin : opened;
  if (!stream) throw UnreadableFile("cannot be opened");
  std::string text;
  constexpr std::size_t block = std::size_t{1} << 18;
  while (stream) {
    const std::size_t size = text.size();
    text.resize(size + block);
    stream.read(&text[size], block);
    text.resize(size + static_cast<std::size_t>(stream.gcount()));
  }
  if (stream.bad()) throw UnreadableFile("cannot be read");
  return text;
}

// Takes the mark of UTF-8 away. @return whether there was one
bool TakeMark(std::string& text) {
  for (const char* mark : {"\xff\xfe", "\xfe\xff"}) {
    if (text.rfind(mark, 0) == 0) throw UnreadableFile("is UTF-16, and UTF-8 alone is read");
  }
  if (text.rfind("\xef\xbb\xbf", 0) != 0) return false;
  text.erase(0, 3);
  return true;
}

// The name of a feature: a property called so in any of the usual spellings,
// else its id.
std::string NameOf(const Json& feature) {
  if (!feature.is_object()) return "";
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
  explicit Gatherer(Input& input) : input_(input) {}

  void Add(std::string name, Parts parts) {
    Feature& feature = Begin(std::move(name));
    feature.polygons = std::move(parts.polygons);
    for (Parts::Refused& part : parts.refused) {
      Refuse(part.is_polygon ? PlaceOf(feature, part.polygon) : feature.Label(),
             std::move(part.reason), part.is_polygon ? Lost("polygon", std::nan("")) : kNothing,
             feature.number);
    }
  }

  // A feature of which nothing can be read.
  void AddBroken(std::string name, const std::string& where, std::string reason) {
    const Feature& feature = Begin(std::move(name));
    Refuse(feature.Label() + where, std::move(reason), "what it holds", feature.number);
  }

  // `feature` is 0 for what is part of none.
  void Refuse(std::string place, std::string reason, std::string lost, std::size_t feature = 0) {
    input_.refusals.push_back(
        {input_.file, std::move(place), std::move(reason), std::move(lost), feature});
  }

  void PassOver(const std::string& what) {
    if (!what.empty()) input_.passed_over.insert(what);
  }

 private:
  Feature& Begin(std::string name) {
    input_.features.push_back({input_.file, input_.features.size() + 1, std::move(name), {}});
    return input_.features.back();
  }

  Input& input_;
};

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
  std::string name = is_feature ? NameOf(object) : "";
  try {
    gatherer.Add(name, PartsOf(object, is_feature));
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

void ReadGeoJson(const std::string& text, const Advance& advance, Gatherer& gatherer) {
  const Json root = Parsed(text, advance);
  const auto type = root.is_object() ? root.find("type") : root.end();
  if (!root.is_object() || type == root.end() || !type->is_string()) {
    throw UnreadableFile("is no GeoJSON: it has no type");
  }
  if (*type == "Topology") throw UnreadableFile("is TopoJSON: convert it to GeoJSON first");
  if (*type != "FeatureCollection") return AddJson(root, *type == "Feature", gatherer);
  const auto features = root.find("features");
  if (features == root.end() || !features->is_array()) {
    throw UnreadableFile("is no GeoJSON: its features are missing");
  }
  for (const Json& feature : *features) AddJson(feature, true, gatherer);
}

std::string LinesOf(const WktPiece& piece) {
  const std::string first = std::to_string(piece.first_line);
  if (piece.last_line == piece.first_line) return "line " + first;
  return "lines " + first + " to " + std::to_string(piece.last_line);
}

void ReadWkt(const std::string& text, const Advance& advance, Gatherer& gatherer) {
  WktText pieces(text);
  WktPiece piece;
  for (std::size_t told = 0; pieces.Next(piece); told = pieces.Position()) {
    advance(pieces.Position() - told);
    gatherer.PassOver(piece.srid);
    if (piece.is_heading) {
      gatherer.PassOver("the heading on " + LinesOf(piece));
    } else if (piece.fault.empty()) {
      gatherer.Add(std::move(piece.name), std::move(piece.parts));
    } else if (piece.begins_geometry) {
      gatherer.AddBroken(std::move(piece.name), ", " + LinesOf(piece), piece.fault);
    } else {
      gatherer.Refuse(LinesOf(piece), piece.fault, kNothing);
    }
  }
}

}  // namespace

std::string Lost(const std::string& kind, double area) {
  return "a " + kind + " of " + (std::isnan(area) ? "unknown area" : "area " + Rounded(area));
}

std::string PlaceOf(const Feature& feature, std::size_t polygon) {
  std::string place = feature.Label();
  if (feature.polygons.size() > 1) place += ", polygon " + std::to_string(polygon + 1);
  return place;
}

Input ReadInput(const std::string& file, const Advance& advance) {
  constexpr std::array json{".geojson", ".json"};
  const std::string extension = file == kStandard ? "" : Extension(file);
  const bool is_json = std::find(json.begin(), json.end(), extension) != json.end();
  if (!is_json && extension != ".wkt" && !extension.empty()) {
    throw UnreadableFile("has an unknown extension: .geojson, .json and .wkt are read");
  }
  std::string text = ReadText(file);
  Input input;
  input.file = file == kStandard ? "standard input" : file;
  Gatherer gatherer(input);
  if (TakeMark(text)) gatherer.PassOver("a byte order mark");
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string::npos) throw UnreadableFile("is empty");
  if (is_json || (extension.empty() && text[first] == '{')) {
    ReadGeoJson(text, advance, gatherer);
  } else {
    ReadWkt(text, advance, gatherer);
  }
  return input;
}

}  // namespace tool
