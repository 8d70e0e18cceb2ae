#include "input.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string_view>
#include <utility>

#include "gatherer.h"
#include "more_formats.h"
#include "options.h"
#include "output.h"

namespace tool {
namespace {

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
      Attributes attributes;
      if (!piece.name.empty()) attributes.properties.push_back({"name", Quoted(piece.name)});
      gatherer.Add(std::move(attributes), std::move(piece.parts));
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

Input ReadInput(const std::string& file, std::size_t size, const Advance& advance) {
  constexpr std::array json{".geojson", ".json"};
  const std::string extension = file == kStandard ? "" : Extension(file);
  const bool is_json = std::find(json.begin(), json.end(), extension) != json.end();
  Input input;
  input.file = file == kStandard ? "standard input" : file;
  Gatherer gatherer(input);
  const auto read_more = [&] {
    ReadMore(file, size, advance, gatherer);
    return input;
  };
  if (ReadsMore(extension)) return read_more();
  if (!is_json && extension != ".wkt" && !extension.empty()) {
    throw UnreadableFile("has an unknown extension: .geojson, .json" + MoreRead() +
                         " and .wkt are read");
  }
  std::string text = ReadText(file);
  if (TakeMark(text)) gatherer.PassOver("a byte order mark");
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string::npos) throw UnreadableFile("is empty");
  if (!is_json && (!extension.empty() || text[first] != '{')) {
    ReadWkt(text, advance, gatherer);
    return input;
  }
  if (ReadGeoJson(text, advance, gatherer)) return input;
  if (file == kStandard || !ReadsMore(".topojson")) {
    throw UnreadableFile("is TopoJSON: convert it to GeoJSON first");
  }
  return read_more();
}

}  // namespace tool
