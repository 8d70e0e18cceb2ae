// The engine's parts by themselves, worked examples, and failures.
#include "triangulation/engine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "polygon/contour.h"
#include "support/failing_allocator.h"
#include "support/mesh_checker.h"
#include "support/polygon_families.h"
#include "triangulation/area_sweep.h"
#include "triangulation/flat_triangles.h"
#include "triangulation/mesh.h"
#include "triangulation/triangulate.h"

namespace {

using zelvan::GridPoint;
using zelvan::test::MakeShape;
using zelvan::test::Region;
using zelvan::test::Ring;

using Corners = std::vector<std::string>;

const Region kSquare{{{0, 0}, {10, 0}, {10, 10}, {0, 10}}};
const Region kSquareWithHole{{{0, 0}, {10, 0}, {10, 10}, {0, 10}},
                             {{3, 3}, {3, 7}, {7, 7}, {7, 3}}};

// The triangles in order, vertices as letters in table order.
Corners Emitted(const zelvan::Shape& shape) {
  Corners list;
  const zelvan::Area& area = *shape.areas;
  for (std::uint32_t i = 0; i < area.triangleCount; ++i) {
    std::string& text = list.emplace_back();
    for (const zelvan::VertexNode* v :
         {area.triangles[i].a, area.triangles[i].b, area.triangles[i].c}) {
      text += static_cast<char>('a' + shape.vertexTable.Find(v->grid));
    }
  }
  return list;
}

Corners Sorted(Corners list) {
  for (std::string& text : list) std::sort(text.begin(), text.end());
  std::sort(list.begin(), list.end());
  return list;
}

TEST(Triangulation, WorkedExamples) {
  const auto triangle = MakeShape({{{{0, 0}, {4, 0}, {0, 4}}}});
  const auto square = MakeShape({kSquare});
  const auto withHole = MakeShape({kSquareWithHole});
  ASSERT_TRUE(Triangulate(*triangle) && Triangulate(*square) && Triangulate(*withHole));
  EXPECT_EQ(Sorted(Emitted(*triangle)), (Corners{"abc"}));
  EXPECT_EQ(Sorted(Emitted(*square)), (Corners{"abd", "bcd"}));
  EXPECT_EQ(Sorted(Emitted(*withHole)),
            (Corners{"abe", "adf", "aef", "bch", "beh", "cdg", "cgh", "dfg"}));
}

// Followed by hand: after edges ab, bc, cd, da the start is the trapezoid between da
// and ab; the one above it gets the diagonal bd, whose ring b, d, a keeps number 0.
TEST(Triangulation, EmitsInTheOrderThatTheStagesFix) {
  const auto shape = MakeShape({kSquare});
  const std::vector<std::uint32_t> order{0, 1, 2, 3};
  ASSERT_EQ(VORNEX::TriangulateAreas(shape->areas, {.positions = order}), ERR::OK);
  EXPECT_EQ(Emitted(*shape), (Corners{"bda", "bcd"}));
}

TEST(Triangulation, TheBoundsOfTheGridAreOrdinaryPoints) {
  const std::int32_t low = -zelvan::GRID_OFFSET;
  const std::int32_t high = zelvan::GRID_MAX - zelvan::GRID_OFFSET;
  const Ring rings[] = {{{low, low}, {high, low}, {high, high}, {low, high}},
                        {{low, low}, {high, high}, {low, high}},
                        {{low, low}, {high, low}, {high, high}},
                        {{low, low}, {0, -1}, {high, high}, {-1, 0}},
                        {{low, high}, {0, 0}, {high, high}, {high, low}, {1, 0}, {low, low}}};
  for (const Ring& ring : rings) {
    Ring ccw = ring;
    if (zelvan::test::TwiceSigned(ccw) < 0) std::reverse(ccw.begin(), ccw.end());
    std::vector<std::uint32_t> order(ring.size());
    std::iota(order.begin(), order.end(), 0u);
    do {
      const auto shape = MakeShape({{ccw}});
      ASSERT_EQ(VORNEX::TriangulateAreas(shape->areas, {.positions = order}), ERR::OK);
      ASSERT_EQ(zelvan::test::CheckTriangles(*shape->areas), "");
    } while (std::next_permutation(order.begin(), order.end()));
    const auto shape = MakeShape({{ccw}});
    ASSERT_TRUE(VORNEX::TriangulateBySweep(*shape->areas));
    ASSERT_EQ(zelvan::test::CheckTriangles(*shape->areas), "");
  }
}

TEST(Triangulation, NecksOfNoWidthAreRefused) {
  const Region refused[] = {
      // a hole on the outline, at a vertex and inside an edge; two holes at a vertex
      {{{0, 0}, {90, 0}, {90, 90}}, {{0, 0}, {60, 30}, {60, 20}}},
      {{{0, 0}, {90, 0}, {90, 90}}, {{40, 0}, {60, 30}, {70, 20}}},
      {{{0, 0}, {90, 0}, {90, 90}, {0, 90}},
       {{20, 20}, {30, 40}, {40, 20}},
       {{30, 40}, {20, 60}, {40, 60}}},
      // two lobes of one contour at a vertex; a band folded onto itself
      {{{0, 0}, {40, 40}, {80, 0}, {80, 80}, {40, 40}, {0, 80}}},
      {{{0, 0}, {40, 0}, {80, 0}, {80, 40}, {40, 0}, {0, 40}}},
  };
  for (const Region& region : refused) {
    EXPECT_FALSE(VORNEX::TriangulateBySweep(*MakeShape({region})->areas));
    for (std::uint32_t seed = 0; seed < 100; ++seed) {
      const auto shape = MakeShape({region});
      ASSERT_EQ(VORNEX::TriangulateAreas(shape->areas, {.seed = seed}), ERR::FAIL)
          << zelvan::test::Describe(region);
    }
  }
}

TEST(Triangulation, AFailingAreaIsLeftWithoutTriangles) {
  const Region crossing{{{20, 0}, {29, 0}, {20, 9}, {30, 8}, {30, 30}}};
  const auto shape = MakeShape({kSquare, crossing});
  EXPECT_EQ(VORNEX::TriangulateAreas(shape->areas), ERR::FAIL);
  EXPECT_EQ(zelvan::test::CheckTriangles(*shape->areas), "");
  EXPECT_EQ(shape->areas->next->triangles, nullptr);
  EXPECT_EQ(shape->areas->next->triangleCount, 0u);
  EXPECT_FALSE(Triangulate(*shape));
  EXPECT_EQ(shape->mesh, nullptr);

  EXPECT_EQ(VORNEX::TriangulateAreas(nullptr), ERR::OK);
  zelvan::Shape empty;
  EXPECT_FALSE(Triangulate(empty));
  const auto wrongCount = MakeShape({kSquare});
  wrongCount->areas->contours->count = 5;
  EXPECT_EQ(VORNEX::TriangulateAreas(wrongCount->areas), ERR::FAIL);
  wrongCount->areas->contours->count = 3;
  EXPECT_EQ(VORNEX::TriangulateAreas(wrongCount->areas), ERR::FAIL);
}

TEST(Triangulation, TheOutputArrayIsGuarded) {
  class Probe : public VORNEX::TRIAGLOBS {
   public:
    explicit Probe(zelvan::Area* target) { area = target; }
  };
  const auto shape = MakeShape({kSquare});
  zelvan::Area& area = *shape->areas;
  area.triangles = std::make_unique<zelvan::Triangle[]>(2);
  area.triangleCount = 2;
  const auto& v = shape->vertexTable;
  Probe engine(&area);
  engine.EmitTriangle(v[0], v[1], v[2]);
  engine.EmitTriangle(v[2], v[1], v[0]);
  EXPECT_THROW(
      {
        try {
          engine.EmitTriangle(v[0], v[1], v[3]);
        } catch (CException* e) {
          EXPECT_EQ(ERR::Delete(e), ERR::FAIL);
          throw 0;
        }
      },
      int);
  EXPECT_EQ(Emitted(*shape), (Corners{"abc", "cba"}));
}

// Each allocation in turn fails: out of memory, nothing left behind, and the next
// call succeeds.
TEST(Triangulation, EveryFailedAllocationIsReported) {
  zelvan::test::Random random(9);
  const auto shape = MakeShape({zelvan::test::WithHoles(12, random)});
  const std::ptrdiff_t before = support::LiveAllocations();
  std::size_t failing = 0;
  for (;; ++failing) {
    ERR::CODE code = ERR::OK;
    {
      const support::FailingAllocations scope(failing, true);
      code = VORNEX::TriangulateAreas(shape->areas);
    }
    if (code == ERR::OK) break;
    ASSERT_EQ(code, ERR::NOMEM) << failing;
    ASSERT_EQ(support::LiveAllocations(), before) << failing;
    ASSERT_EQ(shape->areas->triangles, nullptr);
    ASSERT_EQ(shape->areas->triangleCount, 0u);
  }
  EXPECT_GT(failing, 10u);

  // With a mesh: the old one stays until the new one is whole.
  ASSERT_TRUE(Triangulate(*shape));
  const VORNEX::TriangleMesh* old = shape->mesh.get();
  std::size_t meshFailures = 0;
  for (bool done = false; !done; meshFailures += done ? 0 : 1) {
    ASSERT_EQ(shape->mesh.get(), old);
    const support::FailingAllocations scope(meshFailures, true);
    done = Triangulate(*shape);
  }
  EXPECT_GT(meshFailures, 10u);
  EXPECT_EQ(zelvan::test::CheckMesh(*shape), "");

  // Flat triangles, which stay right on the way to the Delaunay triangulation.
  std::vector<GridPoint> places;
  for (const zelvan::VertexNode* v : shape->vertexTable) places.push_back(v->grid);
  VORNEX::FlatTriangles flat = VORNEX::CutArea(*shape->areas);
  std::size_t flatFailures = 0;
  for (bool done = false; !done; flatFailures += done ? 0 : 1) {
    const std::ptrdiff_t live = support::LiveAllocations();
    const support::FailingAllocations scope(flatFailures, true);
    try {
      const auto nearby = VORNEX::CutArea(*shape->areas, VORNEX::Cutting::kNearby);
      VORNEX::MakeDelaunay(places, flat);
      done = true;
    } catch (const std::bad_alloc&) {
      ASSERT_EQ(support::LiveAllocations(), live);
    }
  }
  EXPECT_GT(flatFailures, 10u);
  VORNEX::FlatTriangles expected = VORNEX::CutArea(*shape->areas);
  VORNEX::MakeDelaunay(places, expected);
  EXPECT_EQ(flat.corners, expected.corners);
}

}  // namespace
