// The same door where there is no GEOS (geos.h): reads text by itself, gives fewer
// reasons, repairs nothing. Of contours that lie near each other it says that they
// might meet.
#include <algorithm>
#include <cctype>
#include <charconv>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "geos.h"

namespace tool {
namespace {

using Json = nlohmann::json;

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

void RefuseEmpty(const std::string& type, Parts& parts) {
  parts.refused.push_back("a " + type + " that is empty");
}

Ring Opened(Ring ring) {
  if (ring.empty()) return ring;
  const bool numbers = ring.front().x == ring.front().x && ring.front().y == ring.front().y;
  if (ring.size() < 3) throw std::runtime_error("a ring of fewer than three points");
  if (numbers && ring.front() != ring.back()) throw std::runtime_error("a ring is not closed");
  ring.pop_back();
  return ring;
}

void AddPolygon(std::vector<Ring> rings, Parts& parts) {
  if (rings.empty() || rings.front().empty()) {
    RefuseEmpty("Polygon", parts);
    return;
  }
  Polygon polygon{std::move(rings.front()), {}};
  for (std::size_t i = 1; i < rings.size(); ++i) {
    if (!rings[i].empty()) polygon.holes.push_back(std::move(rings[i]));
  }
  parts.polygons.push_back(std::move(polygon));
}

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
    return Opened(std::move(ring));
  }

  void PolygonText(Parts& parts) {
    std::vector<Ring> rings;
    if (!IsEmpty()) List([&] { rings.push_back(ReadRing()); });
    AddPolygon(std::move(rings), parts);
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
      RefuseEmpty(type->second, parts);
    } else if (type->second == "MultiPolygon") {
      List([&] { PolygonText(parts); });
    } else if (type->second == "GeometryCollection") {
      List([&] { Geometry(parts); });
    } else {
      SkipPoints();
      parts.refused.push_back("a " + type->second + " is no polygon");
    }
  }

  std::string_view rest_;
};

Ring RingOf(const Json& points) {
  Ring ring;
  for (const Json& point : points) {
    ring.push_back({point.at(0).get<double>(), point.at(1).get<double>()});
  }
  return Opened(std::move(ring));
}

void AddPolygon(const Json& coordinates, Parts& parts) {
  std::vector<Ring> rings;
  for (const Json& points : coordinates) rings.push_back(RingOf(points));
  AddPolygon(std::move(rings), parts);
}

void AddGeometry(const Json& geometry, Parts& parts) {
  const auto type = geometry.at("type").get<std::string>();
  const bool collection = type == "GeometryCollection";
  const Json& inside = geometry.at(collection ? "geometries" : "coordinates");
  if (inside.empty()) {
    RefuseEmpty(type, parts);
  } else if (collection) {
    for (const Json& one : inside) AddGeometry(one, parts);
  } else if (type == "Polygon") {
    AddPolygon(inside, parts);
  } else if (type == "MultiPolygon") {
    for (const Json& polygon : inside) AddPolygon(polygon, parts);
  } else {
    parts.refused.push_back("a " + type + " is no polygon");
  }
}

// Where a ring crosses a horizontal line, in rising order.
std::vector<double> Crossings(const Ring& ring, double y) {
  std::vector<double> crossings;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Point& p = ring[i];
    const Point& q = ring[i + 1 < ring.size() ? i + 1 : 0];
    if ((p.y > y) != (q.y > y)) crossings.push_back(p.x + (y - p.y) / (q.y - p.y) * (q.x - p.x));
  }
  std::sort(crossings.begin(), crossings.end());
  return crossings;
}

// A point inside a ring, just above its lowest vertices; none without area.
std::optional<Point> InnerPoint(const Ring& ring) {
  std::vector<double> heights;
  for (const Point& p : ring) heights.push_back(p.y);
  std::sort(heights.begin(), heights.end());
  const auto above = std::upper_bound(heights.begin(), heights.end(), heights.front());
  if (above == heights.end()) return std::nullopt;
  const double y = heights.front() / 2 + *above / 2;
  const std::vector<double> crossings = Crossings(ring, y);
  if (crossings.size() < 2 || crossings[0] == crossings[1]) return std::nullopt;
  return Point{crossings[0] / 2 + crossings[1] / 2, y};
}

bool Contains(const Ring& ring, const Point& point) {
  const std::vector<double> crossings = Crossings(ring, point.y);
  const auto left = std::lower_bound(crossings.begin(), crossings.end(), point.x);
  return (left - crossings.begin()) % 2 == 1;
}

}  // namespace

Geos::Geos() : context_(nullptr) {}
Geos::~Geos() = default;

std::string Geos::WhyOverlapping(const Polygon& polygon) {
  if (!IsFinite(polygon)) return WhyInvalid(polygon);
  for (std::size_t i = 0; i < polygon.holes.size(); ++i) {
    const auto point = InnerPoint(polygon.holes[i]);
    if (point && !Contains(polygon.outer, *point)) {
      return "hole " + std::to_string(i + 1) + " lies outside";
    }
  }
  return "";
}

bool Geos::CanRepair() {
  return false;
}

Parts Geos::ReadGeoJson(const std::string& text) {
  Parts parts;
  try {
    AddGeometry(Json::parse(text), parts);
  } catch (const Json::exception& error) {
    throw std::runtime_error(error.what());
  }
  return parts;
}

Parts Geos::ReadWkt(const std::string& text) {
  return WktReader(text).Read();
}

std::string Geos::WhyInvalid(const Polygon& polygon) {
  return IsFinite(polygon) ? "" : "a coordinate is not finite";
}

std::vector<Polygon> Geos::Repair(const Polygon&) {
  throw std::runtime_error("this program was built without GEOS, which repairs");
}

std::vector<std::pair<std::size_t, std::size_t>> Geos::Contacts(const std::vector<Ring>& contours) {
  std::vector<std::pair<Box, std::size_t>> boxes;
  for (std::size_t i = 0; i < contours.size(); ++i) {
    Box box;
    box.Add(contours[i]);
    const bool ring = contours[i].size() > 2 && IsFinite({contours[i], {}});
    if (ring) boxes.emplace_back(box, i);
  }
  std::sort(boxes.begin(), boxes.end(),
            [](const auto& a, const auto& b) { return a.first.low.x < b.first.low.x; });
  std::vector<std::pair<std::size_t, std::size_t>> contacts;
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    const Box& box = boxes[i].first;
    for (std::size_t k = i + 1; k < boxes.size() && boxes[k].first.low.x <= box.high.x; ++k) {
      const Box& other = boxes[k].first;
      if (other.low.y <= box.high.y && box.low.y <= other.high.y) {
        contacts.push_back(std::minmax(boxes[i].second, boxes[k].second));
      }
    }
  }
  return contacts;
}

}  // namespace tool
