// The host program from the outside: exit statuses, refusals, files.
#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>

#include "runner.h"

namespace {

constexpr const char* kCountries = ZELVAN_DATA_DIR "/countries-50m.geojson";
constexpr std::size_t kArea = 2;  // columns from the right; "0.1 s" is two words
constexpr std::size_t kTriangles = 4;
constexpr std::size_t kVertices = 5;
constexpr std::size_t kPolygons = 6;

TEST_F(ToolTest, TellsByItsExitStatusWhatBecameOfTheInput) {
  Write("good.wkt", "POLYGON ((0 0, 4 0, 4 4, 0 4, 0 0))");
  Write("bowtie.wkt", "POLYGON ((0 0, 2 2, 2 0, 0 2, 0 0))");
  Write("broken.geojson", R"({"type":"FeatureCollection","features":[)");
  Write("empty.geojson", "");
  Write("deep.json", std::string(100000, '['));
  const std::map<std::string, int> expected{
      {"triangulate @/good.wkt", 0},
      {"triangulate @/good.wkt @/bowtie.wkt", 1},
      {"triangulate @/bowtie.wkt --repair", 0},
      {"triangulate @/missing.wkt @/good.wkt", 2},
      {"triangulate @/broken.geojson", 2},
      {"triangulate @/empty.geojson", 2},
      {"triangulate @/deep.json", 2},
      {"triangulate @/good.wkt --only nobody", 1},
      {"triangulate @/good.wkt -o @/out.png", 2},
      {"triangulate @/good.wkt -o @/good.wkt", 2},
      {"triangulate @/good.wkt -o @/no/such/folder.svg", 2},
      {"triangulate", 2},
      {"", 2},
      {"cut @/good.wkt", 2},
      {"--help", 0},
      {"--version", 0},
  };
  for (const auto& [arguments, status] : expected) {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.status, status) << arguments << '\n' << outcome.text;
  }
  EXPECT_EQ(Read("good.wkt").substr(0, 7), "POLYGON");
}

TEST_F(ToolTest, NamesWhatItRefusesAndGoesOn) {
  Write("mixed.geojson", R"({"type":"FeatureCollection","features":[
    {"type":"Feature","properties":{"name":"knot"},"geometry":{"type":"MultiPolygon","coordinates":
      [[[[0,0],[1,0],[0,1],[0,0]]],[[[0,0],[2,2],[2,0],[0,2],[0,0]]]]}},
    {"type":"Feature","properties":{},"geometry":null},
    {"type":"Feature","id":7,"properties":null,"geometry":{"type":"Point","coordinates":[1,2]}},
    {"type":"Feature","properties":{"name":"open"},"geometry":
      {"type":"Polygon","coordinates":[[[0,0],[1,0],[1,1]]]}},
    {"type":"Feature","properties":{"name":"last"},"geometry":
      {"type":"Polygon","coordinates":[[[0,0],[4,0],[4,4],[0,4],[0,0]]]}}]})");
  Write(
      "mixed.wkt",
      "POLYGON ((0 0, 1 0, 2 0, 0 0))\n\nPOLYGON EMPTY\nPOLYGON ((0 0, 1 0, nan 1, 0 0))\n"
      "POLYGON ((0 0, 3 0, 3 3, 0 3, 0 0))\nPOLYGON ((0 0, 1 0\nPOLYGON ((0 0, 1 0, 1 1, 0 0))\n");
  const Outcome outcome = Run("triangulate @/mixed.geojson @/mixed.wkt");
  EXPECT_EQ(outcome.status, 1);
  for (const char* line : {
           "mixed.geojson: feature 1 (knot), polygon 2: not usable: Self-intersection at (1 1)",
           "mixed.geojson: feature 2: no geometry",
           "mixed.geojson: feature 3 (7): a Point is no polygon",
           "mixed.geojson: feature 4 (open): ",
           "mixed.wkt: feature 1: not usable",
           "mixed.wkt: feature 2: a Polygon that is empty",
           "mixed.wkt: feature 3: not usable: a coordinate is not finite",
           "mixed.wkt: feature 5: ",
       }) {
    EXPECT_NE(outcome.text.find(line), std::string::npos) << line << '\n' << outcome.text;
  }
  EXPECT_EQ(outcome.Cell(kPolygons), "4");
  EXPECT_EQ(outcome.Cell(kArea), "26");
}

TEST_F(ToolTest, ReadsEveryShapeOfFile) {
  const std::string square =
      R"({"type":"Polygon","coordinates":[[[0,0],[1,0],[1,1],[0,1],[0,0]]]})";
  const std::string feature = R"({"type":"Feature","properties":null,"geometry":)" + square + "}";
  Write("geometry.json", square);
  Write("feature.GeoJSON", feature);
  Write("deep.geojson", R"({"type":"GeometryCollection","geometries":[)" + square +
                            R"(,{"type":"GeometryCollection","geometries":[)" + square + "]}]}");
  Write("z.wkt", "SRID=4326;POLYGON Z ((0 0 5, 1 0 6, 1 1 7, 0 1 8, 0 0 5))\r\n# a remark\r\n");
  Write("lines.wkt",
        "MULTIPOLYGON (\n  ((0 0, 1 0, 1 1, 0 1, 0 0)),\n"
        "  ((2 0, 3 0, 3 1, 2 1, 2 0))\n)\nPOLYGON\n((0 0, 1 0, 1 1, 0 1, 0 0))");
  const std::map<std::string, std::string> areas{{"geometry.json", "1"},
                                                 {"feature.GeoJSON", "1"},
                                                 {"deep.geojson", "2"},
                                                 {"z.wkt", "1"},
                                                 {"lines.wkt", "3"}};
  for (const auto& [file, area] : areas) {
    const Outcome outcome = Run("triangulate @/" + file);
    EXPECT_EQ(outcome.status, 0) << file << '\n' << outcome.text;
    EXPECT_EQ(outcome.Cell(kArea), area) << file << '\n' << outcome.text;
  }
}

struct Obj {
  std::size_t groups = 0;
  std::size_t vertices = 0;
  std::size_t faces = 0;
  double area = 0;
  bool sound = true;  // every face names three earlier vertices, counter-clockwise
};

Obj ReadObj(const std::string& text) {
  Obj obj;
  std::vector<std::pair<double, double>> vertices;
  std::istringstream stream(text);
  std::string word;
  while (stream >> word) {
    std::string rest;
    if (word == "v") {
      double x = 0;
      double y = 0;
      double z = 1;
      obj.sound = obj.sound && (stream >> x >> y >> z) && z == 0;
      vertices.emplace_back(x, y);
    } else if (word == "f") {
      std::size_t a = 0;
      std::size_t b = 0;
      std::size_t c = 0;
      stream >> a >> b >> c;
      obj.sound = obj.sound && std::min({a, b, c}) >= 1 && std::max({a, b, c}) <= vertices.size();
      if (!obj.sound) break;
      const auto& [ax, ay] = vertices[a - 1];
      const auto& [bx, by] = vertices[b - 1];
      const auto& [cx, cy] = vertices[c - 1];
      const double area = ((bx - ax) * (cy - ay) - (by - ay) * (cx - ax)) / 2;
      obj.sound = area > 0;
      obj.area += area;
      ++obj.faces;
    } else {
      if (word == "g") ++obj.groups;
      std::getline(stream, rest);
    }
  }
  obj.vertices = vertices.size();
  return obj;
}

// Area, corners and counts by two readers that share nothing with the program.
TEST_F(ToolTest, WritesTrianglesThatAreThePolygons) {
  const Outcome outcome = Run(std::string("triangulate ") + kCountries +
                              " --only Brazil,Norway,Fiji -o @/t.geojson -o @/t.obj -o @/t.wkt");
  ASSERT_EQ(outcome.status, 0) << outcome.text;
  const Geometry geojson = Look("t.geojson");
  ASSERT_TRUE(geojson.readable);
  EXPECT_TRUE(geojson.valid);
  EXPECT_EQ(geojson.triangles, geojson.polygons);
  EXPECT_EQ(std::to_string(geojson.triangles), outcome.Cell(kTriangles));
  // Half a step of the grid along every contour: far below 1e-5 square degrees
  // for each degree of coast.
  EXPECT_NEAR(geojson.area, std::stod(outcome.Cell(kArea + 1)), 1e-3);
  EXPECT_NEAR(geojson.area, std::stod(outcome.Cell(kArea)), 1e-5);

  const Obj obj = ReadObj(Read("t.obj"));
  EXPECT_TRUE(obj.sound);
  EXPECT_EQ(std::to_string(obj.groups), outcome.Cell(kPolygons));
  EXPECT_EQ(obj.faces, geojson.triangles);
  EXPECT_EQ(obj.faces, obj.vertices - 2 * obj.groups);
  EXPECT_NEAR(obj.area, geojson.area, 1e-9);

  const std::string wkt = Read("t.wkt");
  EXPECT_EQ(static_cast<std::size_t>(std::count(wkt.begin(), wkt.end(), '\n')), obj.groups);
  EXPECT_NE(Read("t.geojson").find(R"("name":"Norway")"), std::string::npos);
}

TEST_F(ToolTest, DrawsThePictureUpright) {
  Write("house.wkt", "POLYGON ((0 0, 10 0, 10 6, 5 9, 0 6, 0 0))");
  ASSERT_EQ(Run("triangulate @/house.wkt -o @/house.svg").status, 0);
  const std::string svg = Read("house.svg");
  const auto path = [&](const std::string& name) {
    const std::size_t at = svg.find(" d=", svg.find("<path class=\"" + name));
    return at == std::string::npos ? "" : svg.substr(at, svg.find("/>", at) - at);
  };
  const std::string diagonals = path("diagonal");
  EXPECT_EQ(std::count(diagonals.begin(), diagonals.end(), 'M'), 2);
  // From the lower left corner the contour goes right, then up: a step with
  // a negative y.
  int x = 0;
  int y = 0;
  int right = 0;
  int flat = 1;
  int aside = 1;
  int up = 0;
  const std::string contour = path("contour");
  ASSERT_EQ(std::sscanf(contour.substr(contour.find('M')).c_str(), "M%d %dl%d %d %d%d", &x, &y,
                        &right, &flat, &aside, &up),
            6)
      << contour;
  EXPECT_GT(right, 0);
  EXPECT_EQ(flat, 0);
  EXPECT_EQ(aside, 0);
  EXPECT_LT(up, 0);
  EXPECT_EQ(svg.substr(svg.size() - 7), "</svg>\n");
}

// A hexagon of a thousandth of a degree: every corner lies within the tolerance
// of validation unless it is scaled up.
TEST_F(ToolTest, ScalesSmallUnitsSoThatNoDetailIsLost) {
  Write("small.wkt",
        "POLYGON ((8.001 50, 8.0005 50.0009, 7.9995 50.0009, 7.999 50, 7.9995 49.9991, "
        "8.0005 49.9991, 8.001 50))");
  const Outcome scaled = Run("triangulate @/small.wkt -o @/small.geojson");
  ASSERT_EQ(scaled.status, 0) << scaled.text;
  EXPECT_EQ(scaled.Cell(kVertices), "6");
  EXPECT_NEAR(Look("small.geojson").area, 2.7e-6, 1e-11);
  EXPECT_EQ(Run("triangulate --no-scale @/small.wkt").status, 1);

  Write("huge.wkt", "POLYGON ((-1.7e308 0, 1.7e308 -1e308, 0 1.7e308, -1.7e308 0))");
  const Outcome huge = Run("triangulate @/huge.wkt -o @/huge.geojson");
  EXPECT_EQ(huge.status, 0) << huge.text;
  EXPECT_EQ(Look("huge.geojson").triangles, 1U);
}

TEST_F(ToolTest, RepairsWhatCrossesItselfAndSaysHowMuch) {
  Write("knots.wkt",
        "POLYGON ((0 0, 2 2, 2 0, 0 2, 0 0))\nPOLYGON ((0 0, 1 0, 1 1, 0 1, 0 0))\n"
        "POLYGON ((5 5, 6 6, 7 7, 5 5))\n");
  const Outcome outcome = Run("triangulate --repair @/knots.wkt");
  EXPECT_EQ(outcome.status, 1);  // the third has no area, which nothing mends
  EXPECT_NE(outcome.text.find("knots.wkt: 1 invalid polygon repaired"), std::string::npos);
  EXPECT_NE(outcome.text.find("feature 3: no area"), std::string::npos) << outcome.text;
  EXPECT_EQ(outcome.Cell(kPolygons), "3");
  EXPECT_EQ(outcome.Cell(kArea), "3");
}

}  // namespace
