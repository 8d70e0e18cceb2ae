// The host program built without GEOS against the one built with it: the same files
// in, the same polygons out, and the same features refused.
#include <set>
#include <sstream>

#include "runner.h"
#include "support/random.h"

namespace {

using support::Random;

// Geometries as text, mostly sound, in the many ways that text allows.
class Writer {
 public:
  Writer(Random& random, bool json) : random_(random), json_(json) {}

  std::string Geometry(int depth) {
    const std::uint32_t kind = random_.Below(depth > 2 ? 6 : 8);
    // Two numbers a point in GeoJSON: GEOS 3.11 refuses altitudes.
    values_ = json_ || random_.Below(4) != 0 ? 2 : 3 + random_.Below(2);
    if (kind == 0) return Typed("Point", json_ ? "[1,2]" : Pick({" (1 2)", " EMPTY", "(1)"}));
    if (kind == 1 && !json_) return Typed("LineString", Pick({"(0 0, 1 1)", "(0 0, 1 1, x)"}));
    if (kind < 4) return Typed("Polygon", Body());
    if (kind > 5) {
      values_ = 2;
      return Typed("GeometryCollection", List([&] { return Geometry(depth + 1); }));
    }
    return Typed("MultiPolygon", List([&] {
                   return !json_ && random_.Below(9) == 0 ? Pick({"EMPTY", "empty"}) : Body();
                 }));
  }

 private:
  std::string Pick(std::initializer_list<const char*> choices) {
    return *(choices.begin() + random_.Below(static_cast<std::uint32_t>(choices.size())));
  }

  std::string Typed(std::string type, const std::string& body) {
    if (json_) {
      const char* inside = type == "GeometryCollection" ? "geometries" : "coordinates";
      return R"({"type":")" + type + R"(",")" + inside + R"(":)" + body + "}";
    }
    if (random_.Below(30) == 0) type.back() = 'x';
    const bool lower = random_.Below(4) == 0;
    for (char& c : type) c = static_cast<char>(lower ? c | ' ' : c & ~' ');
    if (type.front() == 'G' || type.front() == 'g' || values_ == 2) return type + body;
    return type + (values_ == 3 ? Pick({" Z", " M ", " z"}) : Pick({" ZM", " zm "})) + body;
  }

  template <class One>
  std::string List(One one) {
    std::string text = json_ ? "[" : "(";
    for (std::uint32_t k = random_.Below(3) + 1; k > 0; --k) {
      text += one() + (k > 1 ? Pick({",", ", ", " ,  "}) : "");
    }
    return text + (json_ ? "]" : ")");
  }

  std::string Point(const std::string& x, const std::string& y) {
    if (json_) return "[" + x + "," + y + "]";
    std::string text = x + " " + y;
    for (std::uint32_t k = 2; k < values_; ++k) text += " " + std::to_string(k);
    return text;
  }

  // A triangle with up to two holes; now and then a ring is open or too short, and
  // numbers are hard to read.
  std::string Body() {
    const std::int32_t x = random_.Between(0, 100);
    const std::int32_t y = random_.Between(0, 100);
    const std::string sign = Pick({"", "-"});
    const std::string tail = Pick({"", "", "", ".5", "e0", ".1234567890123456789", "E-2"});
    std::int32_t hole = 0;
    return List([&] {
      const auto point = [&](std::int32_t dx, std::int32_t dy) {
        return Point(sign + std::to_string(x + dx) + tail, sign + std::to_string(y + dy) + tail);
      };
      const std::int32_t size = hole == 0 ? 20 : 1;
      const std::int32_t at = 20 * hole++;
      const std::int32_t up = at > 0 ? 10 : 0;
      const std::uint32_t fault = random_.Below(25);
      std::string ring = point(at, up);
      if (fault > 1)
        ring += ", " + point(at + 5 * size, up) + "," + point(at + 5 * size, up + 7 * size);
      if (fault != 0 && fault != 2) ring += "," + point(at, up);
      return json_ ? "[" + ring + "]" : "(" + ring + ")";
    });
  }

  Random& random_;
  const bool json_;
  std::uint32_t values_ = 2;
};

// Which features of which file are refused, whatever the reason.
std::set<std::string> Refused(const std::string& text) {
  std::set<std::string> refused;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    const auto feature = line.find(": feature ");
    if (feature != std::string::npos) refused.insert(line.substr(0, line.find(':', feature + 2)));
  }
  return refused;
}

TEST_F(ToolTest, ReadsTheSameWithoutGeos) {
  std::size_t refused = 0;
  const auto compare = [&](const std::string& file, const std::string& text) {
    Write(file, text);
    const Outcome with = Run("triangulate @/" + file + " -o @/with.wkt");
    const Outcome without = Run("triangulate @/" + file + " -o @/without.wkt", kWithoutGeos);
    EXPECT_EQ(with.status, without.status) << with.text << without.text;
    EXPECT_EQ(Refused(with.text), Refused(without.text)) << with.text << without.text;
    EXPECT_EQ(Read("with.wkt"), Read("without.wkt"));
    refused += Refused(with.text).size();
    if (HasFailure()) FAIL() << text;
  };
  for (std::uint64_t seed = 1; seed <= 30 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    std::string wkt;
    std::string json;
    for (int k = 0; k < 40; ++k) {
      wkt += Writer(random, false).Geometry(0) + "\n";
      json += std::string(k == 0 ? "" : ",") + R"({"type":"Feature","geometry":)" +
              Writer(random, true).Geometry(0) + "}";
    }
    compare("a.wkt", wkt);
    compare("a.geojson", R"({"type":"FeatureCollection","features":[)" + json + "]}");
  }
  EXPECT_GT(refused, 100u);
  EXPECT_LT(refused, 2000u);
}

}  // namespace
