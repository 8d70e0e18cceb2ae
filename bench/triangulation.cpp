#include "triangulation.h"

#include <cstdio>
#include <exception>

#include "countries.h"

namespace bench {
namespace {

struct Family {
  std::string name;
  std::vector<int> sizes;
  std::function<Scene(int)> scene;
};

std::vector<Family> Families(const std::string& countries, bool quick) {
  const std::pair<const char*, Xyz (*)(int)> contours[] = {
      {"coast", [](int n) { return Coast(n); }},
      {"star", [](int n) { return Star(n); }},
      {"circle", Circle},
      {"comb", Comb},
      {"comb 30°", TurnedComb},
      {"spiral", Spiral}};
  std::vector<int> sizes{100, 1000, 10000};
  std::vector<int> sides{3, 10, 30};
  if (!quick) {
    sizes.insert(sizes.end(), {100000, 1000000});
    sides.push_back(100);
  }
  std::vector<Family> families;
  for (const auto& [name, contour] : contours) {
    families.push_back({name, sizes, [contour = contour](int n) { return Scene{{contour(n)}}; }});
  }
  families.push_back({"holes", sides, [](int k) { return Scene{SquareHoles(k)}; }});
  families.push_back({"countries", {1}, [countries](int) { return Countries(countries); }});
  return families;
}

double Vertices(const Scene& scene) {
  double vertices = 0.0;
  for (const Polygon& polygon : scene) {
    for (const Xyz& contour : polygon) vertices += static_cast<double>(contour.size() / 3);
  }
  return vertices;
}

Expected ExpectedOf(const Scene& scene, double gridSteps) {
  Expected expected;
  for (const Polygon& polygon : scene) {
    const double area = Area(polygon);
    expected.area += area;
    expected.tolerance += 1e-9 * area + GridTolerance(polygon, gridSteps);
  }
  return expected;
}

/// Rows of one engine stand for steps of one road: where one fails, the later ones of
/// this size are not tried either.
void RunFamily(const Family& family, const std::vector<Row>& rows, const Limits& limits) {
  std::vector<Ladder> ladders(rows.size(), Ladder(limits));
  for (const int size : family.sizes) {
    const Scene scene = family.scene(size);
    const double vertices = Vertices(scene);
    bool tries = true;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      Outcome outcome;
      tries = tries && ladders[i].Tries(vertices);
      if (tries) {
        outcome = rows[i].measure(scene, limits);
        ladders[i].Saw(vertices, outcome);
        tries = outcome.status == "ok";
      } else {
        outcome.status = "skipped";
      }
      Print("triangulation", rows[i].name, family.name, size, vertices, outcome,
            ExpectedOf(scene, rows[i].gridSteps));
    }
  }
}

}  // namespace

int RunTriangulation(int argc, char** argv, const std::vector<Row>& rows) try {
  Require(argc >= 2, "arguments: countries.geojson [--quick]");
  const bool quick = argc > 2 && std::string(argv[2]) == "--quick";
  const Limits limits = LimitsFor(quick);
  for (const Family& family : Families(argv[1], quick)) RunFamily(family, rows, limits);
  return 0;
} catch (const std::exception& problem) {
  std::fprintf(stderr, "%s: %s\n", argv[0], problem.what());
  return 2;
}

}  // namespace bench
