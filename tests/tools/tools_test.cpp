// What the man page promises of the host program, from the outside: exit statuses,
// refusals, files. GEOS is the judge of what is written.
#include <algorithm>
#include <cstdio>
#include <map>
#include <sstream>
#include <vector>

#include "runner.h"

namespace {

const std::string kCountries = ZELVAN_DATA_DIR "/countries-50m.geojson";
constexpr std::size_t kAreaOut = 2;  // columns from the right; "0.1 s" is two words
constexpr std::size_t kAreaIn = 3;
constexpr std::size_t kTriangles = 4;
constexpr std::size_t kPolygons = 6;

TEST_F(ToolTest, TellsByItsExitStatusWhatBecameOfTheInput) {
  const std::string good = "POLYGON ((0 0, 4 0, 4 4, 0 4, 0 0))";
  Write("good.wkt", good);
  Write("bowtie.wkt", "POLYGON ((0 0, 2 2, 2 0, 0 2, 0 0))");
  Write("huge.wkt", "POLYGON ((-1.7e308 0, 1.7e308 -1e308, 0 1.7e308, -1.7e308 0))");
  Write("broken.geojson", R"({"type":"FeatureCollection","features":[)");
  Write("empty.geojson", "");
  Write("deep.json", std::string(100000, '['));
  const std::map<std::string, int> expected{
      {"triangulate @/good.wkt", 0},
      {"triangulate @/good.wkt @/bowtie.wkt", 1},
      {"triangulate @/bowtie.wkt --repair", 0},
      {"triangulate @/huge.wkt", 1},
      {"union @/huge.wkt @/good.wkt", 1},
      {"union @/good.wkt --grid 0.125", 0},
      {"union @/good.wkt --grid 0.1", 2},
      {"union @/good.wkt --grid 1e-10", 2},
      {"triangulate @/good.wkt --repair --fill nowhere", 2},
      {"triangulate @/good.wkt --fill non-zero", 2},
      {"triangulate @/missing.wkt @/good.wkt", 2},
      {"triangulate @/broken.geojson", 2},
      {"triangulate @/empty.geojson", 2},
      {"triangulate @/deep.json", 2},
      {"triangulate @/good.wkt --only nobody", 1},
      {"triangulate @/good.wkt -o @/out.png", 2},
      {"triangulate @/good.wkt -o @/good.wkt", 2},
      {"triangulate @/good.wkt -o @/no/such/folder.svg", 2},
      {"triangulate", 2},
      {"union @/bowtie.wkt", 1},
      {"subtract @/good.wkt", 2},
      {"subtract @/good.wkt @/missing.wkt", 2},
      {"", 2},
      {"cut @/good.wkt", 2},
      {"--help", 0},
      {"--version", 0},
  };
  for (const auto& [arguments, status] : expected) {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.status, status) << arguments << '\n' << outcome.text;
  }
  EXPECT_EQ(Run("union @/bowtie.wkt --repair", kWithoutGeos).status, 0);
  EXPECT_EQ(Read("good.wkt"), good);
}

TEST_F(ToolTest, NamesWhatItRefusesAndWhatIsLostAndGoesOn) {
  Write("mixed.geojson", R"({"type":"FeatureCollection","features":[
    {"type":"Feature","properties":{"name":"knot"},"geometry":{"type":"MultiPolygon","coordinates":
      [[[[0,0],[1,0],[0,1],[0,0]]],[[[0,0],[2,2],[2,0],[0,2],[0,0]]]]}},
    {"type":"Feature","properties":{},"geometry":null},
    {"type":"Feature","id":7,"properties":null,"geometry":{"type":"Point","coordinates":[1,2]}},
    {"type":"Feature","properties":{"name":"open"},"geometry":
      {"type":"Polygon","coordinates":[[[0,0],[1,0],[1,1]]]}},
    {"type":"Feature","properties":{"name":"last"},"geometry":
      {"type":"Polygon","coordinates":[[[5,0],[9,0],[9,4],[5,4],[5,0]]]}}]})");
  Write("mixed.wkt",
        "POLYGON ((0 0, 1 0, 2 0, 0 0))\n\nPOLYGON EMPTY\nPOLYGON ((0 0, 1 0, nan 1, 0 0))\n"
        "POLYGON ((0 5, 3 5, 3 8, 0 8, 0 5))\nPOLYGON ((0 0, 1 0\n"
        "POLYGON ((9 9, 8 9, 8 8, 9 9))\nPOLYGON ((0 0, 1e-7 0, 0 1e-7, 0 0))\n");
  for (const std::string command : {"triangulate", "union"}) {
    const Outcome outcome = Run(command + " @/mixed.geojson @/mixed.wkt -o @/out.geojson");
    EXPECT_EQ(outcome.status, 1);
    for (const char* line : {
             "mixed.geojson: feature 1 (knot), polygon 2: not usable: Self-intersection at (1 1); "
             "lost: a polygon of area 0\n",
             "mixed.geojson: feature 2: no geometry; lost: nothing\n",
             "mixed.geojson: feature 3 (7): a Point is no polygon; lost: nothing\n",
             "mixed.geojson: feature 4 (open): ",
             "mixed.wkt: feature 1: no area on the grid; lost: a polygon of area 0\n",
             "mixed.wkt: feature 2: a Polygon that is empty; lost: nothing\n",
             "mixed.wkt: feature 3: not usable: a coordinate is not finite or too large; "
             "lost: a polygon of unknown area\n",
             "mixed.wkt: feature 5: ",
         }) {
      EXPECT_NE(outcome.text.find(line), std::string::npos) << line << '\n' << outcome.text;
    }
    EXPECT_NEAR(Look("out.geojson").area, 0.5 + 16 + 9 + 0.5, 1e-4) << outcome.text;
    // Each polygon has a grid of its own, a union has one for all.
    EXPECT_EQ(outcome.text.find("feature 7: no area on the grid; lost: a polygon of area 5e-15") !=
                  std::string::npos,
              command == "union");
  }
  const Outcome repaired = Run("triangulate --repair @/mixed.geojson");
  EXPECT_NE(repaired.text.find("mixed.geojson: 1 invalid polygon repaired"), std::string::npos);
  EXPECT_EQ(repaired.Cell(kPolygons), "3") << repaired.text;
}

// A hole without area is left out and the polygon stays; where contours overlap the
// polygon is refused, and mended by the even-odd rule.
TEST_F(ToolTest, LosesNothingByAnUnusableHoleInSilence) {
  struct Case {
    const char* hole;
    const char* lost;  // nothing where the polygon is used as it is
    double area_in;
    double area;
    double repaired;
  };
  const char* const kHole = "lost: a hole of area";
  const char* const kPolygon = "lost: a polygon of area";
  const Case cases[] = {
      {"10 10, 20 20, 30 30, 10 10", kHole, 1600, 1600, 1600},
      {"10 10, 10 10, 10 10, 10 10", kHole, 1600, 1600, 1600},
      {"10 10, 10.0000001 10, 10.0000001 10.0000001, 10 10", kHole, 1600, 1600, 1600},
      {"10 10, 10.00001 10, 10.00001 10.00001, 10 10", kHole, 1600, 1600, 1600},
      {"10 10, 20 10, 20 20, 30 30, 20 20, 10 20, 10 10", "", 1500, 1500, 1500},
      {"10 10, 20 20, 20 10, 10 20, 10 10", kPolygon, 1600, 0, 1550},
      {"20 20, 20 10, 10 20, 10 10, 20 20", kPolygon, 1600, 0, 1550},
      {"0 0, 40 0, 40 40, 0 40, 0 0", kPolygon, 0, 0, 0},
      {"50 10, 60 10, 60 20, 50 10", kPolygon, 1550, 0, 1650},
      {"30 10, 60 10, 60 20, 30 20, 30 10", kPolygon, 1300, 0, 1700},
      {"0 10, 10 10, 10 20, 0 20, 0 10", "", 1500, 1500, 1500},
      // What one overlap adds to the area the other takes away.
      {"10 10, 20 20, 20 10, 10 20, 10 10), (50 10, 55 10, 55 15, 50 15, 50 10", kPolygon, 1575, 0,
       1575},
      // As many holes go in as come out.
      {"5 5, 6 6, 7 7, 5 5), (10 10, 15 15, 20 10, 20 20, 15 15, 10 20, 10 10", kHole, 1550, 1550,
       1550},
  };
  Write("block.wkt", "POLYGON ((-9 -9, 99 -9, 99 99, -9 99, -9 -9))");
  Write("corner.wkt", "POLYGON ((0 40, 0 30, 10 30, 10 40, 0 40))");
  for (const Case& one : cases) {
    Write("p.wkt", std::string("POLYGON ((0 0, 40 0, 40 40, 0 40, 0 0), (") + one.hole + "))");
    const auto check = [&](const std::string& arguments, const char* program, double area,
                           const char* lost) {
      const Outcome outcome = Run(arguments + " -o @/out.geojson", program);
      SCOPED_TRACE(arguments + " of " + program + ' ' + one.hole + '\n' + outcome.text);
      EXPECT_NEAR(Look("out.geojson").area, area, 1e-3);
      const bool named = outcome.text.find("; lost: ") != std::string::npos;
      EXPECT_EQ(outcome.status, named ? 1 : 0);
      if (lost == nullptr) return outcome;
      EXPECT_EQ(named, *lost != '\0');
      EXPECT_NE(outcome.text.find(lost), std::string::npos);
      return outcome;
    };
    for (const char* program : {kWithGeos, kWithoutGeos}) {
      const Outcome cut = check("triangulate @/p.wkt", program, one.area, one.lost);
      EXPECT_NEAR(std::stod(cut.Cell(kAreaIn)), one.area_in, 1e-4) << cut.text;
      check("union @/p.wkt", program, one.area, one.lost);
      check("intersect @/p.wkt @/block.wkt", program, one.area, one.lost);
      check("xor @/p.wkt @/corner.wkt", program, std::abs(one.area - 100), one.lost);
      check("subtract @/p.wkt @/corner.wkt", program, std::max(one.area - 100, 0.0), one.lost);
    }
    for (const std::string command : {"triangulate", "union"}) {
      check(command + " @/p.wkt --repair", kWithoutGeos, one.repaired, nullptr);
    }
  }
}

TEST_F(ToolTest, LosesNothingByItsGrid) {
  struct Case {
    const char* why;
    const char* wkt;
    double area;
  };
  const Case cases[] = {
      {"a polygon of a thousandth of a unit",
       "POLYGON ((8.001 50, 8.0005 50.0009, 7.9995 50.0009, 7.999 50, 7.9995 49.9991, "
       "8.0005 49.9991, 8.001 50))",
       2.7e-6},
      {"a hole like a needle",
       "POLYGON ((-74 -34, -34 -34, -34 6, -74 6, -74 -34), (-48.476284762847627 "
       "-25.550994194885106, -48.483484834848355 -25.557748503964639, -48.479884798847991 "
       "-25.554371349424876, -48.478457164876978 -25.553032101554621, -48.476284762847627 "
       "-25.550994194885106))",
       1600},
      {"the grid brings the last corner behind the first edge",
       "POLYGON ((-174.49914499144992 -4.690310602754252, -174.51354513545135 "
       "-4.6768019845951869, -174.52794527945281 -4.6666705209758987, -174.53874538745387 "
       "-4.6649819437060103, -174.54234542345424 -4.6599162118963591, -174.53874538745387 "
       "-4.6565390573565963, -174.52434524345244 -4.6649819437060103, -174.50274502745026 "
       "-4.6869334482144893, -174.49914499144992 -4.690310602754252))",
       0.000127657718}};
  for (const auto& [why, wkt, area] : cases) {
    Write("p.wkt", wkt);
    for (const std::string command : {"triangulate", "union", "triangulate --delaunay"}) {
      const Outcome outcome = Run(command + " @/p.wkt -o @/out.wkt");
      EXPECT_NEAR(Look("out.wkt").area, area, area * 1e-5) << why << outcome.text;
    }
  }
}

// A chain through standard input and output; whole numbers stay; a grid that is given decides.
TEST_F(ToolTest, KeepsGridPointsAndSpeaksThroughPipes) {
  Write("frame.wkt", "POLYGON ((0 0, 4 0, 4 4, 0 4, 0 0), (1 1, 2 1, 2 2, 1 2, 1 1))");
  Write("fine.wkt", "POLYGON ((0.3 0, 4.7 0, 4.7 3, 0.3 3, 0.3 0))");
  Write("wide.wkt", "POLYGON ((0 0, 1048575 0, 1048575 1, 0 1, 0 0))");
  Write("twice.wkt", "POLYGON ((0 0, 4 0, 4 4, 0 4, 0 0, 2 0, 2 2, 0 2, 0 0))");
  const std::string pipe = " -o - 2>/dev/null | " + std::string(kWithGeos);
  struct Case {
    std::string arguments;
    double area;
  };
  const Case cases[] = {
      {"triangulate @/frame.wkt -o @/out.wkt", 15},
      {"union @/frame.wkt" + pipe + " triangulate - -o @/out.wkt", 15},
      {"union @/frame.wkt --format wkt" + pipe + " xor - @/frame.wkt -o @/out.wkt", 0},
      {"union @/fine.wkt --grid 1 -o @/out.wkt", 15},
      {"union @/wide.wkt --grid 1 -o @/out.wkt", 1048575},
      {"triangulate @/fine.wkt --grid 2 -o @/out.wkt", 16},
      {"union @/twice.wkt --repair -o @/out.wkt", 12},
      {"union @/twice.wkt --repair --fill non-zero -o @/out.wkt", 16},
  };
  for (const auto& [arguments, area] : cases) {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.status, 0) << arguments << outcome.text;
    EXPECT_EQ(Look("out.wkt").area, area) << arguments << outcome.text;
  }
  EXPECT_NE(Run("union @/fine.wkt --grid 0.5").text.find("grid: a step of 0.5\n"),
            std::string::npos);
}

TEST_F(ToolTest, ReadsEveryShapeOfFile) {
  const std::string square =
      R"({"type":"Polygon","coordinates":[[[0,0],[1,0],[1,1],[0,1],[0,0]]]})";
  const std::map<std::string, std::pair<std::string, std::string>> files{
      {"geometry.json", {square, "1"}},
      {"feature.GeoJSON",
       {R"({"type":"Feature","properties":null,"geometry":)" + square + "}", "1"}},
      {"deep.geojson",
       {R"({"type":"GeometryCollection","geometries":[)" + square +
            R"(,{"type":"GeometryCollection","geometries":[)" + square + "]}]}",
        "2"}},
      {"z.wkt",
       {"SRID=4326;POLYGON Z ((0 0 5, 1 0 6, 1 1 7, 0 1 8, 0 0 5))\r\n# a remark\r\n", "1"}},
      {"lines.wkt",
       {"MULTIPOLYGON (\n  ((0 0, 1 0, 1 1, 0 1, 0 0)),\n"
        "  ((2 0, 3 0, 3 1, 2 1, 2 0))\n)\nPOLYGON\n((0 0, 1 0, 1 1, 0 1, 0 0))",
        "3"}}};
  for (const auto& [file, content] : files) {
    Write(file, content.first);
    const Outcome outcome = Run("triangulate @/" + file);
    EXPECT_EQ(outcome.status, 0) << file << '\n' << outcome.text;
    EXPECT_EQ(outcome.Cell(kAreaOut), content.second) << file << '\n' << outcome.text;
  }
}

// The faces of an .obj file, a polygon on each line.
std::string WktOf(const std::string& obj) {
  std::string wkt;
  std::vector<std::string> vertices;
  std::istringstream lines(obj);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string kind, a, b, c;
    words >> kind >> a >> b >> c;
    const auto at = [&](const std::string& number) { return vertices.at(std::stoul(number) - 1); };
    if (kind == "v") vertices.push_back(a + ' ' + b);
    if (kind != "f") continue;
    wkt += "POLYGON ((" + at(a) + ", " + at(b) + ", " + at(c) + ", " + at(a) + "))\n";
  }
  return wkt;
}

// Area, corners and counts by two readers that share nothing with the program.
TEST_F(ToolTest, WritesTrianglesThatAreThePolygons) {
  const Outcome outcome = Run("triangulate " + kCountries +
                              " --only Brazil,Norway,Fiji -o @/t.geojson -o @/t.obj -o @/t.wkt");
  ASSERT_EQ(outcome.status, 0) << outcome.text;
  const Geometry geojson = Look("t.geojson");
  EXPECT_TRUE(geojson.valid);
  EXPECT_EQ(geojson.triangles, geojson.polygons);
  EXPECT_EQ(std::to_string(geojson.triangles), outcome.Cell(kTriangles));
  // Half a step of the grid along every contour: far below 1e-5 square degrees
  // for each degree of coast.
  EXPECT_NEAR(geojson.area, std::stod(outcome.Cell(kAreaIn)), 1e-3);
  EXPECT_NEAR(geojson.area, std::stod(outcome.Cell(kAreaOut)), 1e-5);

  Write("obj.wkt", WktOf(Read("t.obj")));
  for (const char* file : {"obj.wkt", "t.wkt"}) {
    EXPECT_TRUE(Look(file).valid);
    EXPECT_EQ(Look(file).triangles, geojson.triangles);
    EXPECT_NEAR(Look(file).area, geojson.area, 1e-9);
  }
  const std::string obj = Read("t.obj");
  std::size_t groups = 0;
  for (std::size_t i = 0; (i = obj.find("\ng ", i) + 1) != 0;) ++groups;
  EXPECT_EQ(std::to_string(groups), outcome.Cell(kPolygons));
  EXPECT_EQ(Look("t.wkt").lines, groups);
  EXPECT_NE(Read("t.geojson").find(R"("name":"Norway")"), std::string::npos);
}

// From the lower left corner the contour goes right, then up: a step with a negative y.
TEST_F(ToolTest, DrawsThePictureUpright) {
  Write("house.wkt", "POLYGON ((0 0, 10 0, 10 6, 5 9, 0 6, 0 0))");
  for (const std::string command : {"triangulate", "union --triangles"}) {
    ASSERT_EQ(Run(command + " @/house.wkt -o @/house.svg").status, 0);
    const std::string svg = Read("house.svg");
    const auto path = [&](const std::string& name) {
      const std::size_t at = std::min(svg.find("<path class=\"" + name), svg.size());
      return svg.substr(at, svg.find("/>", at) - at);
    };
    const std::string diagonals = path("diagonal");
    EXPECT_EQ(std::count(diagonals.begin(), diagonals.end(), 'M'), 2);
    const std::string contour = path("contour");
    int right = 0;
    int up = 0;
    const std::string d = contour.substr(contour.find(" d="));
    EXPECT_EQ(std::sscanf(d.c_str(), " d=\"M%*d %*dl%d 0 0%d", &right, &up), 2) << contour;
    EXPECT_GT(right, 0);
    EXPECT_LT(up, 0);
    EXPECT_EQ(svg.substr(svg.size() - 7), "</svg>\n");
  }
}

TEST_F(ToolTest, RespectsHolesOnBothSides) {
  // A frame with a block inside, a block apart, and a bridge between them that
  // shares an edge with each.
  Write("frame.wkt",
        "POLYGON ((0 0, 10 0, 10 10, 0 10, 0 0), (2 2, 2 8, 8 8, 8 2, 2 2))\n"
        "POLYGON ((3 3, 4 3, 4 4, 3 4, 3 3))\n"
        "POLYGON ((20 0, 30 0, 30 10, 20 10, 20 0))\n"
        "POLYGON ((10 4, 20 4, 20 6, 10 6, 10 4))\n");
  // Covers the left of it all, but for a window.
  Write("window.wkt", "POLYGON ((-1 -1, 12 -1, 12 12, -1 12, -1 -1), (1 1, 9 1, 9 9, 1 9, 1 1))\n");
  struct Case {
    const char* arguments;
    std::size_t polygons;
    std::size_t holes;
    double area;
  };
  const Case cases[] = {
      {"union @/frame.wkt", 2, 1, 185},
      {"union @/window.wkt", 1, 1, 105},
      {"union @/frame.wkt @/window.wkt", 2, 1, 105 + 28 + 1 + 116},  // 28: the frame's share
      {"subtract @/frame.wkt @/window.wkt", 3, 1, 28 + 1 + 116},
      {"subtract @/window.wkt @/frame.wkt", 1, 0, 105 - 36 - 4},
      {"subtract @/frame.wkt @/frame.wkt", 0, 0, 0},
      {"intersect @/frame.wkt @/window.wkt", 1, 1, 36 + 4},
      {"intersect @/frame.wkt @/window.wkt @/frame.wkt", 1, 1, 36 + 4},
      {"xor @/window.wkt @/frame.wkt", 4, 1, 105 + 185 - 2 * 40},
      {"xor @/frame.wkt @/window.wkt @/frame.wkt", 1, 1, 105},
  };
  for (const auto& [arguments, polygons, holes, area] : cases) {
    const Outcome outcome =
        Run(std::string(arguments) + " -o @/region.geojson -o @/region.wkt -o @/region.obj");
    EXPECT_EQ(outcome.status, 0) << arguments << '\n' << outcome.text;
    for (const char* file : {"region.geojson", "region.wkt"}) {
      const Geometry seen = Look(file);
      EXPECT_TRUE(seen.valid) << arguments << '\n' << Read(file);
      EXPECT_EQ(seen.polygons, polygons) << arguments << '\n' << Read(file);
      EXPECT_EQ(seen.holes, holes) << arguments << '\n' << Read(file);
      EXPECT_EQ(seen.area, area) << arguments;  // whole numbers lie on the grid
    }
    Write("obj.wkt", WktOf(Read("region.obj")));
    Run(std::string(arguments) + " --triangles -o @/cut.geojson");
    for (const char* file : {"obj.wkt", "cut.geojson"}) {
      EXPECT_EQ(Look(file).triangles, Look(file).polygons);
      EXPECT_DOUBLE_EQ(Look(file).area, area) << arguments;
    }
  }
}

// Neighbours share their borders vertex by vertex: nothing of them may be left.
TEST_F(ToolTest, MakesOneOutlineOfNeighbours) {
  const std::string only = kCountries + " --only Bolivia,Paraguay,Uruguay,Zambia";
  const Outcome apart = Run("triangulate " + only);
  for (const char* program : {kWithGeos, kWithoutGeos}) {
    EXPECT_EQ(Run("union " + only + " -o @/region.geojson", program).status, 0);
    const Geometry region = Look("region.geojson");
    EXPECT_TRUE(region.valid);
    EXPECT_EQ(region.polygons, 3U);  // Bolivia and Paraguay are one
    EXPECT_EQ(region.holes, 0U);
    EXPECT_NEAR(region.area, std::stod(apart.Cell(kAreaOut)), 1e-2);
  }
}

}  // namespace
