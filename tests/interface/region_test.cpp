// The guarantees of zelvan/region.h, one test each, under its name.
#include <gtest/gtest.h>
#include <zelvan/overlay.h>
#include <zelvan/region.h>
#include <zelvan/regions_c.h>

#include <algorithm>
#include <cmath>
#include <thread>
#include <tuple>

#include "interface/region_side.h"
#include "overlay/ring_cases.h"
#include "support/arrangement_oracle.h"
#include "support/failing_allocator.h"
#include "support/geojson_rings.h"
#include "support/geos_area.h"
#include "support/mesh_checker.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using zelvan::FillRule;
using zelvan::Grid;
using zelvan::Mesh;
using zelvan::Point;
using zelvan::Polygon;
using zelvan::Region;
using zelvan::Ring;
using zelvan::Side;
using zelvan::test::Random;

std::vector<Ring> RingsOf(const Polygon& polygon) {
  std::vector<Ring> rings{polygon.outer};
  rings.insert(rings.end(), polygon.holes.begin(), polygon.holes.end());
  return rings;
}

// As the oracle takes areas, or as GEOS does.
template <class Areas, class Number>
Areas AreasOf(const Region& region) {
  Areas areas;
  for (const Polygon& polygon : region.Polygons()) {
    areas.emplace_back();
    for (const Ring& ring : RingsOf(polygon)) {
      auto& out = areas.back().emplace_back();
      for (const Point p : ring)
        out.push_back({static_cast<Number>(p.x), static_cast<Number>(p.y)});
    }
  }
  return areas;
}
constexpr auto ForOracle = AreasOf<zelvan::test::Areas, std::int32_t>;
constexpr auto ForGeos = AreasOf<support::WorldAreas, double>;

Region Combine(const Region& a, const Region& b, int op) {
  return zelvan::Combine(zelvan::Operation{op}, a, b);
}

std::vector<Ring> RingsOf(std::span<const zelvan::test::Ring> rings) {
  std::vector<Ring> out;
  for (const zelvan::test::Ring& ring : rings) {
    out.emplace_back();
    for (const auto& [x, y] : ring) out.back().push_back({double(x), double(y)});
  }
  return out;
}

// Of boxes of whole numbers: it touches itself in every way, and nothing is ever rounded.
std::vector<Ring> Boxes(Random& random) {
  zelvan::test::Rings boxes;
  for (int n = random.Below(40); n > 0; --n) {
    const auto [x, y] = zelvan::test::PointIn(random, 8);
    boxes.push_back(zelvan::test::Box(x, y, x + 1 + random.Below(3), y + 1 + random.Below(3)));
    if (random.Below(2) == 0) std::reverse(boxes.back().begin(), boxes.back().end());
  }
  return RingsOf(boxes);
}
const double kFar = std::ldexp(1.0, ZELVAN_GRID_BITS) - 1;  // steps across a grid

Region RandomRegion(Random& random) {
  return Region(Boxes(random), FillRule(random.Below(4)), Grid());
}

TEST(RegionGuarantee, GridPointsAreExact) {
  for (std::uint64_t seed = 0; seed < 2000; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const double step = std::ldexp(1.0, random.Between(-480, 480));
    const double x = step * std::floor(random.Between(-0x1p52, 0x1p52));
    const double y = step * std::floor(random.Between(-0x1p20, 0x1p20));
    const Grid grid({x, y}, step);
    const Ring exact = {
        {x, y}, {x + kFar * step, y}, {x + (kFar - random.Below(99)) * step, y + kFar * step}};
    const Region region({exact}, FillRule::NonZero, grid);
    ASSERT_EQ(region.Polygons().at(0).outer, exact);
    EXPECT_EQ(region.Grid(), grid);
    EXPECT_EQ(region.Area(), kFar * kFar / 2 * step * step);
    EXPECT_TRUE(region.Bounds().min == exact[0] &&
                region.Bounds().max == Point({exact[1].x, exact[2].y}));

    // Off the grid: the nearest points, of two the upper one.
    const Grid unit({std::floor(random.Between(-1e6, 1e6)), -7}, 1);
    const Point o = unit.Origin();
    Ring ring = {{o.x + random.Between(0.0, 400.0), -7 + random.Between(0.0, 99.0)},
                 {o.x + random.Between(600.0, 900.0), random.Below(99) - 6.5},
                 {o.x + random.Between(0.0, 900.0), -7 + random.Between(200.0, 999.0)}};
    const auto snapped = Region({ring}, FillRule::NonZero, unit).Vertices();
    for (Point& p : ring) p = {std::floor(p.x + 0.5), std::floor(p.y + 0.5)};
    EXPECT_TRUE(std::is_permutation(snapped.begin(), snapped.end(), ring.begin(), ring.end()));

    // Whole numbers across 2^31, and seven decimals within 128 degrees, come back.
    const double per = seed % 2 == 0 ? 1 : 1e7, size = seed % 2 == 0 ? kFar : 1.28e9 - 1;
    const double left = random.Between(-1500000000, 500000000), low = random.Below(900000000);
    const double middle = left + 1 + random.Below(1000000000);
    const Ring decimals = {{left / per, low / per},
                           {(left + size) / per, (low + random.Below(9)) / per},
                           {middle / per, (low + size) / per}};
    Ring read = Region({decimals}).Vertices();
    for (Point& p : read) p = {std::round(p.x * per) / per, std::round(p.y * per) / per};
    EXPECT_EQ(read, decimals);
    EXPECT_TRUE(per != 1 || Region({decimals}).Vertices() == decimals);

    // The covering grid holds its box; one with half the step would not, or is too far from 0.
    const double high = std::ldexp(random.Unit(), random.Between(-300, 300));
    const double at = random.Below(2) * std::ldexp(random.Unit(), random.Between(-300, 300));
    const zelvan::Box box{{at, -high}, {at + random.Unit() * high, random.Unit() * high}};
    const Grid cover = Grid::Covering(box);
    EXPECT_NO_THROW(Region({{box.min, box.max}}, FillRule::NonZero, cover));
    const double extent = std::max(box.max.x - box.min.x, box.max.y - box.min.y);
    const double farthest = std::max(box.max.x, high);
    EXPECT_TRUE(extent / cover.Step() > kFar / 2 - 3 || farthest / cover.Step() >= 0x1p51);
  }
  EXPECT_FALSE(std::signbit(Region({{{-0.0, 1}, {0, 0}, {1, 0}}}).Vertices()[1].x));

  Ring spiral;  // three times around the grid and back, 3 steps beside itself
  for (int i = 0; i < 26; ++i) {
    const int turn = std::min(i, 25 - i);
    const double r = 0x1p30 - 200 + 8 * turn - (i < 13 ? 0 : 3);
    spiral.push_back({turn % 4 == 0 || turn % 4 == 3 ? r : -r, turn % 4 < 2 ? r : -r});
  }
  const Region coil({spiral}, FillRule::NonZero, Grid());
  EXPECT_EQ(coil.VertexCount(), 26u);
  EXPECT_NEAR(coil.Area(), 12 * 0x1p31 * 3, 1e5);
}

zelvan::FlatRegion Judged(const Region& region) {
  EXPECT_EQ(support::InvalidityByGeos(ForGeos(region)), "");
  EXPECT_EQ(zelvan::test::CheckMeshes(region), "");
  return region.IsEmpty() ? zelvan::FlatRegion{} : region.Handle()->flat;
}

using RingSpan = std::span<const zelvan::test::Ring>;

zelvan::FlatRegion ByRings(RingSpan a, FillRule ruleA, RingSpan b, FillRule ruleB, int op) {
  return Judged(
      zelvan::Combine(zelvan::Operation{op}, RingsOf(a), ruleA, RingsOf(b), ruleB, Grid()));
}

zelvan::FlatRegion ByRegions(RingSpan a, FillRule ruleA, RingSpan b, FillRule ruleB, int op) {
  return Judged(Combine(Region(RingsOf(a), ruleA, Grid()), Region(RingsOf(b), ruleB, Grid()), op));
}

// Rings that cross, repeat and turn back, anywhere on the grid, under every rule; operations on
// them, and on the regions that they make: the oracle's regions, which their rings make again.
TEST(RegionGuarantee, AnyRingsMakeARegion) {
  for (std::uint64_t seed = 0; seed < 1500 && !HasFailure(); ++seed) {
    ASSERT_EQ(zelvan::test::WrongInSeed(seed, ByRings), "");
    zelvan::test::RingCase regions = zelvan::test::RandomCase(seed);
    for (std::size_t i = 0; i < 2; ++i) {
      const FillRule rule = std::exchange(regions.rules[i], FillRule(seed % 3));
      regions.operands[i] = zelvan::test::RingsOf(ByRings(regions.operands[i], rule, {}, {}, 0));
    }
    ASSERT_EQ(WrongIn(regions, ByRegions), "") << Code(regions);
  }
}

// What is wrong with the arguments is named; nothing finite on the grid is.
TEST(RegionGuarantee, WhatIsRefusedIsNamed) {
  const auto message = [](const std::vector<Ring>& rings, bool isGiven = true) -> std::string {
    try {
      const Region region = isGiven ? Region(rings, FillRule::EvenOdd, Grid()) : Region(rings);
      return region.IsEmpty() ? "empty" : "not empty";
    } catch (const std::invalid_argument& e) {
      return e.what();
    }
  };
  const double low = Grid().Origin().x, high = low + kFar;
  const std::string outside = "a point lies outside the grid, or no grid extends so far";
  EXPECT_EQ(message({{}, {{1, 1}}, {{1, 1}, {2, 2}, {1, 1}, {3, 3}}}), "empty");
  for (const bool isGiven : {true, false}) {
    EXPECT_EQ(message({{{0, 0}}, {{0, 0}, {1, std::nan("")}}}, isGiven),
              "a coordinate is infinite or no number: ring 1, point 1");
    for (const double x : {high + 0.5, low - 0.75}) {
      const Ring ring = {{high + 0.4, low - 0.5}, {0, 0}, {isGiven ? x : x * 0x1p490, 0}};
      EXPECT_EQ(message({{}, ring}, isGiven), outside + ": ring 1, point 2");
    }
  }
  EXPECT_EQ(message({{{-0x1p499, 0}, {0, 0}}, {{0x1p499, 0}}, {{0, 0}}}, false), "empty");
  for (const double step : {0.0, -1.0, 3.0, std::nan(""), HUGE_VAL, 0x1p-481, 0x1p481}) {
    EXPECT_THROW(Grid({0, 0}, step), std::invalid_argument) << step;
  }
  for (const double x : {0.5, 0x1p53}) EXPECT_THROW(Grid({x, 0}, 1), std::invalid_argument);
}

TEST(RegionGuarantee, LawsHold) {
  for (std::uint64_t seed = 0; seed < 1000; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const Region a = RandomRegion(random), b = RandomRegion(random), c = RandomRegion(random);
    ASSERT_TRUE((a | b) == (b | a) && (a & b) == (b & a) && (a ^ b) == ((a - b) | (b - a)));
    ASSERT_TRUE(a - b == a - (a & b) && ((a | b) & c) == ((a & c) | (b & c)));
    ASSERT_EQ((a | b).Area() + (a & b).Area(), a.Area() + b.Area());
    ASSERT_EQ(zelvan::Unite(std::vector<Region>{a, {}, b, c, a}), a | b | c);
  }
  const std::vector<Ring> rings = {{{0, 0}, {7, 1}, {3, 8}, {9, 3}}};  // not on its own crossing
  const Region a(rings, FillRule::EvenOdd, Grid()), same(rings, FillRule::EvenOdd, Grid());
  EXPECT_TRUE((a | same) == a && (a & same) == a && (a - same).IsEmpty() && (a ^ same).IsEmpty());
  EXPECT_EQ(zelvan::Unite(std::vector<Region>{{}, a, same}), a);
  EXPECT_TRUE((a | Region()) == a && (a & Region()).IsEmpty() && a - Region() == a);
  EXPECT_TRUE((Region() - a).IsEmpty() && (Region() ^ a) == a && Region() == (Region() | Region()));
}

TEST(RegionGuarantee, EqualReadsTheSame) {
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    std::vector<Ring> rings = Boxes(random);
    const Region united = zelvan::Unite(rings, Grid());
    random.Shuffle(rings);
    for (Ring& ring : rings) std::rotate(ring.begin(), ring.begin() + random.Below(4), ring.end());
    const Region again = zelvan::Unite(rings, Grid());
    ASSERT_EQ(united, again);
    ASSERT_EQ(united.Polygons(), again.Polygons());
  }
}

// Sessions of random operations, judged as the fuzzer judges its own; its judge throws.
TEST(RegionGuarantee, MeshIsConsistent) {
  for (std::uint64_t seed = 0; seed < 1000; ++seed) {
    Random random(seed);
    std::vector<std::uint8_t> bytes(random.Below(std::size_t{300}));
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random.Bits() >> 24);
    EXPECT_NO_THROW(LLVMFuzzerTestOneInput(bytes.data(), bytes.size())) << seed;
  }
  // Two polygons that both touch themselves in the place where they meet.
  std::vector<Ring> rings = {{{0, 0}, {9, 0}, {9, 9}, {0, 9}}, {{9, 9}, {5, 8}, {8, 5}}};
  for (std::size_t i = 0; i < 2; ++i) {
    rings.push_back(rings[i]);
    for (Point& p : rings.back()) p = {18 - p.x, 18 - p.y};
  }
  EXPECT_EQ(zelvan::test::CheckMeshes(Region(rings, FillRule::EvenOdd, Grid())), "");
}

// That no circle holds a vertex across an edge, the judge of meshes sees. Here: a polygon's
// triangles are the same alone, among others and elsewhere.
TEST(RegionGuarantee, DelaunayIsUnique) {
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const Region region = RandomRegion(random);
    std::vector<std::array<std::uint32_t, 3>> apart;
    std::uint32_t first = 0;
    for (const Polygon& polygon : region.Polygons()) {
      std::vector<Ring> rings = RingsOf(polygon);
      for (Ring& ring : rings) {
        for (Point& p : ring) p = {p.x + 1000, p.y - 77};
      }
      const Mesh mesh = Triangulate(Region(rings, FillRule::EvenOdd, Grid()));
      for (const auto& [a, b, c] : mesh.triangles)
        apart.push_back({first + a, first + b, first + c});
      first += static_cast<std::uint32_t>(mesh.vertices.size());
    }
    ASSERT_EQ(Triangulate(region).triangles, apart);
  }
}

// What a move to a step is to give: the region of the rings with their points rounded, how many
// of these enclose nothing any more, and whether polygons and holes keep their areas.
struct Move {
  zelvan::test::Rings rings;
  std::size_t gone = 0;
  bool isFaithful = true;

  Move(const Region& region, std::int32_t step) {
    const auto compare = [&](std::int64_t was, std::int64_t is) {
      isFaithful = isFaithful && std::abs(is - was) * 1024 <= std::abs(was);
    };
    for (const zelvan::test::Rings& polygon : ForOracle(region)) {
      std::int64_t was = 0, is = 0;
      for (const zelvan::test::Ring& ring : polygon) {
        zelvan::test::Ring& moved = rings.emplace_back(ring);
        for (auto& [x, y] : moved)
          x = (x + step / 2) / step * step, y = (y + step / 2) / step * step;
        const std::int64_t before = zelvan::test::TwiceArea(ring),
                           after = zelvan::test::TwiceArea(moved);
        gone += (before > 0 ? after > 0 : after < 0) ? 0 : 1;
        if (before < 0) compare(before, after);
        was += before;
        is += after;
      }
      compare(was, is);
    }
  }
};

// On grids of two steps, or apart: the order of the operands does not count, the coarser step
// is taken, a point moves by half of it at most, and what loses too much is refused.
TEST(RegionGuarantee, NothingIsLostSilently) {
  int refused = 0;
  for (std::uint64_t seed = 0; seed < 1000; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const auto make = [&](std::int32_t step) {
      const double x = step * random.Between(-524288, 0), y = step * random.Between(-524288, 0);
      const std::int32_t size = 9 << random.Below(10);
      zelvan::test::Rings rings = {zelvan::test::SimplePolygon(random, size, 6),
                                   zelvan::test::SimplePolygon(random, 2 + size / 2, 4)};
      for (zelvan::test::Ring& ring : rings) {
        for (auto& [px, py] : ring) px *= step, py *= step;
      }
      return Region(RingsOf(rings), FillRule::EvenOdd, Grid({x, y}, step));
    };
    const std::int32_t step = 1 << random.Below(5);
    const Region a = make(1), b = make(step);
    const Grid grid = CommonGrid(a, b);
    EXPECT_EQ(grid, zelvan::CommonGrid(std::array{b, Region(), a}));
    // Of many, some at the ends of their grids.
    const auto atAnEnd = [&](const Grid& on) {
      const auto end = [&] { return on.Step() * (random.Below(2) == 0 ? 0 : kFar - 99); };
      const Point p{on.Origin().x + end(), on.Origin().y + end()}, q{p.x + 99 * on.Step(), p.y};
      return Region({{p, q, {q.x, p.y + 99 * on.Step()}}}, FillRule::NonZero, on);
    };
    std::vector<Region> many = {a, atAnEnd(a.Grid()), b, atAnEnd(b.Grid()), atAnEnd(b.Grid())};
    const Grid wide = CommonGrid(many);
    for (const Region& region : many) EXPECT_NO_THROW((void)region.OnGrid(wide));
    random.Shuffle(many);
    EXPECT_EQ(CommonGrid(many), wide);
    bool isFaithful = true;
    for (const Region& region : {a, b}) {
      const Region moved = region.OnGrid(grid);
      const Move move(region, step);
      EXPECT_EQ(moved, Region(RingsOf(move.rings), FillRule::Positive, grid));
      EXPECT_EQ(moved.Lost(), move.gone);
      isFaithful = isFaithful && move.isFaithful && moved.PolygonCount() >= region.PolygonCount() &&
                   moved.HoleCount() >= region.HoleCount();
    }
    const auto op = random.Between(0, 3);
    if (!isFaithful) {
      EXPECT_THROW(Combine(a, b, op), std::domain_error);
      EXPECT_THROW(zelvan::Unite(std::array{b, a, b}), std::domain_error);
      ++refused;
      continue;
    }
    const Region result = Combine(a, b, op);
    EXPECT_EQ(result, Combine(a.OnGrid(grid), b.OnGrid(grid), op));
    EXPECT_TRUE(op == 2 || result == Combine(b, a, op));
    EXPECT_EQ(zelvan::Unite(std::array{a, b, a}), zelvan::Unite(std::array{b, a, a}));
    const auto measure = support::MeasureByGeos(ForGeos(a), ForGeos(b), op);
    EXPECT_NEAR(result.Area(), measure.area, measure.length * step);
  }
  EXPECT_TRUE(200 < refused && refused < 800) << refused;
  EXPECT_NE(Region({{{0, 0}, {2, 0}, {2, 2}}}), Region({{{0, 0}, {2, 0}, {2, 2}}}, {}, Grid()));
}

// Which rings with an area are gone below the step is counted, and which never had one is not.
TEST(RegionGuarantee, LostRingsAreCounted) {
  const std::vector<Ring> lost = {
      {{0.1, 0.1}, {0.3, 0.1}, {0.2, 0.3}},  // a triangle
      {{0.2, 0.2}, {9e4, 0.2}, {9e4, 9e4}, {90000.1, 9e4}, {90000.1, 0.1}, {0.2, 0.1}},  // a strip
      {{5.1, 5.1}, {5.3, 5.3}, {5.3, 5.1}, {5.1, 5.3}},  // a bow-tie, its halves alike
      {{0, 0}, {0x1p-450, 0}, {0, 0x1p-450}},
  };
  const std::vector<Ring> others = {{},
                                    {{0.1, 0.7}, {0.3, 2.1}, {0.2, 1.4}},
                                    {{7, 7}, {9, 7}, {9, 9}, {9, 7}},
                                    {{20, 20}, {24, 24}, {24, 20}, {20, 24}},
                                    {{40, 40}, {40, 43}, {43, 40}}};
  std::vector<Ring> rings = lost;
  rings.insert(rings.end(), others.begin(), others.end());
  for (const FillRule rule : {FillRule::EvenOdd, FillRule::Negative}) {
    const Region all(rings, rule, Grid()), rest(others, rule, Grid()), none(lost, rule, Grid());
    EXPECT_TRUE(all.Lost() == lost.size() && rest.Lost() == 0 && all == rest);
    EXPECT_TRUE(none.Lost() == lost.size() && none.IsEmpty() && none == Region());
    EXPECT_TRUE(zelvan::Unite(std::array{all, none, rest}).Lost() == 2 * lost.size());
    EXPECT_TRUE((rest | none).Lost() == lost.size() && (rest | none) == rest);
    EXPECT_TRUE((none - all).Lost() == 2 * lost.size() && (none & Region()).IsEmpty());
  }
  EXPECT_EQ(zelvan::Unite(rings, Grid()).Lost(), lost.size());
  EXPECT_EQ(Region({{{1e38, 1e38}}, {{0, 0}, {9, 0}, {0, 9}}, others[4]}).Lost(), 2);
}

// Beside the line y = n x, where one product that is not rounded tells the side.
TEST(RegionGuarantee, ContainsIsExact) {
  for (std::uint64_t seed = 0; seed < 500; ++seed) {
    Random random(seed);
    const double step = std::ldexp(1.0, random.Between(-400, 400));
    const double n = 1 + random.Below(9999);
    const Ring ring = {{0, 0}, {step, n * step}, {0, n * step}};
    const Region region({ring}, FillRule::NonZero, Grid({-step, -step}, step));
    for (int i = 0; i < 9; ++i) {
      const double t = std::ldexp(random.Between(0.5, 1.0), -random.Below(40));
      const double x = t, y = std::nextafter(n * t, n * t * random.Below(3));
      const double off = std::fma(n, x, -y);
      ASSERT_EQ(int(region.Contains({x * step, y * step})), (off < 0) - (off > 0))
          << x << ", " << y;
    }
    const double least = 5e-324, y = n * step / 2;
    EXPECT_EQ(region.Contains({-least, y}), Side::Outside);
    EXPECT_EQ(region.Contains({-0.0, y}), Side::Boundary);
    EXPECT_EQ(region.Contains({std::nan(""), -HUGE_VAL}), Side::Outside);
    EXPECT_EQ(region.Contains({least, y}), Side::Inside);
  }
  // The index answers as the scan does: at vertices, at their heights, on edges, and one unit in
  // the last place beside them, on coarse and fine grids near and far from 0.
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const double scale = std::ldexp(1.0, random.Below(2) * 10);
    const double far = random.Below(2) * 0x1p40;
    std::vector<Ring> rings = Boxes(random);
    const auto add = [&](const std::vector<Ring>& more) {
      rings.insert(rings.end(), more.begin(), more.end());
    };
    if (seed % 3 == 0) add(RingsOf(random.Pick(zelvan::test::LargePolygons(random, 500))));
    if (seed % 3 == 1) add(RingsOf(random.Pick(zelvan::test::kFamilies).make(random, 1000)));
    for (Ring& ring : rings) {
      for (Point& p : ring) p = {p.x * scale + far, p.y * scale - far};
    }
    const Region region(rings);
    const std::vector<Point> vertices = region.Vertices();
    if (vertices.empty()) continue;
    region.Prepare();
    std::vector<Point> points;
    for (int i = 0; i < (seed % 8 == 0 ? 5000 : 500); ++i) {
      const std::size_t k = random.Below(vertices.size());
      const Point a = vertices[k], b = vertices[(k + 1) % vertices.size()];
      const double t = random.Below(9) / 8.0, u = random.Below(2) == 0 ? t : random.Unit();
      Point p = {a.x + t * (b.x - a.x), a.y + u * (b.y - a.y)};
      if (random.Below(4) == 0) p.x = random.Pick(vertices).x;
      if (random.Below(4) == 0) p.x = std::nextafter(p.x, random.Below(2) * 2e300 - 1e300);
      if (random.Below(4) == 0) p.y = std::nextafter(p.y, random.Below(2) * 2e300 - 1e300);
      if (random.Below(64) == 0) p.x = random.Pick<double>({-HUGE_VAL, HUGE_VAL, std::nan("")});
      points.push_back(p);
    }
    const std::vector<Side> sides = region.Sides(points);
    for (std::size_t i = 0; i < points.size(); ++i) {
      ASSERT_EQ(int(sides[i]), zelvan::SideByScan(*region.Handle(), {points[i].x, points[i].y}))
          << points[i].x << ", " << points[i].y;
    }
  }
}

Region World(double shift) {
  std::vector<Region> world;
  for (const auto& country : support::ReadCountries(ZELVAN_DATA_DIR "/countries-50m.geojson")) {
    for (const support::RingPolygon& polygon : country.polygons) {
      std::vector<Ring> rings;
      for (const support::Ring& xyz : polygon) {
        rings.emplace_back();
        for (std::size_t k = 0; k < xyz.size(); k += 3) {
          rings.back().push_back({xyz[k] + shift, xyz[k + 1] + shift / 2});
        }
      }
      world.push_back(Region(rings, FillRule::EvenOdd, Grid({-512, -512}, 0x1p-10)));
    }
  }
  return zelvan::Unite(world);
}

TEST(RegionGuarantee, ResultsAreValid) {
  const Region world = World(0), shifted = World(1.5);
  for (const int op : {1, 3}) {
    const Region result = Combine(world, shifted, op);
    EXPECT_EQ(support::InvalidityByGeos(ForGeos(result)), "");
    EXPECT_EQ(zelvan::test::CheckMeshes(result), "");
    const auto measure = support::MeasureByGeos(ForGeos(world), ForGeos(shifted), op);
    EXPECT_NEAR(result.Area(), measure.area, measure.length * result.Grid().Step() / 2);
  }
}

TEST(RegionGuarantee, ThreadsMayShare) {
  std::vector<Region> regions;
  Random random(8);
  for (int i = 0; i < 8; ++i) regions.push_back(RandomRegion(random));
  const auto work = [&](std::size_t first) {  // every region, with all others
    std::vector<Region> results;
    for (std::size_t i = 0; i < 32; ++i) {
      results.push_back(Combine(regions[(first + i / 4) % 8], regions[i / 4], i % 4));
      if (i % 3 == 0) results.back() = Offset(results.back(), int(i % 7) - 3);
      EXPECT_EQ(zelvan::test::CheckMeshes(results.back()), "");
      for (const Point p : regions[i / 4].Vertices()) {  // until one thread makes the index
        EXPECT_EQ(regions[i / 4].Contains(p), Side::Boundary);
        EXPECT_EQ(regions[i / 4].Contains({p.x, -1}), Side::Outside);
        EXPECT_EQ(regions[i / 4].NearestOnBoundary(p).distance, 0);
      }
      const Region& a = regions[(first + i / 4) % 8];
      EXPECT_EQ(Intersects(a, regions[i / 4]), Distance(a, regions[i / 4]).distance == 0);
    }
    for (const zelvan::Part& part : zelvan::Overlay(regions)) results.push_back(part.region);
    return results;
  };
  std::vector<std::vector<Region>> results(4);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < 4; ++i) threads.emplace_back([&, i] { results[i] = work(2 * i); });
  for (std::thread& thread : threads) thread.join();
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(results[i], work(2 * i));
}

TEST(RegionGuarantee, FailureChangesNothing) {
  Random random(5);
  const Region a = RandomRegion(random);
  const Region fine({{{0, 0}, {8, 1}, {3, 8.5}}}, FillRule::NonZero, Grid({0, 0}, 0.5));
  const Region b = fine.OnGrid(Grid());
  const std::vector<Ring> rings = Boxes(random);
  const auto session = [&] {
    Region result = (a | fine.OnGrid(Grid())) ^ Region({{{1, 1}, {7, 2}, {2, 7}}});
    result = zelvan::Unite(std::vector<Region>{result, a, b});
    result = Offset(result, 2.5) - Offset(a, -1.5);
    result ^= zelvan::Combine(zelvan::Operation::Subtract, rings, FillRule::EvenOdd,
                              {{{1, 1}, {7, 2}, {2, 7}}}, FillRule::NonZero, Grid());
    const std::vector<Region> layers{result, a, b};
    double sum = 0;
    for (const zelvan::Part& part : zelvan::Overlay(layers)) sum += part.region.Area();
    for (const auto& fault : zelvan::CheckCoverage(layers, {9, 9})) sum += fault.width;
    const auto far = Distance(result, result.Transformed({1, 0, 100, 0, 1, 0}));
    const bool is = Covers(fine, result) || Touches(result, b);
    const Region left = result.Hull().Transformed({far.distance, 1, is ? 1.0 : 0.0, -1, 2, 0.5});
    return std::tuple(
        left.Part(0).Polygons(),
        zelvan::Triangulate({{result.LeastBox()[0], far.first}, {}, rings[0]}).triangles, sum);
  };
  const auto expected = session();
  const Region less = a - b;
  Region kept, rightly;
  const std::size_t failures = support::FailEachInTurn(
      [&] {
        rightly = kept = a;
        try {
          if (session() == expected) rightly = less;
          kept = a - b;  // sorting does with less where memory is short
          return true;
        } catch (const std::bad_alloc&) {
          rightly = a;
          return false;
        }
      },
      [&](bool /*struck*/) {
        ASSERT_EQ(kept, rightly);
        rightly = kept = Region();
      });
  EXPECT_GT(failures, 200u);
  EXPECT_EQ(session(), expected);

  // Where the index fails, the scan goes on to answer.
  const std::vector<Ring> outline = RingsOf(zelvan::test::LargePolygons(random, 40).front());
  const std::vector<Point> vertices = Region(outline).Vertices();
  std::vector<std::int8_t> sides(vertices.size());
  const auto ask = [&] {
    try {
      const Region region(outline);
      for (int i = 0; i < 9; ++i) {
        std::fill(sides.begin(), sides.end(), 9);
        const auto count = static_cast<std::uint32_t>(sides.size());
        zelvan_region_contains(region.Handle(), &vertices[0].x, count, sides.data());
        EXPECT_TRUE(std::all_of(sides.begin(), sides.end(), [](int side) { return side == 0; }));
      }
      region.Prepare();
    } catch (const std::bad_alloc&) {
      return false;
    }
    return true;
  };
  EXPECT_GT(support::FailEachInTurn(ask, [](bool) {}), 20u);
}

using Handles = std::vector<const zelvan_region*>;

struct Records {
  std::vector<std::uint64_t> offsets;
  std::vector<std::uint8_t> bytes;
};

Records RecordsOf(const Handles& regions) {
  const auto count = static_cast<std::uint32_t>(regions.size());
  Records records{std::vector<std::uint64_t>(count + 1), {}};
  zelvan_regions_to_wkb(regions.data(), count, records.offsets.data(), nullptr);
  records.bytes.resize(static_cast<std::size_t>(records.offsets.back()));
  zelvan_regions_to_wkb(regions.data(), count, records.offsets.data(), records.bytes.data());
  return records;
}

// The regions by way of records, united each with itself, by way of flat arrays: the same ones.
bool GoRound(const Handles& regions) {
  const auto count = static_cast<std::uint32_t>(regions.size());
  const zelvan_grid grid = Grid().Data();
  zelvan_counts room;
  zelvan_regions_counts(regions.data(), count, &room);
  std::vector<double> xy(2 * room.vertices);
  std::vector<std::uint32_t> rings(room.rings + 1), polygons(room.polygons + 1), starts(count + 1);
  const Records records = RecordsOf(regions);
  Handles read(count), united(count), made(count);  // from here on nothing is thrown
  const bool done = zelvan_regions_from_wkb(records.bytes.data(), records.offsets.data(), count,
                                            &grid, read.data(), nullptr, nullptr) == ZELVAN_OK &&
                    zelvan_regions_combine(ZELVAN_UNITE, regions.data(), count, read.data(), count,
                                           united.data(), nullptr) == ZELVAN_OK &&
                    zelvan_regions_read(united.data(), count, &room, xy.data(), rings.data(),
                                        polygons.data(), starts.data()) == ZELVAN_OK &&
                    zelvan_regions_create(xy.data(), rings.data(), polygons.data(), starts.data(),
                                          count, &grid, made.data(), nullptr) == ZELVAN_OK;
  for (std::uint32_t i = 0; done && i < count; ++i) {
    EXPECT_EQ(zelvan_region_equal(regions[i], made[i]), 1);
  }
  for (const Handles* handles : {&read, &united, &made}) {
    zelvan_regions_release(handles->data(), count);
  }
  return done;
}

TEST(RegionGuarantee, ManyAreAsEach) {
  Random random(6);
  std::vector<Region> owners(12);
  Handles regions;
  for (Region& owner : owners) {
    if (&owner != &owners[5]) owner = RandomRegion(random);
    regions.push_back(owner.Handle());
  }
  const auto session = [&] {
    try {
      return GoRound(regions);
    } catch (const std::bad_alloc&) {
      return false;
    }
  };
  EXPECT_GT(support::FailEachInTurn(session, [](bool) {}), 100u);
  EXPECT_TRUE(session());

  // Broken records are refused or are others; nothing is read beyond their ends.
  const Records records = RecordsOf(regions);
  for (std::size_t i = 0; i < 3000; ++i) {
    const auto start = static_cast<std::ptrdiff_t>(records.offsets[i % regions.size()]);
    const auto first = records.bytes.begin() + start;
    const auto left = records.bytes.end() - first;
    std::vector<std::uint8_t> record(first,
                                     first + std::min<std::ptrdiff_t>(left, random.Between(1, 90)));
    for (int changes = random.Below(4); changes > 0; --changes) {
      record[random.Below(record.size())] = static_cast<std::uint8_t>(random.Bits());
    }
    const std::uint64_t ends[] = {0, record.size()};
    const zelvan_region* region = nullptr;
    std::uint32_t failed = 9;
    const zelvan_status status =
        zelvan_regions_from_wkb(record.data(), ends, 1, nullptr, &region, nullptr, &failed);
    EXPECT_EQ(status == ZELVAN_OK, failed == 9);
    zelvan_region_release(region);
  }
}

}  // namespace
