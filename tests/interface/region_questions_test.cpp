// Questions to regions, distances, measures, transforms and parts, of random pairs on small grids,
// where everything touches: held to GEOS, and to a look at every edge.
#include <gtest/gtest.h>
#include <zelvan/region.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "overlay/ring_cases.h"
#include "polygon/region_distance.h"
#include "support/geos_area.h"
#include "support/polygons.h"

namespace {

using zelvan::FillRule;
using zelvan::Grid;
using zelvan::Point;
using zelvan::Polygon;
using zelvan::Region;
using zelvan::Ring;
using zelvan::test::Random;

support::WorldAreas ForGeos(const Region& region) {
  support::WorldAreas areas;
  for (const Polygon& polygon : region) {
    areas.emplace_back();
    const auto add = [&](const Ring& ring) {
      auto& out = areas.back().emplace_back();
      for (const Point p : ring) out.push_back({p.x, p.y});
    };
    add(polygon.outer);
    for (const Ring& hole : polygon.holes) add(hole);
  }
  return areas;
}

std::vector<Ring> RingsOf(const Region& region) {
  std::vector<Ring> rings;
  for (const Polygon& polygon : region.Polygons()) {
    rings.push_back(polygon.outer);
    rings.insert(rings.end(), polygon.holes.begin(), polygon.holes.end());
  }
  return rings;
}

// Rings on a lattice, boxes, or chains of up to a thousand vertices. At times shifted, and on a
// grid of a step of its own.
Region RandomRegion(Random& random, std::int32_t size) {
  const Grid grids[] = {Grid(), Grid(), Grid({-512, -1024}, 0.5), Grid({-64, -64}, 0x1p-20),
                        Grid({-4, -4}, 0x1p-27)};
  zelvan::test::Rings rings = zelvan::test::Mess(random, size, 1 + random.Below(3), {});
  if (random.Below(3) == 0) {
    for (zelvan::test::Ring& ring : rings) {
      const auto [left, low] = zelvan::test::PointIn(random, size);
      ring = zelvan::test::Box(left, low, left + 1 + random.Below(3), low + 1 + random.Below(3));
    }
  }
  if (random.Below(50) == 0) rings = random.Pick(zelvan::test::LargePolygons(random, 300));
  const std::int32_t x = random.Below(2) * random.Between(0, size), y = random.Below(2) * size;
  std::vector<Ring> moved;
  for (const zelvan::test::Ring& ring : rings) {
    moved.emplace_back();
    for (const auto& [px, py] : ring) moved.back().push_back({double(px + x), double(py + y)});
  }
  const Region region(moved, FillRule(random.Below(2)), Grid());
  const zelvan::Box box = region.Bounds();
  const Grid& grid = grids[random.Below(std::size(grids))];
  const double reach = 0x1p31 * grid.Step() + grid.Origin().y;
  return std::max(box.max.x, box.max.y) < reach && box.min.y >= 0 && box.min.x >= 0
             ? region.OnGrid(grid)
             : region;
}

struct Edge {
  zelvan::WorldPoint from, to;
};
std::vector<Edge> EdgesOf(const Region& region) {
  std::vector<Edge> edges;
  for (const Ring& ring : RingsOf(region)) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const Point a = ring[i], b = ring[(i + 1) % ring.size()];
      edges.push_back({{a.x, a.y}, {b.x, b.y}});
    }
  }
  return edges;
}

double Length(Point a, Point b) {
  return std::hypot(b.x - a.x, b.y - a.y);
}

void CheckNearest(const Region& region, const std::vector<Edge>& edges, Point p) {
  zelvan::EdgeDistance best{HUGE_VAL, {}};
  for (const Edge& edge : edges) {
    const auto distance = zelvan::DistanceToEdge(edge.from, edge.to, {p.x, p.y});
    if (distance.squared < best.squared) best = distance;
  }
  const zelvan::NearestPlace place = region.NearestOnBoundary(p), all = region.Nearest(p);
  ASSERT_EQ(place.place, (Point{best.place.x, best.place.y}));
  ASSERT_EQ(place.distance, std::sqrt(best.squared));
  const bool isInside = region.Contains(p) != zelvan::Side::Outside;
  ASSERT_EQ(all.place, isInside ? p : place.place);
  ASSERT_EQ(all.distance, isInside ? 0 : place.distance);
}

void CheckDistance(const Region& a, const std::vector<Edge>& edgesA, const Region& b,
                   const std::vector<Edge>& edgesB, double byGeos) {
  const zelvan::RegionDistance distance = zelvan::Distance(a, b);
  ASSERT_NEAR(distance.distance, byGeos, 1e-12 * byGeos);
  ASSERT_EQ(distance.distance == 0, Intersects(a, b));
  if (distance.distance == 0) {
    ASSERT_EQ(distance.first, distance.second);
    for (const Region& region : {a, b}) ASSERT_LT(region.Nearest(distance.first).distance, 1e-9);
    return;
  }
  zelvan::NearestPair best{HUGE_VAL, {}, {}};
  for (const Edge& e : edgesA) {
    for (const Edge& f : edgesB) {
      const auto pair = zelvan::DistanceOfEdges(e.from, e.to, f.from, f.to);
      if (pair.squared < best.squared) best = pair;
    }
  }
  ASSERT_EQ(distance.distance, std::sqrt(best.squared));
  ASSERT_EQ(distance.first, (Point{best.first.x, best.first.y}));
  ASSERT_EQ(distance.second, (Point{best.second.x, best.second.y}));
}

void CheckHull(const Region& region, double areaByGeos) {
  const Region hull = region.Hull();
  ASSERT_EQ(hull.Area(), areaByGeos);
  ASSERT_EQ(Region(RingsOf(hull), FillRule::NonZero, hull.Grid()), hull);
  ASSERT_TRUE(Covers(hull, region) && hull.Hull() == hull);
  double least = HUGE_VAL;
  const std::vector<Point> points = hull.Vertices();
  for (const Edge& edge : EdgesOf(hull)) {
    const Point u{edge.to.x - edge.from.x, edge.to.y - edge.from.y};
    double low = 0, high = 0, top = 0;
    for (const Point p : points) {
      const Point w{p.x - edge.from.x, p.y - edge.from.y};
      low = std::min(low, u.x * w.x + u.y * w.y);
      high = std::max(high, u.x * w.x + u.y * w.y);
      top = std::max(top, u.x * w.y - u.y * w.x);
    }
    least = std::min(least, (high - low) * top / (u.x * u.x + u.y * u.y));
  }
  const auto box = region.LeastBox();
  ASSERT_NEAR(Length(box[0], box[1]) * Length(box[1], box[2]), least, 1e-12 * least);
  for (std::size_t i = 0; i < 4; ++i) {
    const Point a = box[i], b = box[(i + 1) % 4];
    double beyond = HUGE_VAL;
    for (const Point p : points) {
      beyond = std::min(beyond, (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x));
    }
    ASSERT_NEAR(beyond, 0, 1e-9 * least);
  }
}

TEST(RegionQuestions, PairsOnSmallGrids) {
  const char* const given = std::getenv("ZELVAN_PAIRS");
  const int pairs = given != nullptr ? std::atoi(given) : 2500;
  int count[4] = {};
  for (int seed = 0; seed < pairs; ++seed) {
    SCOPED_TRACE(seed);
    Random random(static_cast<std::uint64_t>(seed));
    const std::int32_t size = 2 << random.Below(4);
    const Region a = RandomRegion(random, size);
    Region b = RandomRegion(random, size);
    if (a.Grid() == b.Grid() && random.Below(2) == 0) b = random.Below(3) == 0 ? a & b : b - a;
    if (a.IsEmpty() || b.IsEmpty()) {
      ASSERT_FALSE(Intersects(a, b) || Touches(a, b));
      ASSERT_EQ(Covers(a, b), b.IsEmpty());
      ASSERT_TRUE(std::isinf(Distance(a, b).distance) && std::isnan(Distance(a, b).first.x));
      continue;
    }
    const auto geos = support::RelateByGeos(ForGeos(a), ForGeos(b));
    const bool is[] = {Intersects(a, b), Touches(a, b), Covers(a, b), Covers(b, a)};
    ASSERT_EQ(is[0], geos.intersects);
    ASSERT_EQ(is[1], geos.touches);
    ASSERT_EQ(is[2], geos.covers);
    ASSERT_TRUE(is[0] == Intersects(b, a) && is[1] == Touches(b, a) && Covers(a, a));
    for (std::size_t i = 0; i < 4; ++i) count[i] += is[i];

    const auto edgesA = EdgesOf(a), edgesB = EdgesOf(b);
    ASSERT_NO_FATAL_FAILURE(CheckDistance(a, edgesA, b, edgesB, geos.distance));
    const Point p{random.Between(-1.0, 2.0 * size), random.Below(2 * size) / 2.0};
    ASSERT_NO_FATAL_FAILURE(CheckNearest(a, edgesA, p));
    ASSERT_NO_FATAL_FAILURE(CheckNearest(b, edgesB, random.Pick(a.Vertices())));
    ASSERT_NO_FATAL_FAILURE(CheckHull(a, geos.hullArea));
    ASSERT_NEAR(a.Length(), geos.length, 1e-12 * geos.length);
    ASSERT_LT(Length(a.Centroid(), {geos.centroid.x, geos.centroid.y}), 1e-6);
  }
  for (const int n : count) EXPECT_GT(n, pairs / 200) << ::testing::PrintToString(count);
}

// Transforms by whole numbers, and by others, are the regions of the rings transformed; parts are
// polygons; meshes of rings are those of their regions.
TEST(RegionQuestions, TransformsPartsAndMeshes) {
  for (std::uint64_t seed = 0; seed < 500; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const Region region = RandomRegion(random, 8);
    zelvan::Transform t{random.Between(-2.0, 2.0), random.Between(-2.0, 2.0), 1.5,
                        random.Between(-2.0, 2.0), random.Between(-2.0, 2.0), -2.25};
    if (seed % 3 == 0) t = {0, -1, 3, 1, 0, 7};
    if (seed % 3 == 1)
      t = {1, 0, double(random.Between(-9, 9)), 0, 1, std::ldexp(1, random.Below(40))};
    std::vector<Ring> rings = RingsOf(region);
    for (Ring& ring : rings) {
      for (Point& p : ring) {
        p = {t.xx * p.x + t.xy * p.y + t.x0, t.yx * p.x + t.yy * p.y + t.y0};
      }
    }
    const FillRule rule = t.xx * t.yy - t.xy * t.yx > 0 ? FillRule::Positive : FillRule::Negative;
    const Region moved = region.Transformed(t), right(rings, rule, moved.Grid());
    ASSERT_EQ(moved, right);
    if (moved.Grid() != region.Grid() && !moved.IsEmpty()) {
      ASSERT_THROW(Region(rings, rule, region.Grid()), std::invalid_argument);
    }
    const Grid coarse({-0x1p40, -0x1p40}, 0x1p10), fine({-0x1p20, -0x1p20}, 0x1p-9);
    ASSERT_EQ(region.Transformed(t, coarse), Region(rings, rule, coarse));
    EXPECT_TRUE(seed % 3 != 0 || region.Transformed(t, fine) == Region(rings, rule, fine));

    std::vector<Region> parts;
    std::vector<Polygon> polygons;
    for (const Polygon& polygon : region) {
      parts.push_back(region.Part(parts.size()));
      polygons.push_back(polygon);
      std::vector<Ring> own = polygon.holes;
      own.push_back(polygon.outer);
      ASSERT_EQ(parts.back(), Region(own, FillRule::EvenOdd, region.Grid()));
      ASSERT_EQ(parts.back().Counts().triangles, Triangulate(parts.back()).triangles.size());
    }
    ASSERT_TRUE(polygons == region.Polygons() && zelvan::Unite(parts) == region);

    const auto mesh = Triangulate(region);
    const auto ofRings = zelvan::Triangulate(RingsOf(region), FillRule::NonZero, region.Grid());
    ASSERT_EQ(mesh.vertices, ofRings.vertices);
    ASSERT_TRUE(mesh.triangles == ofRings.triangles && mesh.neighbours == ofRings.neighbours);
  }
  EXPECT_THROW(static_cast<void>(Region().Part(0)), std::invalid_argument);
  EXPECT_TRUE(Region().Hull().IsEmpty() && std::isnan(Region().LeastBox()[3].y));
  const Region tiny({{{0, 0}, {1, 0}, {0, 1}}}, FillRule::NonZero, Grid({0, 0}, 0x1p-30));
  const Region vast({{{0, 0}, {0x1p240, 0}, {0, 0x1p240}}}, FillRule::NonZero,
                    Grid({0, 0}, 0x1p220));
  EXPECT_THROW(static_cast<void>(Intersects(tiny, vast)), std::domain_error);
  EXPECT_TRUE(std::isinf(tiny.Nearest({0x1p500, 0}).distance));
  EXPECT_THROW(static_cast<void>(tiny.Transformed({HUGE_VAL})), std::invalid_argument);
}

}  // namespace
