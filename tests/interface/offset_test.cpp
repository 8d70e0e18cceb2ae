// Offsets of regions, against exact distances from their boundaries.
#include <gtest/gtest.h>
#include <zelvan/region.h>

#include <algorithm>
#include <cmath>

#include "overlay/ring_cases.h"
#include "support/random.h"

namespace {

using zelvan::FillRule;
using zelvan::Grid;
using zelvan::Join;
using zelvan::Point;
using zelvan::Region;
using zelvan::Ring;
using zelvan::Side;
using zelvan::test::Random;

struct Edge {
  Point from, to;
};

std::vector<Edge> EdgesOf(const Region& region) {
  std::vector<Edge> edges;
  const auto add = [&](const Ring& ring) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
      edges.push_back({ring[i], ring[(i + 1) % ring.size()]});
    }
  };
  for (const zelvan::Polygon& polygon : region.Polygons()) {
    add(polygon.outer);
    for (const Ring& hole : polygon.holes) add(hole);
  }
  return edges;
}

Point Between(const Edge& e, double part) {
  return {e.from.x + part * (e.to.x - e.from.x), e.from.y + part * (e.to.y - e.from.y)};
}

struct Nearest {
  double distance = HUGE_VAL;
  bool isBeside = false;  ///< an edge, not near its ends
};

Nearest NearestOf(const std::vector<Edge>& edges, Point p) {
  Nearest nearest;
  for (const Edge& e : edges) {
    const double dx = e.to.x - e.from.x, dy = e.to.y - e.from.y, length = std::hypot(dx, dy);
    const double along = ((p.x - e.from.x) * dx + (p.y - e.from.y) * dy) / length;
    const Point q = Between(e, std::clamp(along / length, 0.0, 1.0));
    const double distance = std::hypot(p.x - q.x, p.y - q.y);
    if (distance < nearest.distance) nearest = {distance, along > 2 && along < length - 2};
  }
  return nearest;
}

// A ring at random, one that goes out and in, an outline of edges about a step long, or boxes, on
// whole numbers of [0, size]; sometimes the grid ends with them.
Region RegionOfSize(Random& random, double size) {
  std::vector<Ring> rings(1);
  const auto place = [&] { return std::floor(random.Between(0.0, size)); };
  const int kind = random.Below(4);
  for (int i = 0, n = 3 + random.Below(40); i < n; ++i) {
    const double angle = 6.28 * i / n, r = size / 2 * (kind == 1 ? random.Between(0.3, 1.0) : 0.9);
    if (kind == 0) rings[0].push_back({place(), place()});
    if (kind == 1)
      rings[0].push_back({std::floor(r * std::cos(angle)), std::floor(r * std::sin(angle))});
    if (kind == 2) rings[0].push_back({3.0 * i, double(random.Below(4)) + (i + 1 == n ? size : 0)});
    if (kind == 3) {
      const double x = place(), y = place(), w = 1 + place() / 4, h = 1 + place() / 4;
      rings.push_back({{x, y}, {x + w, y}, {x + w, y + h}, {x, y + h}});
    }
  }
  const bool endsThere = random.Below(3) == 0;
  const Region region(rings, FillRule::NonZero, Grid());
  return endsThere ? region.OnGrid(Grid(region.Bounds().min, 1)) : region;
}

// Round: each place is on the side that its distance tells, and the boundary is at the distance.
// Others: so are places beside edges, and corners reach no farther than they may.
void Judge(const Region& region, double distance, const zelvan::OffsetOptions& options,
           Random& random) {
  const Region result = Offset(region, distance, options);
  const double size = std::fabs(distance), step = result.IsEmpty() ? 1 : result.Grid().Step();
  if (size < 1) {
    EXPECT_EQ(result, region);
    return;
  }
  const bool isRound = options.join == Join::Round;
  const double tolerance = std::max({options.tolerance != 0 ? options.tolerance : size / 500,
                                     step > 1 ? 3 * step : step, size * 0x1p-20});
  const double slack = tolerance + step + 1e-6;
  const double reach = options.join == Join::Miter ? size * options.miterLimit : size;
  const auto edges = EdgesOf(region), boundary = EdgesOf(result);
  const auto check = [&](Point p) {
    const Nearest nearest = NearestOf(edges, p);
    const bool wasInside = region.Contains(p) == Side::Inside;
    const double away = (wasInside ? -1 : 1) * (distance < 0 ? -1 : 1) * nearest.distance;
    const Side swept = distance < 0 ? Side::Outside : Side::Inside;  // the side that grows
    const Side side = result.Contains(p);
    if (side == Side::Boundary) return;
    EXPECT_FALSE(side != swept && away < (isRound || nearest.isBeside ? size : 0) - slack);
    EXPECT_FALSE(side == swept && away > reach + slack);
  };
  const zelvan::Box box = region.Bounds();
  const double margin = std::max(distance * 1.2, 0.0);
  for (int i = 0; i < 40; ++i) {
    check({random.Between(box.min.x - margin, box.max.x + margin),
           random.Between(box.min.y - margin, box.max.y + margin)});
    if (boundary.empty()) continue;
    const Point p = Between(random.Pick(boundary), random.Unit());
    check({p.x + slack * random.Between(-1.5, 1.5), p.y + slack * random.Between(-1.5, 1.5)});
    EXPECT_TRUE(!isRound || std::fabs(NearestOf(edges, p).distance - size) <= slack);
  }
}

TEST(RegionOffset, IsAtItsDistance) {
  for (std::uint64_t seed = 0; seed < 4000; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const double size = std::exp(random.Between(2.0, 20.0));
    const Region region = RegionOfSize(random, size);
    if (region.IsEmpty()) continue;
    const double distance = std::exp(random.Between(-0.1, std::log(size)));
    zelvan::OffsetOptions options{Join(random.Below(5) % 3), random.Between(1.0, 5.0), 0};
    if (random.Below(3) == 0) options.tolerance = std::exp(random.Between(-3.0, 20.0));
    Judge(region, random.Below(2) != 0 ? distance : -distance, options, random);
    if (HasFailure()) return;
  }
}

TEST(RegionOffset, IsRefusedByName) {
  const Region square({{{0, 0}, {8, 0}, {8, 8}, {0, 8}}}, FillRule::NonZero, Grid());
  const zelvan_region* result = nullptr;
  const auto status = [&](double distance, std::int32_t join, double limit, double tolerance) {
    return zelvan_region_offset(square.Handle(), distance, join, limit, tolerance, &result);
  };
  for (const double bad : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
    EXPECT_EQ(status(bad, ZELVAN_JOIN_ROUND, 2, 0), ZELVAN_BAD_ARGUMENT);
    EXPECT_EQ(status(1, ZELVAN_JOIN_ROUND, 2, bad), ZELVAN_BAD_ARGUMENT);
    EXPECT_EQ(status(1, ZELVAN_JOIN_MITER, -std::fabs(bad), 0), ZELVAN_BAD_ARGUMENT);
  }
  EXPECT_EQ(status(1, ZELVAN_JOIN_MITER, 0.99, 0), ZELVAN_BAD_ARGUMENT);
  EXPECT_EQ(status(1, 3, 2, 0), ZELVAN_BAD_ARGUMENT);
  EXPECT_EQ(status(1, ZELVAN_JOIN_ROUND, 2, -1e-9), ZELVAN_BAD_ARGUMENT);
  EXPECT_EQ(status(1e300, ZELVAN_JOIN_ROUND, 2, 0), ZELVAN_OUTSIDE_GRID);
  EXPECT_EQ(status(1e12, ZELVAN_JOIN_ROUND, 2, 0), ZELVAN_TOO_COARSE);
  EXPECT_EQ(result, nullptr);
  EXPECT_TRUE(Offset(square, -1e300).IsEmpty());
  EXPECT_EQ(Offset(square, 0), square);
  EXPECT_LT(Offset(square, 1e8, {Join::Round, 2, 1e-300}).VertexCount(), 2100u);
  const Region tip = Offset(square, 4, {Join::Miter, HUGE_VAL, 0});
  EXPECT_EQ(tip.Area(), 256);
}

}  // namespace
