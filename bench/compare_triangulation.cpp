// Triangulations by the library and by its peers, on the same coordinates: one line
// for each entry (harness.h says what is in it).
//
//   bench_compare_triangulation COUNTRIES.geojson [--quick] [FAMILY]
#include <zelvan/zelvan.h>

#include <cstdio>
#include <string>
#include <vector>

#include "areas.h"
#include "countries.h"
#include "harness.h"
#include "peers/triangulators.h"

namespace {

using namespace bench;

const std::vector<Engine<TriangulationWork>> kEngines = {
    {"SetMainContour", ZelvanSetMainContour},
    {"Triangulate", ZelvanTriangulate},
    {"points to arrays", ZelvanAll},
#ifdef ZELVAN_BENCH_CGAL
    {"CGAL", CgalTriangulation},
#endif
#ifdef ZELVAN_BENCH_EARCUT
    {"earcut", EarcutTriangulation},
#endif
#ifdef ZELVAN_BENCH_GLU
    {"GLU", GluTriangulation},
#endif
#ifdef ZELVAN_BENCH_GEOS
    {"GEOS", GeosTriangulation},
#endif
};

void Compare(Harness& harness, const std::string& family, long long size,
             const TriangulationWork& work) {
  std::vector<Xyz> contours;
  std::size_t vertices = 0;
  for (const Polygon& polygon : work.polygons) {
    contours.push_back(polygon.outer);
    contours.insert(contours.end(), polygon.holes.begin(), polygon.holes.end());
  }
  for (const Xyz& contour : contours) vertices += VertexCount(contour);
  const Expected expected{AreaOf(work.polygons), GridTolerance(contours)};
  for (const auto& engine : kEngines) {
    harness.Measure({"triangulation", family, size, vertices, engine.name}, expected,
                    [&] { return engine.make(work); });
  }
}

// Two combs with their teeth across each other are the square with its holes.
TriangulationWork WorkWithHoles(int k) {
  Xyz comb;
  for (int i = 0; i < k; ++i) {
    Add(comb, 2 * i, 0);
    Add(comb, 2 * i + 1, 0);
    Add(comb, 2 * i + 1, 2 * k);
    Add(comb, 2 * i + 2, 2 * k);
  }
  Add(comb, 2 * k, 0);
  Add(comb, 2 * k + 1, 0);
  Add(comb, 2 * k + 1, 2 * k + 1);
  Add(comb, 0, 2 * k + 1);
  Xyz across = comb;
  for (std::size_t i = 0; i < across.size(); i += 3) std::swap(across[i], across[i + 1]);
  return {{{Box(0, 0, 2 * k + 1, 2 * k + 1), Holes(k)}}, {comb, across}};
}

// Without those that the library refuses: they cross or touch themselves.
std::vector<Polygon> Accepted(const std::vector<Polygon>& polygons) {
  std::vector<Polygon> accepted;
  for (const Polygon& polygon : polygons) {
    bool sound = true;
    for (const Xyz& hole : polygon.holes) {
      sound = sound && SetMainContour(static_cast<int>(hole.size()), hole.data()) == 1;
    }
    sound =
        sound && SetMainContour(static_cast<int>(polygon.outer.size()), polygon.outer.data()) == 1;
    if (sound && Triangulate() == 1) accepted.push_back(polygon);
  }
  std::fprintf(stderr, "countries: %zu polygons, %zu of them refused\n", polygons.size(),
               polygons.size() - accepted.size());
  SetMainContour(0, nullptr);
  return accepted;
}

}  // namespace

int main(int argc, char** argv) {
  bool quick = false;
  std::string only;
  for (int i = 2; i < argc; ++i) {
    if (std::string(argv[i]) == "--quick") {
      quick = true;
    } else {
      only = argv[i];
    }
  }
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s COUNTRIES.geojson [--quick] [FAMILY]\n", argv[0]);
    return 2;
  }
  Harness harness(quick ? 1.5 : 8, only);
  const std::pair<const char*, Xyz (*)(int)> families[] = {{"coast", Coast},
                                                           {"star", Star},
                                                           {"circle", Circle},
                                                           {"comb", Comb},
                                                           {"comb at 30 degrees", SlantedComb},
                                                           {"spiral", Spiral}};
  for (const auto& [name, family] : families) {
    for (int n = 100; n <= (quick ? 10000 : 1000000); n *= 10) {
      Compare(harness, name, n, {{{family(n), {}}}, {}});
    }
  }
  for (int k : {3, 10, 30, 100}) {
    if (!quick || k < 30) Compare(harness, "k x k holes", k, WorkWithHoles(k));
  }
  Compare(harness, "countries", 0, {Accepted(ReadCountries(argv[1])), {}});
  return 0;
}
