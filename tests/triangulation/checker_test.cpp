// The judges themselves: they pass a right answer and reject each kind of broken one.
#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "support/mesh_checker.h"
#include "support/polygon_families.h"
#include "support/region_oracle.h"
#include "triangulation/mesh.h"
#include "triangulation/triangulate.h"

namespace {

using zelvan::GridPoint;
using zelvan::test::BoundsAnArea;
using zelvan::test::CheckMesh;
using zelvan::test::CheckTriangles;
using zelvan::test::FlatMesh;
using zelvan::test::IsSimple;
using zelvan::test::Region;

const Region kSquareWithHole{{{0, 0}, {10, 0}, {10, 10}, {0, 10}},
                             {{3, 3}, {3, 7}, {7, 7}, {7, 3}}};

TEST(MeshChecker, RejectsBrokenMeshes) {
  const auto shape = zelvan::test::MakeShape({kSquareWithHole});
  ASSERT_TRUE(Triangulate(*shape));
  const FlatMesh good = zelvan::test::Flatten(*shape);
  ASSERT_EQ(CheckMesh(good), "");
  const std::pair<const char*, std::function<void(FlatMesh&)>> faults[] = {
      {"a face is missing", [](FlatMesh& m) { m.faces.pop_back(); }},
      {"a face is there twice", [](FlatMesh& m) { m.faces.back() = m.faces.front(); }},
      {"a face is turned over", [](FlatMesh& m) { std::swap(m.faces[3][1], m.faces[3][2]); }},
      {"a face starts elsewhere",
       [](FlatMesh& m) {
         m.faces[0] = {m.faces[0][1], m.faces[0][2], m.faces[0][0]};
       }},
      {"a face names a far edge", [](FlatMesh& m) { m.faces[2][0] = 99; }},
      {"a face is no triangle", [](FlatMesh& m) { m.faces[1][2] = m.faces[1][0]; }},
      {"an edge is of the wrong kind", [](FlatMesh& m) { m.edges[5][2] = 2 - m.edges[5][2]; }},
      {"an edge is there twice", [](FlatMesh& m) { m.edges[6] = m.edges[7]; }},
      {"an edge is missing", [](FlatMesh& m) { m.edges.pop_back(); }},
      {"an edge names no vertex", [](FlatMesh& m) { m.edges[0][0] = -1; }},
      {"a vertex has moved",
       [](FlatMesh& m) {
         m.points[5] = {12, 12};
       }},
      {"edges are renumbered",
       [](FlatMesh& m) {
         std::swap(m.edges[0], m.edges[1]);
         for (auto& f : m.faces) {
           for (auto& e : f) e = e == 0 ? 1 : e == 1 ? 0 : e;
         }
       }},
      {"contours are cut elsewhere",
       [](FlatMesh& m) {
         m.contourSizes = {3, 5};
       }},
  };
  for (const auto& [name, spoil] : faults) {
    FlatMesh broken = good;
    spoil(broken);
    EXPECT_NE(CheckMesh(broken), "") << name;
  }
}

TEST(MeshChecker, RejectsBrokenTriangles) {
  const auto shape = zelvan::test::MakeShape({kSquareWithHole});
  ASSERT_TRUE(Triangulate(*shape));
  zelvan::Area& area = *shape->areas;
  ASSERT_EQ(CheckTriangles(area), "");
  const auto spoiled = [&](const std::function<void()>& spoil) {
    const zelvan::Triangle kept = area.triangles[0];
    spoil();
    const std::string verdict = CheckTriangles(area);
    area.triangles[0] = kept;
    return verdict;
  };
  EXPECT_NE(spoiled([&] { std::swap(area.triangles[0].a, area.triangles[0].b); }), "");
  EXPECT_NE(spoiled([&] { area.triangles[0] = area.triangles[1]; }), "");
  --area.triangleCount;
  EXPECT_NE(CheckTriangles(area), "");
}

// The read-out of a host comes back to the grid by its own box.
TEST(MeshChecker, ReadsAHostsArrays) {
  const auto shape = zelvan::test::MakeShape(
      {{{{-524288, -524288}, {524287, -524288}, {524287, 524287}, {7, 11}}}});
  ASSERT_TRUE(Triangulate(*shape));
  const FlatMesh flat = zelvan::test::Flatten(*shape);
  std::vector<double> xyz;
  std::vector<std::int32_t> edges;
  std::vector<std::int32_t> faces;
  for (const GridPoint p : flat.points) {
    xyz.insert(xyz.end(),
               {5.0 + 0.3 * (p.gx + 524288) / 1048575, -2e6 + 4.5 * (p.gy + 524288), 0.0});
  }
  for (const auto& e : flat.edges) edges.insert(edges.end(), e.begin(), e.end());
  for (const auto& f : flat.faces) faces.insert(faces.end(), f.begin(), f.end());
  const FlatMesh back = zelvan::test::FromReadOut(xyz, flat.contourSizes, edges, faces);
  EXPECT_EQ(back.points, flat.points);
  EXPECT_EQ(CheckMesh(back), "");
}

TEST(RegionOracle, KnowsContactsFromOutsideAndInside) {
  // A vertex inside an edge, from outside.
  const Region touch{{{0, 0}, {20, 0}, {20, 20}, {5, 20}, {10, 4}, {15, 16}, {16, 4}, {0, 4}}};
  EXPECT_TRUE(BoundsAnArea(touch));
  EXPECT_FALSE(IsSimple(touch));
  // A hole on the outline, at a vertex and inside an edge: the area has a neck there.
  EXPECT_FALSE(BoundsAnArea({{{0, 0}, {9, 0}, {9, 9}}, {{0, 0}, {6, 3}, {6, 2}}}));
  EXPECT_FALSE(BoundsAnArea({{{0, 0}, {9, 0}, {9, 9}}, {{4, 0}, {6, 3}, {7, 2}}}));
  // Crossing, overlapping, spike; two lobes that cross at a vertex.
  EXPECT_FALSE(BoundsAnArea({{{0, 0}, {9, 0}, {0, 9}, {9, 9}}}));
  EXPECT_FALSE(BoundsAnArea({{{0, 0}, {9, 0}, {9, 9}, {3, 9}, {3, 0}, {1, 5}}}));
  EXPECT_FALSE(BoundsAnArea({{{0, 0}, {9, 0}, {9, 9}, {9, 4}}}));
  EXPECT_FALSE(BoundsAnArea({{{0, 0}, {4, 0}, {8, 4}, {8, 0}, {4, 0}, {0, 4}}}));
  EXPECT_TRUE(IsSimple(kSquareWithHole));
}

}  // namespace
