// Well-known text to polygons (parts.h).
#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "parts.h"

namespace tool {
namespace {

Ring Opened(Ring ring, std::size_t number) {
  if (ring.empty()) return ring;
  const bool numbers = !std::isnan(ring.front().x) && !std::isnan(ring.front().y);
  const std::string name = "ring " + std::to_string(number + 1);
  if (ring.size() < 3) throw std::runtime_error(name + " has fewer than three points");
  if (numbers && ring.front() != ring.back()) throw std::runtime_error(name + " is not closed");
  ring.pop_back();
  return ring;
}

// How well-known text writes a type, and how messages name it.
const std::map<std::string, std::string, std::less<>> kTypes{
    {"POINT", "Point"},
    {"LINESTRING", "LineString"},
    {"LINEARRING", "LinearRing"},
    {"POLYGON", "Polygon"},
    {"MULTIPOINT", "MultiPoint"},
    {"MULTILINESTRING", "MultiLineString"},
    {"MULTIPOLYGON", "MultiPolygon"},
    {"GEOMETRYCOLLECTION", "GeometryCollection"},
};

class WktReader {
 public:
  explicit WktReader(std::string_view text) : rest_(text) {}

  // One geometry. Throws std::runtime_error.
  Parts Read() {
    Parts parts;
    Geometry(parts, 0);
    return parts;
  }

  // Does a geometry begin here: a type, its dimensions, a parenthesis or EMPTY or nothing more?
  bool Begins() {
    if (kTypes.find(Word()) == kTypes.end()) return false;
    const std::string word = DimensionsAndWord();
    return word == "EMPTY" || (word.empty() && (Next() == '(' || Next() == '\0'));
  }

  std::size_t Left() const { return rest_.size(); }
  bool WasTooDeep() const { return too_deep_; }

 private:
  char Next() {
    while (!rest_.empty()) {
      const char c = rest_.front();
      if (c == '#') {
        rest_.remove_prefix(std::min(rest_.find('\n'), rest_.size()));
      } else if (std::isspace(static_cast<unsigned char>(c)) != 0) {
        rest_.remove_prefix(1);
      } else {
        return c;
      }
    }
    return '\0';
  }

  bool Take(char c) {
    if (Next() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }

  void Expect(char c) {
    if (!Take(c)) throw std::runtime_error(std::string("a ") + c + " is missing");
  }

  std::string Word() {
    std::string word;
    for (Next(); !rest_.empty(); rest_.remove_prefix(1)) {
      const auto c = static_cast<unsigned char>(rest_.front());
      if (std::isalpha(c) == 0) break;
      word += static_cast<char>(std::toupper(c));
    }
    return word;
  }

  // The word behind a type, but for the dimensions, which do not matter.
  std::string DimensionsAndWord() {
    std::string word = Word();
    return word == "Z" || word == "M" || word == "ZM" ? Word() : word;
  }

  bool IsEmpty() {
    const std::string word = DimensionsAndWord();
    if (!word.empty() && word != "EMPTY") throw std::runtime_error("what is " + word + "?");
    return !word.empty();
  }

  template <typename ReadOne>
  void List(ReadOne read_one) {
    Expect('(');
    do {
      read_one();
    } while (Take(','));
    Expect(')');
  }

  double Number() {
    Next();
    if (!rest_.empty() && rest_.front() == '+') rest_.remove_prefix(1);
    double value = 0;
    const auto result = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
      value = std::strtod(std::string(rest_.data(), result.ptr).c_str(), nullptr);
    } else if (result.ec != std::errc()) {
      throw std::runtime_error("a number is missing");
    }
    rest_.remove_prefix(static_cast<std::size_t>(result.ptr - rest_.data()));
    return value;
  }

  Point ReadPoint() {
    Point point;
    point.x = Number();
    point.y = Number();
    for (int more = 0; more < 2 && Next() != ',' && Next() != ')'; ++more) Number();
    return point;
  }

  Ring ReadRing() {
    Ring ring;
    if (!IsEmpty()) List([&] { ring.push_back(ReadPoint()); });
    return ring;
  }

  void PolygonText(Parts& parts) {
    std::vector<Ring> rings;
    if (!IsEmpty()) List([&] { rings.push_back(ReadRing()); });
    parts.AddPolygon(std::move(rings));
  }

  int Deeper(int depth) {
    too_deep_ = depth == kDeepest;
    if (too_deep_) throw std::runtime_error("it nests too deeply");
    return depth + 1;
  }

  // Points, or lists of them, that are not wanted.
  void SkipPoints(int depth) {
    List([&] {
      if (Next() == '(') {
        SkipPoints(Deeper(depth));
      } else if (std::isalpha(static_cast<unsigned char>(Next())) == 0 || !IsEmpty()) {
        ReadPoint();
      }
    });
  }

  void Geometry(Parts& parts, int depth) {
    const auto type = kTypes.find(Word());
    if (type == kTypes.end()) throw std::runtime_error("no geometry that is known");
    if (type->second == "Polygon") {
      PolygonText(parts);
    } else if (IsEmpty()) {
      parts.RefuseEmpty(type->second);
    } else if (type->second == "MultiPolygon") {
      List([&] { PolygonText(parts); });
    } else if (type->second == "GeometryCollection") {
      List([&] { Geometry(parts, Deeper(depth)); });
    } else {
      SkipPoints(depth);
      parts.RefuseType(type->second);
    }
  }

  std::string_view rest_;
  bool too_deep_ = false;
};

std::string_view Trimmed(std::string_view text) {
  const auto blank = [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

bool IsSrid(std::string_view field) {
  constexpr std::string_view key = "SRID=";
  return field.size() >= key.size() &&
         std::equal(key.begin(), key.end(), field.begin(), [](char k, char c) {
           return k == std::toupper(static_cast<unsigned char>(c));
         });
}

// Where on a line a geometry begins: the last of the fields between semicolons that looks so.
std::size_t FindGeometry(std::string_view line) {
  while (true) {
    const std::size_t start = line.rfind(';') + 1;  // 0 where there is none
    if (WktReader(line.substr(start)).Begins()) return start;
    if (start == 0) return std::string_view::npos;
    line = line.substr(0, start - 1);
  }
}

}  // namespace

void Parts::AddPolygon(std::vector<Ring> closed) {
  if (closed.empty() || closed.front().empty()) {
    RefuseEmpty("Polygon");
    polygons.emplace_back();
    return;
  }
  try {
    Polygon polygon{Opened(std::move(closed.front()), 0), {}};
    for (std::size_t i = 1; i < closed.size(); ++i) {
      if (!closed[i].empty()) polygon.holes.push_back(Opened(std::move(closed[i]), i));
    }
    polygons.push_back(std::move(polygon));
  } catch (const std::runtime_error& error) {
    RefusePolygon(error.what());
  }
}

std::string_view WktText::Line() const {
  return text_.substr(at_, std::min(text_.find('\n', at_), text_.size()) - at_);
}

void WktText::MoveTo(std::size_t position) {
  line_ += static_cast<std::size_t>(
      std::count(text_.begin() + static_cast<std::ptrdiff_t>(at_),
                 text_.begin() + static_cast<std::ptrdiff_t>(position), '\n'));
  at_ = position;
}

bool WktText::SkipBlanks() {
  while (at_ < text_.size()) {
    const std::string_view text = Trimmed(Line());
    if (!text.empty() && text.front() != '#') return true;
    EndLine();
  }
  return false;
}

void WktText::EndLine() {
  MoveTo(std::min(at_ + Line().size() + 1, text_.size()));
}

// The line, and all lines behind it on which no geometry begins.
void WktText::SkipText(WktPiece& piece) {
  do {
    piece.last_line = line_;
    EndLine();
  } while (SkipBlanks() && FindGeometry(Line()) == std::string_view::npos);
}

// The fields of a line around a geometry, SRIDs apart.
void WktText::ReadName(WktPiece& piece, std::string_view fields) {
  while (!fields.empty()) {
    const std::size_t end = std::min(fields.find(';'), fields.size());
    const std::string_view field = Trimmed(fields.substr(0, end));
    fields.remove_prefix(std::min(end + 1, fields.size()));
    if (IsSrid(field)) {
      piece.srid = field;
    } else if (!field.empty()) {
      piece.name += (piece.name.empty() ? "" : ";") + std::string(field);
    }
  }
}

bool WktText::Next(WktPiece& piece) {
  const bool is_first = !std::exchange(begun_, true);
  if (!SkipBlanks()) return false;
  piece = {};
  piece.first_line = piece.last_line = line_;
  const std::string_view line = Line();
  const std::size_t start = FindGeometry(line);
  piece.begins_geometry = start != std::string_view::npos;
  piece.is_heading = !piece.begins_geometry && is_first && line.find(';') != std::string_view::npos;
  if (piece.is_heading) {
    EndLine();
    return true;
  }
  if (!piece.begins_geometry) {
    piece.fault = "no geometry that is known";
    SkipText(piece);
    return true;
  }
  ReadName(piece, line.substr(0, start));
  WktReader reader(text_.substr(at_ + start));
  try {
    piece.parts = reader.Read();
  } catch (const std::runtime_error& error) {
    piece.fault = error.what();
    if (reader.WasTooDeep()) MoveTo(text_.size() - reader.Left());  // or each level tries again
    SkipText(piece);
    return true;
  }
  MoveTo(text_.size() - reader.Left());
  const std::string_view behind = Trimmed(Line());
  if (!behind.empty() && behind.front() == ';') {
    ReadName(piece, behind);
  } else if (!behind.empty() && behind.front() != '#') {
    piece.parts.Refuse("there is text behind the geometry");
  }
  EndLine();
  return true;
}

}  // namespace tool
