// zelvan union and zelvan subtract, with GEOS as the judge of the result.
#include <sstream>

#include "runner.h"

namespace {

constexpr const char* kCountries = ZELVAN_DATA_DIR "/countries-50m.geojson";

// A frame with a block inside, a block apart, and a bridge between them that
// shares an edge with each.
constexpr const char* kFrame =
    "POLYGON ((0 0, 10 0, 10 10, 0 10, 0 0), (2 2, 2 8, 8 8, 8 2, 2 2))\n"
    "POLYGON ((3 3, 4 3, 4 4, 3 4, 3 3))\n"
    "POLYGON ((20 0, 30 0, 30 10, 20 10, 20 0))\n"
    "POLYGON ((10 4, 20 4, 20 6, 10 6, 10 4))\n";
// Covers the left of it all, but for a window.
constexpr const char* kWindow =
    "POLYGON ((-1 -1, 12 -1, 12 12, -1 12, -1 -1), (1 1, 9 1, 9 9, 1 9, 1 1))\n";

class CombineTest : public ToolTest {
 protected:
  void SetUp() override {
    ToolTest::SetUp();
    Write("frame.wkt", kFrame);
    Write("window.wkt", kWindow);
  }

  Geometry Combine(const std::string& arguments, const std::string& output) {
    const Outcome outcome = Run(arguments + " -o @/" + output);
    EXPECT_EQ(outcome.status, 0) << arguments << '\n' << outcome.text;
    const Geometry seen = Look(output);
    EXPECT_TRUE(seen.readable && seen.valid) << arguments << '\n' << Read(output);
    return seen;
  }
};

TEST_F(CombineTest, RespectsHolesOnBothSides) {
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
  };
  for (const auto& [arguments, polygons, holes, area] : cases) {
    for (const char* file : {"region.geojson", "region.wkt"}) {
      const Geometry seen = Combine(arguments, file);
      EXPECT_EQ(seen.polygons, polygons) << arguments << '\n' << Read(file);
      EXPECT_EQ(seen.holes, holes) << arguments << '\n' << Read(file);
      EXPECT_EQ(seen.area, area) << arguments;  // whole numbers lie on the grid
    }
    const Geometry triangles = Combine(std::string(arguments) + " --triangles", "cut.geojson");
    EXPECT_EQ(triangles.triangles, triangles.polygons);
    EXPECT_DOUBLE_EQ(triangles.area, area) << arguments;
  }
}

// Neighbours share their borders vertex by vertex: nothing of them may be left.
TEST_F(CombineTest, MakesOneOutlineOfNeighbours) {
  const std::string only = std::string(kCountries) + " --only Bolivia,Paraguay,Uruguay,Zambia";
  const Geometry apart = Combine("triangulate " + only, "apart.geojson");
  const Geometry region = Combine("union " + only, "region.geojson");
  EXPECT_EQ(region.polygons, 3U);  // Bolivia and Paraguay are one
  EXPECT_EQ(region.holes, 0U);
  EXPECT_NEAR(region.area, apart.area, 1e-2);
}

TEST_F(CombineTest, NamesWhatItRefusesAndCombinesTheRest) {
  Write("knot.wkt",
        "POLYGON ((0 0, 2 2, 2 0, 0 2, 0 0))\nPOLYGON ((0 0, 1 0, 1 nan, 0 0))\n"
        "POLYGON ((5 5, 6 5, 6 6, 5 6, 5 5))\nPOINT (1 1)\n");
  const Outcome outcome = Run("union @/knot.wkt -o @/rest.wkt");
  EXPECT_EQ(outcome.status, 1);
  for (const char* line :
       {"feature 1: not usable: Self-intersection",
        "feature 2: not usable: a coordinate is not finite", "feature 4: a Point is no polygon"}) {
    EXPECT_NE(outcome.text.find(line), std::string::npos) << line << '\n' << outcome.text;
  }
  EXPECT_EQ(Look("rest.wkt").area, 1);
  EXPECT_EQ(Run("subtract @/frame.wkt @/missing.wkt").status, 2);
  EXPECT_EQ(Run("subtract @/frame.wkt").status, 2);
}

}  // namespace
