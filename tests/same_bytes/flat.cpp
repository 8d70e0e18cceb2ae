// Everything the flat interface returns (results.h). Inputs are built from integers
// and fixed data, without a mathematics function that could differ.
#include <zelvan/region.h>
#include <zelvan/zelvan.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "results.h"
#include "support/geojson_rings.h"
#include "support/random.h"

namespace same_bytes {

namespace {

using zelvan::test::Random;
using Xyz = std::vector<double>;

int SetMain(const Xyz& xyz) {
  return SetMainContour(static_cast<int>(xyz.size()), xyz.data());
}

// Every query, whatever state the workspace is in.
void AddState(Hash& hash) {
  int counts[3] = {0, 0, 0};
  hash.Add(GetCounts(&counts[0], &counts[1], &counts[2]));
  std::vector<double> vertices(3 * static_cast<std::size_t>(counts[0]));
  std::vector<int> edges(3 * static_cast<std::size_t>(counts[1]));
  std::vector<int> faces(3 * static_cast<std::size_t>(counts[2]));
  hash.Add(GetVertices(vertices.data())).Add(vertices);
  hash.Add(GetEdges(edges.data())).Add(edges);
  hash.Add(GetFaces(faces.data())).Add(faces);
  hash.Add(GetContourCount());
  for (int i = -1; i <= GetContourCount(); ++i) hash.Add(GetContourIndex(i)).Add(GetContourSize(i));
}

void AddTriangulation(const Xyz& xyz, Hash& hash) {
  hash.Add(SetMain(xyz));
  AddState(hash);
  hash.Add(Triangulate());
  AddState(hash);
}

std::string Word(std::string name) {
  std::replace(name.begin(), name.end(), ' ', '_');
  return name.empty() ? "unnamed" : name;
}

// A power of two keeps the decimals of the file as they were read.
Xyz Scaled(Xyz ring) {
  for (double& v : ring) v *= 4096;
  return ring;
}

// Rational points of the circle run around it once as t rises, a quarter per unit.
Xyz Star(Random& random, int n, bool spread) {
  Xyz xyz;
  for (int i = 0; i < n; ++i) {
    const double t = (i + 0.5) / n * 4 - 2;
    const bool left = t < -1 || t > 1;
    const double s = !left ? t : t < 0 ? -2 - t : 2 - t;
    const double x = (1 - s * s) / (1 + s * s) * (left ? -1 : 1);
    const double y = 2 * s / (1 + s * s);
    const double r = spread ? random.Between(0.05, 1.0) : 1.0;
    xyz.insert(xyz.end(), {1000 * r * x, 1000 * r * y, random.Unit()});
  }
  return xyz;
}

// Few points on a small grid: repeated ones, spikes, crossings, zero areas.
Xyz Tangle(Random& random) {
  Xyz xyz;
  const int n = random.Between(3, 9);
  for (int i = 0; i < n; ++i) {
    xyz.insert(xyz.end(), {double(random.Between(0, 5)), double(random.Between(0, 5)), 0});
  }
  return xyz;
}

// From the smallest numbers that are not swallowed by the tolerance to huge ones.
Xyz Sized(Random& random) {
  Xyz xyz = Star(random, random.Between(3, 40), true);
  double factor = 1;
  for (int k = random.Between(0, 60); k > 0; --k) factor *= 16;
  if (random.Below(4) == 0) factor = 1 / 4096.0;
  const double shift = factor * random.Between(-5000, 5000);
  for (std::size_t i = 0; i < xyz.size(); ++i) xyz[i] = xyz[i] * factor + (i % 3 == 0 ? shift : 0);
  return xyz;
}

using Make = Xyz (*)(Random&);
const std::pair<const char*, Make> kFamilies[] = {
    {"star", [](Random& r) { return Star(r, r.Between(3, 400), true); }},
    {"round", [](Random& r) { return Star(r, r.Between(3, 400), false); }},
    {"tangle", Tangle},
    {"sized", Sized},
};

zelvan::Ring RingOf(const Xyz& xyz) {
  zelvan::Ring ring;
  for (std::size_t i = 0; i < xyz.size(); i += 3) ring.push_back({xyz[i], xyz[i + 1]});
  return ring;
}

void AddRegion(const zelvan::Region& region, Hash& hash) {
  for (const bool delaunay : {false, true}) {
    const zelvan::Mesh mesh = zelvan::Triangulate(region, {delaunay});
    for (const zelvan::Point p : mesh.vertices) hash.Add(p.x).Add(p.y);
    for (const auto& triangle : mesh.triangles)
      hash.Add(triangle[0]).Add(triangle[1]).Add(triangle[2]);
    for (const auto& across : mesh.neighbours) hash.Add(across[0]).Add(across[1]).Add(across[2]);
  }
  hash.Add(region.Area()).Add(region.HoleCount());
}

// One step of a chain: a few contours queued, united or subtracted, all read back.
void AddStep(const std::vector<Xyz>& contours, bool subtract, Hash& hash) {
  for (const Xyz& xyz : contours) hash.Add(SetHole(static_cast<int>(xyz.size()), xyz.data()));
  hash.Add(subtract ? Substruct() : Union());
  AddState(hash);
  hash.Add(Triangulate());
  AddState(hash);
}

Xyz Moved(Xyz xyz, double factor, double dx, double dy) {
  for (std::size_t i = 0; i < xyz.size(); i += 3) {
    xyz[i] = xyz[i] * factor + dx;
    xyz[i + 1] = xyz[i + 1] * factor + dy;
  }
  return xyz;
}

// The polygons of a country with their holes, one after the other into one region.
void AddCountryChain(const support::Country& country, Hash& hash) {
  bool first = true;
  for (const support::RingPolygon& polygon : country.polygons) {
    if (first) {
      hash.Add(SetMain(Scaled(polygon.front())));
    } else {
      AddStep({Scaled(polygon.front())}, false, hash);
    }
    first = false;
    std::vector<Xyz> holes;
    for (std::size_t i = 1; i < polygon.size(); ++i) holes.push_back(Scaled(polygon[i]));
    if (!holes.empty()) AddStep(holes, true, hash);
  }
}

}  // namespace

void AddCountries(const std::string& dataFolder, Results& results) {
  int number = 0;
  for (const char* file : {"/countries-50m.geojson", "/stitched-50m.geojson"}) {
    for (const support::Country& country : support::ReadCountries(dataFolder + file)) {
      const std::string name = std::to_string(++number) + "/" + Word(country.name);
      Hash input;
      Hash hash;
      for (const support::RingPolygon& polygon : country.polygons) {
        for (const support::Ring& ring : polygon) {
          input.Add(ring);
          AddTriangulation(Scaled(ring), hash);
        }
      }
      results.Add("input/" + name, input);
      results.Add("country/" + name, hash);
      Hash chain;
      AddCountryChain(country, chain);
      results.Add("region/" + name, chain);
    }
  }
}

void AddFamilies(Results& results) {
  for (const auto& [name, make] : kFamilies) {
    for (std::uint64_t seed = 1; seed <= 8; ++seed) {
      Random random(seed);
      Hash input;
      Hash hash;
      for (int k = 0; k < 20; ++k) {
        const Xyz xyz = make(random);
        input.Add(xyz);
        AddTriangulation(xyz, hash);
      }
      const std::string numbered = std::string(name) + "/" + std::to_string(seed);
      results.Add("input/" + numbered, input);
      results.Add("family/" + numbered, hash);
    }
  }
}

void AddChains(Results& results) {
  for (std::uint64_t seed = 1; seed <= 40; ++seed) {
    Random random(1000 + seed);
    Hash hash;
    Hash regions;
    const Xyz start = Star(random, 30, true);
    hash.Add(SetMain(start));
    zelvan::Region region({RingOf(start)});
    for (int step = 0; step < 12; ++step) {
      std::vector<Xyz> contours;
      std::vector<zelvan::Ring> rings;
      for (int k = random.Between(1, 3); k > 0; --k) {
        const Xyz xyz = kFamilies[random.Below(std::size(kFamilies) - 1)].second(random);
        const double by[] = {random.Between(0.1, 2.0), double(random.Between(-900, 900)),
                             double(random.Between(-900, 900))};  // in this order
        contours.push_back(Moved(xyz, by[0], by[1], by[2]));
        rings.push_back(RingOf(contours.back()));
      }
      AddStep(contours, random.Below(2) == 0, hash);
      const zelvan::Region other(rings, zelvan::FillRule(step % 4));
      region = step % 3 == 0 ? region - other : step % 3 == 1 ? region ^ other : region | other;
      AddRegion(region, regions);
    }
    results.Add("chain/" + std::to_string(seed), hash);
    results.Add("regions/" + std::to_string(seed), regions);
  }
}

}  // namespace same_bytes
