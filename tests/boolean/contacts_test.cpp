// A table of contacts between a polygon and its holes, in eight symmetries: each
// hole is subtracted from the shape, which must be triangulable after every step
// with the exact area.
#include <gtest/gtest.h>

#include <cmath>

#include "boolean/fixtures.h"
#include "boolean/shape_boolean.h"
#include "boolean/soundness.h"
#include "polygon/build_shape.h"
#include "support/mesh_checker.h"
#include "support/mesh_checker.h"
#include "triangulation/triangulate.h"

namespace zelvan {
namespace {

using fixtures::Box;
using oracle::Point;
using oracle::Ring;
using oracle::Rings;

constexpr std::int64_t kCells = 15;
constexpr std::int64_t kStep = GRID_MAX / kCells;  // every cell corner is a grid point
static_assert(kStep * kCells == GRID_MAX);

struct Contact {
  const char* name;
  Rings holes;  // edges run along axes or diagonals, through cell corners
};

Ring Diamond(std::int64_t x, std::int64_t y, std::int64_t r) {
  return {{x - r, y}, {x, y - r}, {x + r, y}, {x, y + r}};
}

const std::vector<Contact> kContacts = {
    {"inside", {Box(3, 3, 6, 6)}},
    {"vertex on the outline's edge", {Diamond(2, 5, 2)}},
    {"vertex on the outline's vertex", {{{0, 0}, {3, 0}, {3, 3}}}},
    {"head on the outline", {{{0, 4}, {2, 2}, {4, 4}, {2, 6}}}},
    {"corner to corner with the outline", {{{0, 0}, {2, 1}, {3, 3}, {1, 2}}}},
    {"edge on part of the outline's edge", {Box(0, 4, 3, 9)}},
    {"edge on the whole of the outline's edge", {Box(0, 0, 15, 4)}},
    {"two edges on the outline", {Box(0, 0, 4, 4)}},
    {"from side to side", {Box(5, 0, 8, 15)}},
    {"from vertex to vertex", {{{0, 0}, {15, 15}, {14, 15}, {0, 1}}}},
    {"everything", {Box(0, 0, 15, 15)}},
    {"more than everything", {Box(-3, -3, 18, 18)}},
    {"reaches outside", {Box(10, 10, 20, 20)}},
    {"touches from outside", {Box(15, 4, 20, 8)}},
    {"outside", {Box(16, 4, 20, 8)}},
    {"two apart", {Box(2, 2, 5, 5), Box(8, 8, 11, 11)}},
    {"two equal", {Box(2, 2, 5, 5), Box(2, 2, 5, 5)}},
    {"nested", {Box(2, 2, 11, 11), Box(4, 4, 6, 6)}},
    {"nested, small one first", {Box(4, 4, 6, 6), Box(2, 2, 11, 11)}},
    {"nested at a vertex", {Box(2, 2, 11, 11), Box(2, 2, 6, 6)}},
    {"nested along an edge", {Box(2, 4, 6, 6), Box(2, 2, 11, 11)}},
    {"share a vertex", {Box(2, 2, 5, 5), Box(5, 5, 9, 9)}},
    {"share two vertices", {{{2, 2}, {5, 5}, {5, 8}, {2, 5}}, {{2, 2}, {8, 2}, {8, 8}, {5, 5}}}},
    {"vertex on an edge", {Box(2, 2, 5, 8), Diamond(7, 5, 2)}},
    {"share an edge", {Box(2, 2, 5, 5), Box(5, 2, 9, 5)}},
    {"share part of an edge", {Box(2, 2, 5, 8), Box(5, 4, 9, 6)}},
    {"share a sloped edge", {{{2, 2}, {8, 2}, {8, 8}}, {{2, 2}, {8, 8}, {2, 8}}}},
    {"share part of a sloped edge", {{{2, 2}, {8, 2}, {8, 8}}, {{3, 3}, {6, 6}, {3, 6}}}},
    {"overlap", {Box(2, 2, 7, 7), Box(4, 4, 9, 9)}},
    {"a cross", {Box(2, 5, 12, 8), Box(5, 2, 8, 12)}},
    {"a ring of four around an island",
     {Box(3, 3, 9, 5), Box(7, 5, 9, 9), Box(3, 7, 7, 9), Box(3, 5, 5, 7)}},
    {"diamonds in a row on the outline", {Diamond(2, 2, 2), Diamond(6, 2, 2), Diamond(10, 2, 2)}},
    {"diamonds around a diamond",
     {Diamond(4, 6, 2), Diamond(8, 6, 2), Diamond(6, 4, 2), Diamond(6, 8, 2)}},
    {"bridge of points",
     {Diamond(2, 5, 2), Diamond(6, 5, 2), Diamond(10, 5, 2), Diamond(13, 6, 1)}},
};

std::unique_ptr<Shape> ShapeOf(const Ring& ring) {
  std::vector<InputPoint> points;
  for (const Point& p : ring) {
    points.push_back({static_cast<double>(p.x * kStep), static_cast<double>(p.y * kStep), 0.0});
  }
  return BuildShape(points);
}

// Even-odd, at a point that lies on no edge.
bool Contains(const Ring& ring, double x, double y) {
  bool inside = false;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Point p = ring[i];
    const Point q = ring[(i + 1) % ring.size()];
    const auto px = static_cast<double>(p.x);
    const auto py = static_cast<double>(p.y);
    const auto qx = static_cast<double>(q.x);
    const auto qy = static_cast<double>(q.y);
    if ((py > y) != (qy > y) && x < px + (y - py) * (qx - px) / (qy - py)) inside = !inside;
  }
  return inside;
}

// Four times the area in cells: the triangles into which the diagonals cut the
// cells are counted one by one.
std::int64_t QuarterCells(const Rings& holes) {
  std::int64_t count = 0;
  constexpr double kOffsets[4][2] = {{0.5, 0.2}, {0.8, 0.51}, {0.49, 0.8}, {0.2, 0.49}};
  for (std::int64_t cell = 0; cell < kCells * kCells; ++cell) {
    for (const auto& offset : kOffsets) {
      const double x = static_cast<double>(cell % kCells) + offset[0];
      const double y = static_cast<double>(cell / kCells) + offset[1];
      bool kept = true;
      for (const Ring& hole : holes) kept &= !Contains(hole, x, y);
      count += kept ? 1 : 0;
    }
  }
  return count;
}

// In grid steps of the first shape, exact when the shape's box has not changed.
double AreaOf(const Shape& shape) {
  double steps = 0.0;
  for (const oracle::Rings& rings : fixtures::AreasOf(shape.areas)) {
    for (const Ring& ring : rings) steps += static_cast<double>(oracle::TwiceArea(ring)) / 2;
  }
  const double x = (shape.boxMax.x - shape.boxMin.x) / GRID_MAX;
  const double y = (shape.boxMax.y - shape.boxMin.y) / GRID_MAX;
  return steps * x * y;
}

TEST(Contacts, EveryContactInEightSymmetriesHasItsExactArea) {
  for (const Contact& contact : kContacts) {
    bool onCells = true;
    for (const Ring& hole : contact.holes) {
      for (std::size_t i = 0; i < hole.size(); ++i) {
        const Point p = hole[i];
        const Point q = hole[(i + 1) % hole.size()];
        onCells &= p.x == q.x || p.y == q.y || std::abs(p.x - q.x) == std::abs(p.y - q.y);
      }
    }
    for (unsigned symmetry = 0; symmetry < 8; ++symmetry) {
      SCOPED_TRACE(std::string(contact.name) + ", symmetry " + std::to_string(symmetry));
      const Rings holes = fixtures::Mirrored(contact.holes, symmetry, kCells);
      const auto shape = ShapeOf(Box(0, 0, kCells, kCells));
      for (const Ring& hole : holes) {
        Subtract(*shape, *ShapeOf(hole));
        EXPECT_TRUE(IsSound(shape->areas));
        if (shape->areas == nullptr) continue;
        EXPECT_TRUE(Triangulate(*shape));
        EXPECT_EQ(test::CheckMesh(*shape), "");
        EXPECT_EQ(test::CutInAllWays(shape->areas, true).wrong, "");
      }
      if (!onCells) continue;
      // A result smaller than the square lies on its own, finer grid.
      const double exact = static_cast<double>(QuarterCells(holes)) / 4 * kStep * kStep;
      EXPECT_NEAR(AreaOf(*shape), exact, exact * 4e-6);
      if (shape->boxMin.x == 0 && shape->boxMin.y == 0 && shape->boxMax.x == GRID_MAX &&
          shape->boxMax.y == GRID_MAX && contact.holes[0][0].x >= 0) {
        EXPECT_EQ(AreaOf(*shape), exact);
      }
    }
  }
}

}  // namespace
}  // namespace zelvan
