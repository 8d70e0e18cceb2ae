// Everything the flat interface returns, and regions (results.h). Inputs are built from integers
// and fixed data, without a mathematics function that could differ.
#include <zelvan/region.h>
#include <zelvan/zelvan.h>

#include "results.h"
#include "support/geojson_rings.h"
#include "support/random.h"

namespace same_bytes {

namespace {

using zelvan::test::Random;
using Xyz = std::vector<double>;

int Call(int (*function)(int, const double*), const Xyz& xyz) {
  return function(static_cast<int>(xyz.size()), xyz.data());
}

// Every query, whatever state the workspace is in, before and after it is cut.
void AddState(Hash& hash) {
  for (const bool cut : {false, true}) {
    if (cut) hash.Add(Triangulate());
    int counts[3] = {0, 0, 0};
    hash.Add(GetCounts(&counts[0], &counts[1], &counts[2]), GetContourCount());
    Xyz vertices(3 * static_cast<std::size_t>(counts[0]));
    std::vector<int> edges(3 * static_cast<std::size_t>(counts[1]));
    std::vector<int> faces(3 * static_cast<std::size_t>(counts[2]));
    hash.Add(GetVertices(vertices.data()), GetEdges(edges.data()), GetFaces(faces.data()));
    hash.Add(vertices, edges, faces);
    for (int i = -1; i <= GetContourCount(); ++i) hash.Add(GetContourIndex(i), GetContourSize(i));
  }
}

void AddMain(const Xyz& xyz, Hash& hash, Hash& input) {
  input.Add(xyz);
  hash.Add(Call(SetMainContour, xyz));
  AddState(hash);
}

// A step of a chain: contours queued, united or subtracted, all read back.
void AddStep(const std::vector<Xyz>& contours, bool subtract, Hash& hash) {
  for (const Xyz& xyz : contours) hash.Add(Call(SetHole, xyz));
  hash.Add(subtract ? Substruct() : Union());
  AddState(hash);
}

zelvan::Region RegionOf(const std::vector<Xyz>& contours, zelvan::FillRule rule) {
  std::vector<zelvan::Ring> rings;
  for (const Xyz& xyz : contours) {
    rings.emplace_back();
    for (std::size_t i = 0; i < xyz.size(); i += 3) rings.back().push_back({xyz[i], xyz[i + 1]});
  }
  return zelvan::Region(rings, rule);
}

void AddRegion(const zelvan::Region& region, Hash& hash) {
  for (const bool delaunay : {false, true}) {
    const zelvan::Mesh mesh = zelvan::Triangulate(region, {delaunay});
    hash.Add(mesh.vertices, mesh.triangles, mesh.neighbours);
  }
  hash.Add(region.Area(), region.HoleCount());
}

// Rational points of the circle run around it once as t rises, a quarter per unit.
Xyz Star(Random& random, int n) {
  const double least = random.Below(2) == 0 ? 0.05 : 1.0;
  Xyz xyz;
  for (int i = 0; i < n; ++i) {
    const double t = (i + 0.5) / n * 4 - 2;
    const bool left = t < -1 || t > 1;
    const double s = !left ? t : t < 0 ? -2 - t : 2 - t;
    const double r = 1000 * random.Between(least, 1.0) / (1 + s * s);
    xyz.insert(xyz.end(), {r * (1 - s * s) * (left ? -1 : 1), r * 2 * s, random.Unit()});
  }
  return xyz;
}

// A star, or few points of a small lattice: repeated ones, spikes, crossings, zero areas.
Xyz Contour(Random& random) {
  if (random.Below(3) > 0) return Star(random, random.Between(3, 200));
  Xyz xyz(static_cast<std::size_t>(3 * random.Between(3, 9)));
  for (double& v : xyz) v = random.Between(0, 5);
  return xyz;
}

Xyz Moved(Xyz xyz, double factor, double dx, double dy) {
  for (std::size_t i = 0; i < xyz.size(); ++i) {
    xyz[i] = xyz[i] * factor + (i % 3 == 0 ? dx : i % 3 == 1 ? dy : 0);
  }
  return xyz;
}

// The rings of the map as they are, and each country as a chain.
void AddCountries(const std::string& file, Hashes& hashes) {
  for (const support::Country& country : support::ReadCountries(file)) {
    Call(SetMainContour, {});
    for (const bool chain : {false, true}) {
      for (const support::RingPolygon& polygon : country.polygons) {
        for (const support::Ring& ring : polygon) {
          const Xyz xyz = Moved(ring, 4096, 0, 0);  // keeps the decimals as they were read
          const bool first = &polygon == &country.polygons.front() && &ring == &polygon.front();
          if (chain && !first) {
            AddStep({xyz}, &ring != &polygon.front(), hashes["countries"]);
            continue;
          }
          AddMain(xyz, hashes["rings"], hashes["input"]);
        }
      }
    }
  }
}

// Contours of every size, from the smallest that are not swallowed by the tolerance.
void AddSized(Random& random, Hashes& hashes) {
  double factor = random.Below(4) == 0 ? 0x1p-12 : 1;
  for (int k = random.Between(0, 60); k > 0; --k) factor *= 16;
  const double shift = factor * random.Between(-5000, 5000);
  for (const Xyz& xyz : {Contour(random), Moved(Contour(random), factor, shift, 0)}) {
    AddMain(xyz, hashes["sized"], hashes["input"]);
  }
}

// Polygons of some contours in turn, in both interfaces.
void AddChain(Random& random, Hash& flat, Hash& regions) {
  const Xyz start = Star(random, 30);
  flat.Add(Call(SetMainContour, start));
  zelvan::Region region = RegionOf({start}, zelvan::FillRule::EvenOdd);
  for (int step = 0; step < 12; ++step) {
    std::vector<Xyz> contours;
    for (int k = random.Between(1, 3); k > 0; --k) {
      const double by[] = {random.Between(0.1, 2.0), double(random.Between(-900, 900)),
                           double(random.Between(-900, 900))};  // in this order
      contours.push_back(Moved(Contour(random), by[0], by[1], by[2]));
    }
    AddStep(contours, random.Below(2) == 0, flat);
    zelvan::Region other = RegionOf(contours, zelvan::FillRule(step % 4));
    const zelvan::Grid grid = CommonGrid(region, other);  // whatever is lost there
    region = region.OnGrid(grid);
    other = other.OnGrid(grid);
    region = step % 3 == 0 ? region - other : step % 3 == 1 ? region ^ other : region | other;
    AddRegion(region, regions);
  }
}

}  // namespace

void AddPolygons(const std::string& dataFolder, Hashes& hashes) {
  for (const char* file : {"/countries-50m.geojson", "/stitched-50m.geojson"}) {
    AddCountries(dataFolder + file, hashes);
  }
  for (std::uint64_t seed = 1; seed <= 300; ++seed) {
    Random random(seed);
    AddSized(random, hashes);
    if (seed <= 40) AddChain(random, hashes["chains"], hashes["regions"]);
  }
}

}  // namespace same_bytes
