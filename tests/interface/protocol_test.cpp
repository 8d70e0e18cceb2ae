// The calls of the flat interface, in and out of order.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "support/flat.h"
#include "support/random.h"

extern "C" int CallsTheLibraryFromC(void);

namespace {

using support::AddHole;
using support::Read;
using support::ReadBack;
using support::SetMain;
using support::Xyz;

const Xyz kSquare = {0, 0, 7, 1, 0, 7, 1, 1, 7, 0, 1, 7};
const Xyz kClockwise = {0, 0, 0, 0, 1, 0, 1, 1, 0, 1, 0, 0};
const Xyz kLine = {0, 0, 0, 1, 1, 0, 2, 2, 0};

TEST(Protocol, TheHeaderIsC) {
  EXPECT_EQ(CallsTheLibraryFromC(), 1);
}

TEST(Protocol, ReadsWholePointsOnly) {
  const Xyz points = {0, 0, 0, 4, 0, 0, 0, 4, 0, 9, 9};
  for (const int count : {9, 10, 11}) {
    EXPECT_EQ(SetMainContour(count, points.data()), 1);
    EXPECT_EQ(GetContourSize(0), 3);
  }
  for (const int count : {8, 0, -1, -12}) EXPECT_EQ(SetMainContour(count, points.data()), 0);
}

TEST(Protocol, WithoutAMainPolygonNothingIsWritten) {
  EXPECT_EQ(SetMain(kSquare), 1);
  EXPECT_EQ(SetMain(kLine), 0) << "a failed call leaves no main polygon";
  int counts[3] = {-7, -7, -7};
  double vertices[12] = {-7};
  EXPECT_EQ(Triangulate(), 0);
  EXPECT_EQ(GetCounts(&counts[0], &counts[1], &counts[2]), 0);
  EXPECT_EQ(GetVertices(vertices), 0);
  EXPECT_EQ(GetEdges(counts), 0);
  EXPECT_EQ(GetFaces(counts), 0);
  EXPECT_EQ(GetContourCount(), 0);
  EXPECT_EQ(GetContourIndex(0), -1);
  EXPECT_EQ(GetContourSize(0), -1);
  EXPECT_EQ(std::count(counts, counts + 3, -7), 3);
  EXPECT_EQ(vertices[0], -7);
}

TEST(Protocol, NullPointersAreAnsweredZero) {
  int n[2] = {-7, -7};
  EXPECT_EQ(SetMainContour(9, nullptr), 0);
  EXPECT_EQ(SetHole(9, nullptr), 0);
  EXPECT_EQ(SetMain(kSquare), 1);
  EXPECT_EQ(Triangulate(), 1);
  EXPECT_EQ(GetCounts(nullptr, &n[0], &n[1]), 0);
  EXPECT_EQ(GetCounts(&n[0], nullptr, &n[1]), 0);
  EXPECT_EQ(GetCounts(&n[0], &n[1], nullptr), 0);
  EXPECT_EQ(n[0], -7);
  EXPECT_EQ(n[1], -7);
  EXPECT_EQ(GetVertices(nullptr), 0);
  EXPECT_EQ(GetEdges(nullptr), 0);
  EXPECT_EQ(GetFaces(nullptr), 0);
}

TEST(Protocol, CountsBeforeAndAfterTriangulate) {
  EXPECT_EQ(SetMain(kSquare), 1);
  int v = -7, e = -7, f = -7;
  EXPECT_EQ(GetCounts(&v, &e, &f), 0);
  EXPECT_EQ(v, 4);
  EXPECT_EQ(e, -7);
  EXPECT_EQ(f, -7);
  EXPECT_EQ(GetEdges(&e), 0);
  EXPECT_EQ(Triangulate(), 1);
  const ReadBack square = Read();
  EXPECT_EQ(square.edgeCount, 5);
  EXPECT_EQ(square.faceCount, 2);
  EXPECT_EQ(square.contourIndex, std::vector<int>{0});
  EXPECT_EQ(square.contourSize, std::vector<int>{4});
  EXPECT_EQ((Xyz{square.vertices.begin(), square.vertices.begin() + 3}), (Xyz{0, 0, 0}))
      << "from the first point given, z dropped";
  int diagonals = 0;
  for (std::size_t k = 2; k < square.edges.size(); k += 3) diagonals += square.edges[k] == 2;
  EXPECT_EQ(diagonals, 1);
  for (const int i : {-1, 1, 2147483647, -2147483647 - 1}) {
    EXPECT_EQ(GetContourIndex(i), -1);
    EXPECT_EQ(GetContourSize(i), -1);
  }
}

TEST(Protocol, TheDirectionOfTheInputDoesNotMatter) {
  ASSERT_EQ(SetMain(kSquare), 1);
  ASSERT_EQ(Triangulate(), 1);
  const ReadBack straight = Read();
  ASSERT_EQ(SetMain(kClockwise), 1);
  ASSERT_EQ(Triangulate(), 1);
  EXPECT_EQ(Read(), straight);
}

TEST(Protocol, HolesNeedNoMainPolygonAndAFailedOneChangesNothing) {
  EXPECT_EQ(SetMain(kLine), 0);
  EXPECT_EQ(AddHole(kSquare), 1);
  EXPECT_EQ(AddHole(kLine), 0);
  EXPECT_EQ(SetMain(kSquare), 1);
  EXPECT_EQ(AddHole(kLine), 0);
  EXPECT_EQ(GetContourCount(), 1) << "queued contours are never reported";
}

TEST(Protocol, AContourThatCollapsesOnItsGridIsAPolygonWithoutVertices) {
  EXPECT_EQ(SetMain({0, 0, 0, 1e6, 1e6, 0, 999999.6, 1e6, 0}), 1);
  int v = -7, e = -7, f = -7;
  EXPECT_EQ(GetCounts(&v, &e, &f), 0);
  EXPECT_EQ(v, 0);
  EXPECT_EQ(GetContourCount(), 0);
  EXPECT_EQ(Triangulate(), 0);
}

const Xyz kOuter = {0, 0, 0, 10, 0, 0, 10, 10, 0, 0, 10, 0};
const Xyz kInner = {3, 3, 0, 7, 3, 0, 7, 7, 0, 3, 7, 0};

TEST(Booleans, AnEmptyQueueIsDoneAtOnceAQueueNeedsAMainPolygon) {
  EXPECT_EQ(SetMain(kLine), 0);
  EXPECT_EQ(Union(), 1);
  EXPECT_EQ(Substruct(), 1);
  EXPECT_EQ(AddHole(kSquare), 1);
  EXPECT_EQ(Union(), 0);
  EXPECT_EQ(Substruct(), 0);
  ASSERT_EQ(SetMain(kOuter), 1);
  const ReadBack before = Read();
  EXPECT_EQ(Union(), 1);
  EXPECT_EQ(Substruct(), 1);
  EXPECT_EQ(Read(), before) << "SetMainContour has emptied the queue";
}

TEST(Booleans, AHoleIsMadeOnceAndTheMeshStaysUntilTheNextTriangulate) {
  ASSERT_EQ(SetMain(kOuter), 1);
  ASSERT_EQ(Triangulate(), 1);
  ASSERT_EQ(AddHole(kInner), 1);
  ASSERT_EQ(Substruct(), 1);
  ReadBack r = Read();
  EXPECT_EQ(r.counted, 1);
  EXPECT_EQ(r.vertexCount, 8);
  EXPECT_EQ(r.faceCount, 2) << "stale";
  EXPECT_EQ(r.contourIndex, (std::vector<int>{0, 4}));
  EXPECT_EQ(r.contourSize, (std::vector<int>{4, 4}));
  ASSERT_EQ(Triangulate(), 1);
  r = Read();
  EXPECT_EQ(r.faceCount, 8);
  EXPECT_EQ(support::CheckFlatMesh(r), "");
  const ReadBack once = r;
  ASSERT_EQ(Substruct(), 1) << "the queue is empty";
  EXPECT_EQ(Read(), once);
}

TEST(Booleans, EverythingTakenLeavesNoVerticesAndTheOldMesh) {
  ASSERT_EQ(SetMain(kInner), 1);
  ASSERT_EQ(Triangulate(), 1);
  ASSERT_EQ(AddHole(kOuter), 1);
  ASSERT_EQ(Substruct(), 1);
  EXPECT_EQ(Triangulate(), 0);
  const ReadBack r = Read();
  EXPECT_EQ(r.vertexCount, 0);
  EXPECT_EQ(r.faceCount, 2);
  EXPECT_EQ(GetContourCount(), 0);
  ASSERT_EQ(AddHole(kOuter), 1);
  ASSERT_EQ(Union(), 1) << "an empty region united with a contour is that contour";
  ASSERT_EQ(Triangulate(), 1);
  EXPECT_EQ(Read().vertexCount, 4);
}

TEST(Booleans, AreasComeInTheOrderOfTheirOperands) {
  ASSERT_EQ(SetMain(kOuter), 1);
  Xyz apart = kOuter;
  for (std::size_t k = 0; k < apart.size(); k += 3) apart[k] += 20;
  ASSERT_EQ(AddHole(apart), 1);
  ASSERT_EQ(AddHole(kInner), 1);
  ASSERT_EQ(Union(), 1);
  ASSERT_EQ(Triangulate(), 1);
  const ReadBack r = Read();
  EXPECT_EQ(r.contourSize, (std::vector<int>{4, 4}));
  EXPECT_EQ(r.vertices[0], 0.0);
  EXPECT_EQ(r.vertices[12], 20.0);
  EXPECT_EQ(r.faceCount, 4);
  EXPECT_LT(*std::max_element(r.edges.begin(), r.edges.begin() + 5), 4)
      << "the first area's triangles come first";
}

TEST(Booleans, HolesKeepTheirOrder) {
  ASSERT_EQ(SetMain({0, 0, 0, 100, 0, 0, 100, 20, 0, 0, 20, 0}), 1);
  for (const double x : {50.0, 10.0, 80.0}) {
    ASSERT_EQ(AddHole({x, 5, 0, x + 9, 5, 0, x + 9, 9, 0}), 1);
  }
  ASSERT_EQ(Substruct(), 1);
  ASSERT_EQ(GetContourCount(), 4);
  std::vector<double> xyz(3 * 13);
  ASSERT_EQ(GetVertices(xyz.data()), 1);
  int hole = 1;
  for (const double x : {50.0, 10.0, 80.0}) {
    const double* first = &xyz[3 * static_cast<std::size_t>(GetContourIndex(hole++))];
    EXPECT_NEAR(first[0], x, 10) << "in the order of the calls";
  }
}

}  // namespace
