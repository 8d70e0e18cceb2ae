// Unite and Subtract on shapes, in world coordinates: chains of operations with a
// triangulation after every step, the moves between grids, and failures.
#include <gtest/gtest.h>
#include <zelvan/error.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "boolean/boolean.h"
#include "boolean/shape_boolean.h"
#include "boolean/soundness.h"
#include "polygon/build_shape.h"
#include "polygon/grid_mapping.h"
#include "queue/shape_queue.h"
#include "support/failing_allocator.h"
#include "support/geos_area.h"
#include "support/mesh_checker.h"
#include "support/polygons.h"
#include "triangulation/triangulate.h"

namespace zelvan {
namespace {

#ifdef ZELVAN_TEST_SCALE
constexpr std::uint64_t kQueues = 2000 / ZELVAN_TEST_SCALE;
#else
constexpr std::uint64_t kQueues = 2000;
#endif

using support::WorldAreas;
using support::WorldRing;
using test::Areas;
using test::AreasOf;
using test::Random;
using test::Rings;

std::unique_ptr<Shape> ShapeOf(const WorldRing& ring) {
  std::vector<InputPoint> points;
  for (const auto& p : ring) points.push_back({p.x, p.y, 0.0});
  return BuildShape(ValidatedContour(points));
}

WorldAreas WorldOf(const Shape& shape) {
  WorldAreas areas;
  for (const Rings& rings : AreasOf(shape.areas)) {
    areas.emplace_back();
    for (const test::Ring& ring : rings) {
      areas.back().emplace_back();
      for (const GridPoint p : ring) {
        const WorldPoint w = Unsnap(p, shape.boxMin, shape.boxMax);
        areas.back().back().push_back({w.x, w.y});
      }
    }
  }
  return areas;
}

double AreaOf(const Shape& shape) {
  double steps = 0.0;
  for (const test::Ring& ring : test::Flatten(AreasOf(shape.areas))) {
    steps += static_cast<double>(test::TwiceArea(ring)) / 2;
  }
  return steps * ((shape.boxMax.x - shape.boxMin.x) / GRID_MAX) *
         ((shape.boxMax.y - shape.boxMin.y) / GRID_MAX);
}

std::array<double, 4> EndsOf(const Shape& shape) {
  return {shape.boxMin.x, shape.boxMin.y, shape.boxMax.x, shape.boxMax.y};
}

void ExpectWhole(Shape& shape) {
  EXPECT_TRUE(IsSound(shape.areas));
  std::vector<VertexNode*> vertices;
  std::vector<VertexNode*> heads;
  ForEachContour(shape.areas, [&](const Contour* contour) {
    heads.push_back(contour->head);
    ForEachVertex(contour, [&](VertexNode* v) { vertices.push_back(v); });
  });
  EXPECT_EQ(shape.contourStarts, heads);
  ASSERT_EQ(shape.vertexTable.size(), vertices.size());
  EXPECT_TRUE(std::equal(vertices.begin(), vertices.end(), shape.vertexTable.begin()));
  if (shape.areas == nullptr) return;
  EXPECT_TRUE(Triangulate(shape));
  EXPECT_EQ(test::CheckMesh(shape), "");
}

// One operation, against GEOS: every edge may move by a step of the common grid.
void Step(Shape& shape, const Shape& other, bool unite) {
  const WorldAreas a = WorldOf(shape);
  const WorldAreas b = WorldOf(other);
  const auto expected = support::MeasureByGeos(a, b, unite ? 0 : 2);
  const auto ends = EndsOf(shape);
  const auto others = EndsOf(other);
  const auto grid = AreasOf(other.areas);
  (unite ? Unite : Subtract)(shape, other);
  EXPECT_EQ(AreasOf(other.areas), grid);
  double extent = 0.0;
  for (std::size_t i = 0; i < 4; ++i) {
    extent = std::max({extent, std::abs(ends[i]), std::abs(others[i])});
    if (!unite || a.empty() || b.empty()) continue;  // the ends of a box are no rounded numbers
    const double end = i < 2 ? std::min(ends[i], others[i]) : std::max(ends[i], others[i]);
    EXPECT_EQ(EndsOf(shape)[i], end);
  }
  const double step = 2 * extent / GRID_MAX;
  EXPECT_NEAR(AreaOf(shape), expected.area, 3 * step * (expected.length + step));
  ExpectWhole(shape);
}

WorldRing Circle(double x, double y, double r, int n) {
  WorldRing ring;
  for (int i = 0; i < n; ++i) {
    const double angle = 6.283185307179586 * i / n;
    ring.push_back({x + r * std::cos(angle), y + r * std::sin(angle)});
  }
  return ring;
}

// In steps that the grids of tests hold.
double Unit(Random& random) {
  return random.Below(1 << 20) * 0x1p-20;
}

// A contour of a queue: on a lattice that the grid of 75 units holds exactly or not, or a
// few half steps beside it; also those that cross themselves by their closing edge, reach
// outside, or collapse.
WorldRing Queued(Random& random, double unit, std::int64_t span, std::int64_t kind) {
  const auto at = [&](std::int64_t n) {
    const auto beside = random.Below(4) == 0 ? random.Below(7) - 3 : 0;
    return unit * (static_cast<double>(random.Below(n)) +
                   static_cast<double>(beside) * 75.0 / GRID_MAX / 2);
  };
  const double x = at(span);
  const double y = at(span);
  const auto box = [](double x0, double y0, double x1, double y1) -> WorldRing {
    return {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
  };
  switch (kind) {
    case 0:
    case 4: {
      const double w = at(kind == 0 ? 5 : 30) + unit;
      return box(x, y, x + w, y + at(kind == 0 ? 5 : 30) + unit);
    }
    case 1:
      return Circle(x, y, at(12) + unit, 3 + static_cast<int>(random.Below(40)));
    case 2:
      return {{x, y},
              {x + at(9), y + unit},
              {x + at(9), y + at(9)},
              {x - unit, y + at(9)},
              {x - at(9), y + at(9)}};
    case 3:  // a sliver or nothing on the common grid
      return {{x, y}, {x + at(9) + unit, y + unit * 1e-6}, {x, y + unit * 6e-5 * Unit(random)}};
    case 5: {  // around something, but for a gap
      const double w = at(12) + 3 * unit;
      const double h = at(12) + 3 * unit;
      const double low = y + unit, high = y + h - unit;
      return {{x, y},           {x + w, y},    {x + w, low},   {x + unit, low},
              {x + unit, high}, {x + w, high}, {x + w, y + h}, {x, y + h}};
    }
    case 6: {  // right across
      const double w = at(2) + unit;
      if (random.Below(2) == 0) return box(x, -5 * unit, x + w, 70 * unit);
      return {{-5 * unit, x}, {70 * unit, y}, {70 * unit, y + w}, {-5 * unit, x + w}};
    }
    case 7: {  // along a diagonal, or with a corner on it
      const double d = at(50);
      const double e = d + at(20) + unit;
      WorldRing ring{{d, d}, {e, d}, {e, e}};
      if (random.Below(2) == 0) ring = {{d, d}, {e, d - unit}, {e, d + (e - d) / 2}};
      const bool mirrored = random.Below(2) == 0;
      for (auto& p : ring) p = mirrored ? support::Xy{p.y, p.x} : p;
      return ring;
    }
    default: {  // steps across
      const double s = unit * (0.5 + 0.25 * static_cast<double>(random.Below(4)));
      return {{x, y}, {x + s, y}, {x + s, y + s}, {x + s / 2, y + s}, {x, y + s}};
    }
  }
}

// A contour of a queue as a shape, or null where it is none.
std::unique_ptr<Shape> QueuedShape(Random& random, double unit, std::int64_t span,
                                   std::int64_t kind, support::Xy origin = {0, 0}) try {
  WorldRing ring = Queued(random, unit, span, kind);
  for (auto& p : ring) p = {origin.x + p.x, origin.y + p.y};
  return ShapeOf(ring);
} catch (const ZelvanLib::BadPolyError&) {
  return nullptr;
}

TEST(Chains, FiftyStepsEachSoundAndTriangulated) {
  for (std::uint64_t seed = 0; seed < 16; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const double unit = seed % 2 == 0 ? 1.5 : 1 + Unit(random);
    const auto shape = ShapeOf({{0, 0}, {100, 0}, {100, 100}, {0, 100}});
    const auto whole = ShapeOf({{-99, -99}, {999, -99}, {999, 999}, {-99, 999}});
    for (int k = 0; k < 50; ++k) {
      const auto other = QueuedShape(random, unit, 64, random.Below(std::int64_t{9}));
      if (other != nullptr) Step(*shape, *other, random.Below(3) == 0);
      if (k % 16 == 15) {  // from nothing, of which nothing can be taken
        Step(*shape, *whole, false);
        EXPECT_EQ(shape->areas, nullptr);
        const auto ends = EndsOf(*shape);
        for (const bool unite : {true, false}) Step(*shape, Shape(), unite);
        if (other != nullptr) Step(*shape, *other, false);
        EXPECT_EQ(EndsOf(*shape), ends);
        Step(*shape, *ShapeOf({{0, 0}, {100, 0}, {100, 100}, {0, 100}}), true);
      }
      if (HasFailure()) return;
    }
  }
}

// What UniteAll and SubtractAll do is what Unite and Subtract do, contour after contour; most of
// them without a sweep of everything.
TEST(Queues, GiveWhatOneAfterTheOtherGives) {
  QueueWays ways;
  for (std::uint64_t seed = 0; seed < kQueues; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const double unit = random.Below(2) == 0 ? GRID_MAX / 75.0 : 1.0 + Unit(random);
    WorldRing main = {{-5, -5}, {70, -5}, {70, 70}, {-5, 70}};
    if (random.Below(2) == 0) main = {{-5, -5}, {70, -5}, {70, 30}, {30, 33}, {30, 70}, {-5, 70}};
    if (random.Below(4) == 0) main = Circle(32, 32, 40, 30);
    for (auto& p : main) p = {p.x * unit, p.y * unit};
    const std::int64_t kinds = random.Below(3) != 0 ? 9 : 1;  // all, or small boxes alone
    const std::int64_t span = random.Below(2) == 0 ? 64 : 20;
    // Where a unit is a whole number of steps, some are all within a few steps of a corner.
    const bool isTiny = unit > 2 && random.Below(2) == 0;
    const double scale = isTiny ? 1 + 8 * Unit(random) : unit;
    support::Xy origin{0, 0};
    if (isTiny) origin = {30 * unit - 16 * scale, 33 * unit - 16 * scale};
    const auto queued = ShapeOf(main);
    const auto plain = ShapeOf(main);
    for (int round = 0; round < 3; ++round) {
      const bool unite = random.Below(3) == 0;
      ShapeQueue queue;
      for (std::int64_t n = random.Below(random.Below(20) == 0 ? 200 : 20); n >= 0; --n) {
        auto other = QueuedShape(random, scale, span, random.Below(kinds), origin);
        if (other != nullptr) queue.push_back(std::move(other));
      }
      for (const auto& other : queue) (unite ? Unite : Subtract)(*plain, *other);
      const QueueWays now = (unite ? UniteAll : SubtractAll)(*queued, queue);
      ways = {ways.linked + now.linked, ways.partial + now.partial, ways.whole + now.whole};
      ASSERT_EQ(AreasOf(queued->areas), AreasOf(plain->areas));
      ASSERT_EQ(EndsOf(*queued), EndsOf(*plain));
      ExpectWhole(*queued);
      if (HasFailure()) return;
    }
  }
  EXPECT_GT(ways.linked, 2 * ways.whole);
  EXPECT_GT(ways.partial, 2 * ways.whole);
}

// A vertex that lies on an edge would be moved across it by the own, finer grid.
TEST(Regridding, ContactsNeverBecomeCrossings) {
  constexpr double m = GRID_MAX;
  int stayed = 0;
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const auto far = [&] { return static_cast<double>(4 * (1 + random.Below(GRID_MAX / 16))); };
    const auto shape = ShapeOf({{0, 0}, {m, 0}, {m, m}, {0, m}});
    const support::Xy a{far(), far()};
    const support::Xy b{a.x + far(), a.y + far()};
    const support::Xy middle{(a.x + b.x) / 2, (a.y + b.y) / 2};
    const support::Xy p{middle.x, middle.y + far()};
    const support::Xy q{m * static_cast<double>(2 + random.Below(2)),
                        middle.y + 2 * m * (b.y - a.y) / (b.x - a.x) + far()};
    Subtract(*shape, *ShapeOf({a, middle, p}));
    Subtract(*shape, *ShapeOf({middle, b, q}));
    ExpectWhole(*shape);
    stayed += shape->boxMax.x > m + 1 ? 1 : 0;
    if (HasFailure()) return;
  }
  EXPECT_GT(stayed, 10);
  EXPECT_LT(stayed, 290);
}

// Where doubles are coarser than grid steps, the region stays where it can be held.
TEST(Regridding, HugeOffsetsWithTinyExtents) {
  for (const double offset : {1e12, 1e15, 4e15, 1e17}) {
    SCOPED_TRACE(offset);
    const double unit = std::max(1.0, std::nextafter(offset, 1e300) - offset);
    // On its grid at the origin, then moved with its box.
    const auto moved = [&](const WorldRing& ring) {
      auto shape = ShapeOf(ring);
      for (WorldPoint* p : {&shape->boxMin, &shape->boxMax}) {
        *p = {offset + p->x * unit, offset + p->y * unit};
      }
      return shape;
    };
    const auto box = [&](double x0, double y0, double x1, double y1) {
      return moved({{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}});
    };
    const auto shape = box(0, 0, 4, 4);
    Subtract(*shape, *box(1, 1, 2, 2));
    Subtract(*shape, *box(2, 2, 6, 3));
    Subtract(*shape, *box(0, 3, 1, 5));
    EXPECT_NEAR(AreaOf(*shape) / unit / unit, 12, 1e-4);
    ExpectWhole(*shape);
    // Corners between neighbouring doubles, and what is left of a sliver.
    Subtract(*shape, *moved({{0, 0}, {1, 0}, {0, 1}}));
    Subtract(*shape, *moved({{0, 0}, {4, 1}, {4, 4}, {1, 4}}));
    ExpectWhole(*shape);
    EXPECT_NE(shape->areas, nullptr);
  }
}

TEST(Failures, InfiniteExtentsAndMissingMemoryHaveTheirCodes) {
  const auto shape = ShapeOf({{-1.5e308, 0}, {-1.5e308 + 1e302, 0}, {-1.5e308, 1}});
  const auto other = ShapeOf({{1.5e308 - 1e302, 0}, {1.5e308, 0}, {1.5e308, 1}});
  const auto before = AreasOf(shape->areas);
  for (const auto combine : {Unite, Subtract}) {
    try {
      combine(*shape, *other);
      FAIL();
    } catch (CException* e) {
      EXPECT_EQ(ERR::Delete(e), ERR::FAIL);
    }
    EXPECT_EQ(AreasOf(shape->areas), before);
    EXPECT_EQ(shape->boxMin.x, -1.5e308);
  }
  const auto square = ShapeOf({{0, 0}, {100, 0}, {100, 100}, {0, 100}});
  for (const auto combine : {Unite, Subtract}) {
    const support::FailingAllocations scope(0, true);
    try {
      combine(*square, *square);
      FAIL();
    } catch (...) {
      EXPECT_EQ(ERR::Clear(), ERR::NOMEM);
    }
  }
}

}  // namespace
}  // namespace zelvan
