// The host program built without GEOS against the one built with it: the same files
// in, the same polygons out, and the same features refused.
#include <algorithm>
#include <set>
#include <sstream>

#include "runner.h"
#include "support/random.h"

namespace {

using support::Random;

// One geometry as text, mostly sound, in the many ways that text allows.
class Writer {
 public:
  explicit Writer(Random& random) : random_(random) {}

  std::string Wkt(int depth) {
    switch (random_.Below(depth > 2 ? 6 : 8)) {
      case 0:
        return Case("POINT") + Pick({" (1 2)", " EMPTY", "(1)"});
      case 1:
        return Case("LINESTRING") + " (0 0, 1 1" + Pick({")", ", 2 2)", ", x)"});
      case 2:
      case 3:
        return Case("MULTIPOLYGON") + Dimension() +
               List([&] { return random_.Below(9) == 0 ? Case("EMPTY") : Body(); });
      case 6:
      case 7:
        return Case("GEOMETRYCOLLECTION") + List([&] { return Wkt(depth + 1); });
      default:
        return Case(random_.Below(30) == 0 ? "POLYGAN" : "POLYGON") + Dimension() + Body();
    }
  }

  // Two numbers a point: GEOS 3.11 refuses altitudes in GeoJSON.
  std::string Json(int depth) {
    values_ = 2;
    switch (random_.Below(depth > 2 ? 4 : 5)) {
      case 0:
        return R"({"type":"Point","coordinates":[1,2]})";
      case 1:
        return R"({"type":"MultiPolygon","coordinates":)" +
               Bracketed(List([&] { return Body(); })) + "}";
      case 4:
        return R"({"type":"GeometryCollection","geometries":[)" + Json(depth + 1) + "," +
               Json(depth + 1) + "]}";
      default:
        return R"({"type":"Polygon","coordinates":)" + Bracketed(Body()) + "}";
    }
  }

 private:
  std::string Pick(std::initializer_list<const char*> choices) {
    return *(choices.begin() + random_.Below(static_cast<std::uint32_t>(choices.size())));
  }
  std::string Case(std::string word) {
    if (random_.Below(4) == 0) {
      for (char& c : word) c = static_cast<char>(c | ' ');
    }
    return word;
  }
  std::string Dimension() {
    values_ = 2;
    if (random_.Below(4) != 0) return Pick({"", " "});
    values_ = 3 + random_.Below(2);
    return values_ == 3 ? Pick({" Z", " M ", " z"}) : Pick({" ZM", " zm "});
  }

  template <class One>
  std::string List(One one) {
    std::string text = "(";
    for (std::uint32_t k = random_.Below(3) + 1; k > 0; --k) {
      text += one() + (k > 1 ? Pick({",", ", ", " ,  "}) : "");
    }
    return text + ")";
  }

  std::string Body() {
    return List([&] { return Square(); });
  }

  // Now and then open, too short, or with numbers that are hard to read.
  std::string Square() {
    const std::int32_t x = random_.Between(-100, 100);
    const std::int32_t y = random_.Between(-100, 100);
    const std::string tail = Pick({"", "", "", ".5", "e0", ".1234567890123456789", "E-2"});
    const auto point = [&](int dx, int dy) {
      std::string text = std::to_string(x + dx) + tail + " " + std::to_string(y + dy) + tail;
      for (std::uint32_t k = 2; k < values_; ++k) text += " " + std::to_string(k);
      return text;
    };
    const std::uint32_t fault = random_.Below(25);
    if (fault == 0) return "(" + point(0, 0) + ")";
    if (fault == 1) return "(" + point(0, 0) + "," + point(0, 0) + ")";
    const std::string start = "(" + point(0, 0) + ", " + point(5, 0) + "," + point(5, 7);
    return start + (fault == 2 ? ")" : "," + point(0, 0) + ")");
  }

  // From the round brackets of one format to the square ones of the other.
  static std::string Bracketed(const std::string& text) {
    std::string json;
    for (std::size_t i = 0; i < text.size(); ++i) {
      const char c = text[i];
      const bool number = c != '(' && c != ')' && c != ',' && c != ' ';
      const bool starts = number && (json.empty() || i == 0 || text[i - 1] == '(' ||
                                     text[i - 1] == ',' || text[i - 1] == ' ');
      const bool second = starts && InPoint(json);
      if (starts) json += second ? "," : "[";
      if (number) json += c;
      const bool ends = number && (text[i + 1] == ')' || text[i + 1] == ',');
      if (ends) json += "]";
      if (c == '(') json += "[";
      if (c == ')') json += "]";
      if (c == ',') json += ",";
    }
    return json;
  }
  static bool InPoint(const std::string& json) {
    return !json.empty() && json.back() != ',' && json.back() != '[' && json.back() != ']';
  }

  Random& random_;
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

class WithoutGeosTest : public ToolTest {
 protected:
  // Both programs on one file. @return how many features both refuse
  std::size_t Compare(const std::string& file) {
    const Outcome with = Run("triangulate @/" + file + " -o @/with.wkt");
    const Outcome without = Run("triangulate @/" + file + " -o @/without.wkt", WithoutGeos());
    EXPECT_EQ(with.status, without.status) << with.text << without.text;
    EXPECT_EQ(Refused(with.text), Refused(without.text)) << with.text << without.text;
    EXPECT_EQ(Read("with.wkt"), Read("without.wkt"));
    return Refused(with.text).size();
  }
  static const char* WithoutGeos() { return ZELVAN_TOOL_WITHOUT_GEOS; }
};

TEST_F(WithoutGeosTest, ReadsTheSame) {
  std::size_t refused = 0;
  for (std::uint64_t seed = 1; seed <= 30; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    Writer writer(random);
    std::string wkt;
    std::string json;
    for (int k = 0; k < 40; ++k) {
      wkt += writer.Wkt(0) + "\n";
      json += std::string(k == 0 ? "" : ",") + R"({"type":"Feature","geometry":)" + writer.Json(0) +
              "}";
    }
    Write("a.wkt", wkt);
    Write("a.geojson", R"({"type":"FeatureCollection","features":[)" + json + "]}");
    refused += Compare("a.wkt");
    refused += Compare("a.geojson");
    if (HasFailure()) FAIL() << wkt << json;
  }
  EXPECT_GT(refused, 100u);
  EXPECT_LT(refused, 2000u);
}

TEST_F(WithoutGeosTest, CombinesTheSameAreaAndRefusesToRepair) {
  const std::string union_of_africa = std::string("union ") + ZELVAN_DATA_DIR +
                                      "/countries-50m.geojson --only Mali,Niger,Chad,Algeria";
  const Outcome with = Run(union_of_africa);
  const Outcome without = Run(union_of_africa, WithoutGeos());
  EXPECT_EQ(without.status, 0) << without.text;
  EXPECT_EQ(with.Cell(2), without.Cell(2)) << with.text << without.text;
  EXPECT_EQ(Run(union_of_africa + " --repair", WithoutGeos()).status, 2);
}

}  // namespace
