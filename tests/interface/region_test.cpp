// The guarantees of zelvan/region.h, one test each, under its name.
//
// Most regions here are bitmaps, unions of unit cells: their operations are those of bits, they
// touch themselves and each other in every way, and nothing is rounded.
#include <gtest/gtest.h>
#include <zelvan/region.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <string>
#include <thread>

#include "support/arrangement_oracle.h"
#include "support/failing_allocator.h"
#include "support/flat.h"
#include "support/geojson_rings.h"
#include "support/geos_area.h"
#include "support/mesh_checker.h"

namespace {

using zelvan::Grid;
using zelvan::Mesh;
using zelvan::Point;
using zelvan::Polygon;
using zelvan::Region;
using zelvan::Ring;
using zelvan::Side;
using zelvan::test::Random;

constexpr int kCells = 9;  // a side

struct Bitmap {
  std::vector<bool> bits = std::vector<bool>(kCells * kCells);

  [[nodiscard]] bool At(int x, int y) const {
    return x >= 0 && y >= 0 && x < kCells && y < kCells &&
           bits[static_cast<std::size_t>(y * kCells + x)];
  }
};

Bitmap RandomBitmap(Random& random) {
  Bitmap map;
  const int density = 1 + random.Below(7);
  for (std::size_t i = 0; i < map.bits.size(); ++i) map.bits[i] = random.Below(8) < density;
  return map;
}

// In three ways, which must give one value.
Region RegionOf(const Bitmap& map, Random& random) {
  std::vector<Ring> rings;
  std::vector<Region> cells;
  for (int y = 0; y < kCells; ++y) {
    for (int x = 0; x < kCells; ++x) {
      if (!map.At(x, y)) continue;
      const double l = x, b = y;
      Ring ring = {{l, b}, {l + 1, b}, {l + 1, b + 1}, {l, b + 1}};
      if (random.Below(2) == 0) std::reverse(ring.begin(), ring.end());
      std::rotate(ring.begin(), ring.begin() + random.Below(4), ring.end());
      rings.push_back(ring);
      cells.push_back(Region({ring}, zelvan::FillRule::EvenOdd, Grid()));
    }
  }
  random.Shuffle(rings);
  const Region united = zelvan::Unite(cells);
  EXPECT_EQ(united, zelvan::Unite(rings, Grid()));
  EXPECT_EQ(united, Region(rings, zelvan::FillRule::EvenOdd, Grid()));
  return united;
}

support::WorldAreas AreasOf(const Region& region) {
  support::WorldAreas areas;
  const auto ringOf = [](const Ring& ring) {
    support::WorldRing out;
    for (const Point p : ring) out.push_back({p.x, p.y});
    return out;
  };
  for (const Polygon& polygon : region.Polygons()) {
    areas.push_back({ringOf(polygon.outer)});
    for (const Ring& hole : polygon.holes) areas.back().push_back(ringOf(hole));
  }
  return areas;
}

Region Combine(const Region& a, const Region& b, int op) {
  return op == 0 ? a | b : op == 1 ? a & b : op == 2 ? a - b : a ^ b;
}

TEST(RegionGuarantee, GridPointsAreExact) {
  for (std::uint64_t seed = 0; seed < 2000; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const double step = std::ldexp(1.0, random.Between(-480, 480));
    const double x = step * std::floor(random.Between(-0x1p52, 0x1p52));
    const double y = step * std::floor(random.Between(-0x1p20, 0x1p20));
    const Grid grid({x, y}, step);
    const auto near = [&](double origin, double index) { return origin + index * step; };
    const double far = 1048575;
    const Ring exact = {{x, y}, {near(x, far), y}, {near(x, far - random.Below(99)), near(y, far)}};
    const Region region({exact}, zelvan::FillRule::NonZero, grid);
    ASSERT_EQ(region.Polygons().at(0).outer, exact);
    EXPECT_EQ(region.Grid(), grid);
    EXPECT_EQ(region.Area(), far * far / 2 * step * step);

    // Off the grid: the nearest points, of two the upper one.
    const Grid unit({std::floor(random.Between(-1e6, 1e6)), -7}, 1);
    const Point o = unit.Origin();
    Ring ring = {{o.x + random.Between(0.0, 400.0), -7 + random.Between(0.0, 99.0)},
                 {o.x + random.Between(600.0, 900.0), random.Below(99) - 6.5},
                 {o.x + random.Between(0.0, 900.0), -7 + random.Between(200.0, 999.0)}};
    const auto snapped = Region({ring}, zelvan::FillRule::NonZero, unit).Vertices();
    for (Point& p : ring) p = {std::floor(p.x + 0.5), std::floor(p.y + 0.5)};
    EXPECT_TRUE(std::is_permutation(snapped.begin(), snapped.end(), ring.begin(), ring.end()));

    // The covering grid holds its box; one with half the step would not, or is too far from 0.
    const double size = std::ldexp(random.Unit(), random.Between(-300, 300));
    const double at = random.Below(2) * std::ldexp(random.Unit(), random.Between(-300, 300));
    const zelvan::Box box{{at, -size}, {at + random.Unit() * size, random.Unit() * size}};
    const Grid cover = Grid::Covering(box);
    EXPECT_NO_THROW(Region({{box.min, box.max}}, zelvan::FillRule::NonZero, cover));
    const double extent = std::max(box.max.x - box.min.x, box.max.y - box.min.y);
    const double farthest = std::max(box.max.x, size);
    EXPECT_TRUE(extent / cover.Step() > 0x1p19 - 3 || farthest / cover.Step() > 0x1p50);
  }
  const Ring whole = {{0, 0}, {1000003, 0}, {1, 999983}};
  EXPECT_EQ(zelvan::Unite(std::vector<Ring>{whole}), Region({whole}));
  EXPECT_EQ(Region({whole}).Polygons().at(0).outer, whole);
}

Region FromRings(const oracle::Rings& rings, oracle::Rule rule) {
  std::vector<Ring> out(rings.size());
  for (std::size_t i = 0; i < rings.size(); ++i) {
    for (const auto& [x, y] : rings[i]) out[i].push_back({double(x), double(y)});
  }
  return Region(out, zelvan::FillRule(rule), Grid());
}

oracle::Areas OracleAreas(const Region& region) {
  oracle::Areas areas;
  for (const auto& rings : AreasOf(region)) {
    areas.emplace_back();
    for (const auto& ring : rings) {
      areas.back().emplace_back();
      for (const auto p : ring) areas.back().back().push_back({int(p.x), int(p.y)});
    }
  }
  return areas;
}

// Where a point lies, in whole numbers: every edge in turn, against a ray to the right.
Side SideOf(const oracle::Areas& areas, oracle::Point twice) {
  bool inside = false;
  for (const oracle::Ring& ring : zelvan::test::Flatten(areas)) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const oracle::Point p = ring[i], q = ring[(i + 1) % ring.size()];
      const std::int64_t ax = 2 * p.x - twice.x, ay = 2 * p.y - twice.y;
      const std::int64_t bx = 2 * q.x - twice.x, by = 2 * q.y - twice.y;
      const std::int64_t cross = ax * by - ay * bx;
      if (cross == 0 && ax * bx <= 0 && ay * by <= 0) return Side::Boundary;
      if ((ay > 0) != (by > 0) && (cross > 0) == (by > ay)) inside = !inside;
    }
  }
  return inside ? Side::Inside : Side::Outside;
}

// Rings that cross, repeat and turn back, under every rule, and then the operations on what
// they make: each step the oracle's region, edge for edge.
TEST(RegionGuarantee, AnyRingsMakeARegion) {
  const auto expect = [](const Region& region, const oracle::Rings& a, const oracle::Rings& b,
                         int op, oracle::Rule rule) {
    const oracle::Arrangement snapped = oracle::Snap(a, b);
    EXPECT_TRUE(oracle::Cut(OracleAreas(region), snapped.hot) ==
                oracle::BoundaryOf(snapped, op, {rule, rule}))
        << "operation " << op << ", rule " << int(rule) << " of " << zelvan::test::Text(a)
        << " and " << zelvan::test::Text(b) << " gives "
        << zelvan::test::Text(zelvan::test::Flatten(OracleAreas(region)));
    EXPECT_EQ(support::InvalidityByGeos(AreasOf(region)), "");
    EXPECT_EQ(zelvan::test::CheckMeshes(region), "");
    for (std::int64_t i = 0; i < 8; ++i) {
      const oracle::Point twice{a[0][0].gx + 3 * i - 9, a[0][0].gy + (i * i) % 7 - 3};
      EXPECT_EQ(region.Contains({double(twice.x) / 2, double(twice.y) / 2}),
                SideOf(OracleAreas(region), twice));
    }
  };
  for (std::uint64_t seed = 0; seed < 3000; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const std::int32_t size = 3 + random.Below(seed % 8 == 0 ? 30 : 9);
    const oracle::Rings a = zelvan::test::Mess(random, size, 1 + random.Below(6), {});
    const oracle::Rings b = zelvan::test::Mess(random, size, 1 + random.Below(6), a);
    const auto rule = oracle::Rule(random.Below(4));
    const Region regionA = FromRings(a, rule);
    const Region regionB = FromRings(b, oracle::Rule::NonZero);
    expect(regionA, a, {}, 0, rule);
    EXPECT_TRUE((regionA | FromRings(a, rule)) == regionA && (regionA & regionA) == regionA);
    EXPECT_TRUE((regionA - regionA).IsEmpty() && (regionA ^ FromRings(a, rule)).IsEmpty());
    EXPECT_EQ(zelvan::Unite(std::vector<Region>{{}, regionA, regionA}), regionA);
    if (regionA.IsEmpty() || regionB.IsEmpty() || regionA == regionB) continue;  // not rounded
    for (int op = 0; op < 4; ++op) {
      expect(Combine(regionA, regionB, op), zelvan::test::Flatten(OracleAreas(regionA)),
             zelvan::test::Flatten(OracleAreas(regionB)), op, oracle::Rule::EvenOdd);
    }
    if (HasFailure()) return;
  }
}

// What is wrong with the arguments is named; nothing finite on the grid is.
TEST(RegionGuarantee, WhatIsRefusedIsNamed) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const auto message = [](const std::vector<Ring>& rings, const Grid& grid) -> std::string {
    try {
      const Region region(rings, zelvan::FillRule::EvenOdd, grid);
      return region.IsEmpty() ? "empty" : "not empty";
    } catch (const std::invalid_argument& e) {
      return e.what();
    }
  };
  EXPECT_EQ(message({{}, {{1, 1}}, {{1, 1}, {2, 2}, {1, 1}, {3, 3}}}, Grid()), "empty");
  EXPECT_EQ(message({{{0, 0}, {4, 4}, {4, 0}, {0, 4}}}, Grid()), "not empty");
  EXPECT_EQ(message({{{0, 0}}, {{0, 0}, {1, nan}}}, Grid()),
            "a coordinate is infinite or no number: ring 1, point 1");
  EXPECT_EQ(message({{{524287.4, 0}, {0, 0}, {524287.5, 0}}}, Grid()),
            "a point lies outside the grid: ring 0, point 2");
  for (const double step : {0.0, -1.0, 3.0, nan, HUGE_VAL, 0x1p-481, 0x1p481}) {
    EXPECT_THROW(Grid({0, 0}, step), std::invalid_argument) << step;
  }
  EXPECT_THROW(Grid({0.5, 0}, 1), std::invalid_argument);
  EXPECT_THROW(Grid({0x1p53, 0}, 1), std::invalid_argument);
  EXPECT_THROW(Region({{{0, 0}, {1e300, 0}, {0, 1}}}), std::invalid_argument);
}

// The operations on bitmaps, and the values that they give.
TEST(RegionGuarantee, LawsHold) {
  for (std::uint64_t seed = 0; seed < 600; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const Bitmap a = RandomBitmap(random);
    const Bitmap b = RandomBitmap(random);
    const Region regionA = RegionOf(a, random);
    const Region regionB = RegionOf(b, random);
    for (int op = 0; op < 4; ++op) {
      Bitmap bits;
      for (std::size_t i = 0; i < bits.bits.size(); ++i) {
        const bool p = a.bits[i], q = b.bits[i];
        bits.bits[i] = op == 0 ? p || q : op == 1 ? p && q : op == 2 ? p && !q : p != q;
      }
      const Region region = Combine(regionA, regionB, op);
      ASSERT_EQ(region, RegionOf(bits, random));
      ASSERT_EQ(region.Area(), std::count(bits.bits.begin(), bits.bits.end(), true));
    }
  }
}

TEST(RegionGuarantee, EqualReadsTheSame) {
  for (std::uint64_t seed = 0; seed < 600; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const Bitmap map = RandomBitmap(random);
    const Region region = RegionOf(map, random);
    ASSERT_EQ(region.Polygons(), RegionOf(map, random).Polygons());
    ASSERT_EQ(support::InvalidityByGeos(AreasOf(region)), "");
    for (int i = 0; i < 100; ++i) {  // corners, edges and middles of cells
      const int x = random.Between(-1, 2 * kCells + 1);
      const int y = random.Between(-1, 2 * kCells + 1);
      int inside = 0;
      for (int k = 0; k < 4; ++k) {
        const auto cell = [](int v, int upper) { return (v + 1 + upper) / 2 - 1; };
        inside += map.At(cell(x, k % 2), cell(y, k / 2)) ? 1 : 0;
      }
      const Side side = inside == 4 ? Side::Inside : inside == 0 ? Side::Outside : Side::Boundary;
      ASSERT_EQ(region.Contains({x / 2.0, y / 2.0}), side) << x << " " << y;
    }
  }
}

TEST(RegionGuarantee, MeshIsConsistent) {
  for (std::uint64_t seed = 0; seed < 2000; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    ASSERT_EQ(zelvan::test::CheckMeshes(RegionOf(RandomBitmap(random), random)), "");
  }
}

// That no circle holds a vertex across an edge, the judge of meshes sees. Here: a polygon's
// triangles are the same alone, among others and elsewhere.
TEST(RegionGuarantee, DelaunayIsUnique) {
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const Region region = RegionOf(RandomBitmap(random), random);
    std::vector<std::array<std::uint32_t, 3>> apart;
    std::uint32_t first = 0;
    for (const Polygon& polygon : region.Polygons()) {
      std::vector<Ring> rings = polygon.holes;
      rings.push_back(polygon.outer);
      for (Ring& ring : rings) {
        for (Point& p : ring) p = {p.x + 1000, p.y - 77};
      }
      const Mesh mesh = Triangulate(Region(rings, zelvan::FillRule::EvenOdd, Grid()));
      for (const auto& t : mesh.triangles) {
        apart.push_back({first + t[0], first + t[1], first + t[2]});
      }
      first += static_cast<std::uint32_t>(mesh.vertices.size());
    }
    ASSERT_EQ(Triangulate(region).triangles, apart);
  }
}

// On grids of two steps, or apart: the order of the operands does not count, the coarser step
// is taken, and a point moves by half of it at most.
TEST(RegionGuarantee, RegionsOnDifferentGridsMeetOnOne) {
  for (std::uint64_t seed = 0; seed < 500; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const auto make = [&](double step) {
      const Point o{step * random.Between(-524288, 0), step * random.Between(-524288, 0)};
      Ring ring;
      for (int i = 0; i < 6; ++i)
        ring.push_back({step * random.Below(999), step * random.Below(999)});
      return Region({ring}, zelvan::FillRule::NonZero, Grid(o, step));
    };
    const double step = std::ldexp(1.0, random.Between(-2, 2));
    const Region a = make(1);
    const Region b = make(step);
    const auto op = random.Between(0, 3);
    const Region result = Combine(a, b, op);
    EXPECT_TRUE(op == 2 || result == Combine(b, a, op));
    EXPECT_EQ(result.Grid().Step(), result.IsEmpty() ? 1.0 : std::max(1.0, step));
    const auto measure = support::MeasureByGeos(AreasOf(a), AreasOf(b), op);
    EXPECT_NEAR(result.Area(), measure.area, measure.length * std::max(1.0, step));
  }
  EXPECT_EQ(Region() | Region(), Region());
  const Region unit({{{0, 0}, {1, 0}, {1, 1}}});
  EXPECT_EQ(unit | Region(), unit);
  EXPECT_EQ(unit - unit, Region());
}

using Triangles = std::set<std::set<std::pair<double, double>>>;

Triangles TrianglesOf(const Region& region) {
  const Mesh mesh = Triangulate(region, {false});
  Triangles triangles;
  for (const auto& corners : mesh.triangles) {
    std::set<std::pair<double, double>> points;
    for (const std::uint32_t v : corners) points.insert({mesh.vertices[v].x, mesh.vertices[v].y});
    triangles.insert(points);
  }
  return triangles;
}

Triangles TrianglesOfMain() {
  const support::ReadBack r = support::Read();
  Triangles triangles;
  for (auto face = r.faces.begin(); face != r.faces.end(); face += 3) {
    std::set<std::pair<double, double>> points;
    for (int end = 0; end < 6; ++end) {
      const auto v =
          3 * std::size_t(r.edges[3 * std::size_t(face[end / 2]) + std::size_t(end % 2)]);
      points.insert({r.vertices[v], r.vertices[v + 1]});
    }
    triangles.insert(points);
  }
  return triangles;
}

// Both doors lead to the same engines: where the grid of the flat interface has the step 1, the
// same triangles come out of both.
TEST(RegionGuarantee, TheFlatInterfaceGivesTheSame) {
  const double far = 1048575;
  const auto xyz = [](const Ring& ring) {
    support::Xyz out;
    for (const Point p : ring) out.insert(out.end(), {p.x, p.y, 0});
    return out;
  };
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const Ring block = {{0, 0}, {far, 0}, {far, far}, {0, far}};
    ASSERT_EQ(support::SetMain(xyz(block)), 1);
    Region region({block}, zelvan::FillRule::EvenOdd, Grid({0, 0}, 1));
    const double size = random.Below(2) == 0 ? 20 : 150000;
    for (int k = 0; k < 4; ++k) {
      Ring hole;
      for (int i = 0; i < 7; ++i) {
        const double r = size * random.Between(0.4, 1.0);
        hole.push_back({std::floor(far / 2 + size * 0.6 * k + r * std::cos(0.8 * i)),
                        std::floor(far / 2 + r * std::sin(0.8 * i))});
      }
      ASSERT_EQ(support::AddHole(xyz(hole)), 1);
      region -= Region({hole}, zelvan::FillRule::EvenOdd, region.Grid());
    }
    ASSERT_EQ(Substruct(), 1);
    ASSERT_EQ(Triangulate(), 1);
    ASSERT_EQ(TrianglesOf(region), TrianglesOfMain());
  }
}

std::vector<Region> World(double shift) {
  std::vector<Region> world;
  for (const support::Country& country :
       support::ReadCountries(ZELVAN_DATA_DIR "/countries-50m.geojson")) {
    for (const support::RingPolygon& polygon : country.polygons) {
      std::vector<Ring> rings(polygon.size());
      for (std::size_t i = 0; i < rings.size(); ++i) {
        for (std::size_t k = 0; k < polygon[i].size(); k += 3) {
          rings[i].push_back({polygon[i][k] + shift, polygon[i][k + 1] + shift / 2});
        }
      }
      world.push_back(Region(rings, zelvan::FillRule::EvenOdd, Grid({-512, -512}, 0x1p-10)));
    }
  }
  return world;
}

TEST(RegionGuarantee, ResultsAreValid) {
  const std::vector<Region> countries = World(0);
  const Region world = zelvan::Unite(countries);
  const Region shifted = zelvan::Unite(World(1.5));
  for (int op = 0; op < 4; ++op) {
    const Region result = Combine(world, shifted, op);
    EXPECT_EQ(support::InvalidityByGeos(AreasOf(result)), "");
    EXPECT_EQ(zelvan::test::CheckMeshes(result), "");
    const auto measure = support::MeasureByGeos(AreasOf(world), AreasOf(shifted), op);
    EXPECT_NEAR(result.Area(), measure.area, measure.length * result.Grid().Step() / 2);
  }
}

TEST(RegionGuarantee, ThreadsMayShare) {
  std::vector<Region> regions;
  for (std::uint64_t seed = 0; seed < 8; ++seed) {
    Random random(seed);
    regions.push_back(RegionOf(RandomBitmap(random), random));
  }
  const auto work = [&](std::size_t first) {  // every region, with all others
    std::vector<Region> results;
    for (std::size_t i = 0; i < 8; ++i) {
      for (int op = 0; op < 4; ++op) {
        results.push_back(Combine(regions[(first + i) % 8], regions[i], op));
      }
      EXPECT_EQ(zelvan::test::CheckMeshes(results.back()), "");
    }
    return results;
  };
  std::vector<std::vector<Region>> results(4);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < 4; ++i) {
    threads.emplace_back([&, i] { results[i] = work(2 * i); });
  }
  for (std::thread& thread : threads) thread.join();
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(results[i], work(2 * i));
}

TEST(RegionGuarantee, FailureChangesNothing) {
  Random random(5);
  const Region a = RegionOf(RandomBitmap(random), random);
  const Region b({{{0, 0}, {8, 1}, {3, 8.5}}}, zelvan::FillRule::NonZero, Grid({0, 0}, 0.5));
  const auto session = [&] {
    Region result = (a | b) ^ Region({{{1, 1}, {7, 2}, {2, 7}}});
    result = zelvan::Unite(std::vector<Region>{result, a, b});
    return std::pair(result.Polygons(), zelvan::Triangulate(result).triangles);
  };
  const auto expected = session();
  const std::ptrdiff_t before = support::LiveAllocations();
  for (const bool andAllAfter : {false, true}) {
    bool struck = true;
    int failures = 0;
    for (std::size_t failing = 0; struck; ++failing) {
      SCOPED_TRACE(failing);
      Region kept = a;
      {
        const support::FailingAllocations scope(failing, andAllAfter);
        try {
          static_cast<void>(session());
          kept = a - b;
        } catch (const std::bad_alloc&) {
          ++failures;
        }
        struck = scope.Struck();
      }
      ASSERT_EQ(kept == a, struck);
      kept = Region();
      ASSERT_EQ(support::LiveAllocations(), before);
    }
    EXPECT_GT(failures, 100);
  }
  EXPECT_EQ(session(), expected);
}

}  // namespace
