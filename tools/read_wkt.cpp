// Well-known text to polygons (parts.h).
#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <map>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "parts.h"

namespace tool {
namespace {

Ring Opened(Ring ring) {
  if (ring.empty()) return ring;
  const bool numbers = !std::isnan(ring.front().x) && !std::isnan(ring.front().y);
  if (ring.size() < 3) throw std::runtime_error("a ring of fewer than three points");
  if (numbers && ring.front() != ring.back()) throw std::runtime_error("a ring is not closed");
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

  Parts Read() {
    Parts parts;
    Geometry(parts);
    if (Next() != '\0') throw std::runtime_error("there is text behind the geometry");
    return parts;
  }

 private:
  char Next() {
    while (!rest_.empty() && std::isspace(static_cast<unsigned char>(rest_.front())) != 0) {
      rest_.remove_prefix(1);
    }
    return rest_.empty() ? '\0' : rest_.front();
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

  // After a type: the dimensions, which do not matter, and EMPTY.
  bool IsEmpty() {
    std::string word = Word();
    if (word == "Z" || word == "M" || word == "ZM") word = Word();
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
    if (result.ec != std::errc()) throw std::runtime_error("a number is missing");
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

  // Points, or lists of them, that are not wanted.
  void SkipPoints() {
    List([&] {
      if (Next() == '(') {
        SkipPoints();
      } else if (std::isalpha(static_cast<unsigned char>(Next())) == 0 || !IsEmpty()) {
        ReadPoint();
      }
    });
  }

  void Geometry(Parts& parts) {
    const auto type = kTypes.find(Word());
    if (type == kTypes.end()) throw std::runtime_error("no geometry that is known");
    if (type->second == "Polygon") {
      PolygonText(parts);
    } else if (IsEmpty()) {
      parts.RefuseEmpty(type->second);
    } else if (type->second == "MultiPolygon") {
      List([&] { PolygonText(parts); });
    } else if (type->second == "GeometryCollection") {
      List([&] { Geometry(parts); });
    } else {
      SkipPoints();
      parts.RefuseType(type->second);
    }
  }

  std::string_view rest_;
};

}  // namespace

void Parts::AddPolygon(std::vector<Ring> closed) {
  if (closed.empty() || closed.front().empty()) return RefuseEmpty("Polygon");
  Polygon polygon{Opened(std::move(closed.front())), {}};
  for (std::size_t i = 1; i < closed.size(); ++i) {
    if (!closed[i].empty()) polygon.holes.push_back(Opened(std::move(closed[i])));
  }
  polygons.push_back(std::move(polygon));
}

Parts ReadWktGeometry(const std::string& text) {
  return WktReader(text).Read();
}

}  // namespace tool
