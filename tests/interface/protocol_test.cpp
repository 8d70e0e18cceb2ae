// The answers of the twelve calls where the order of the calls decides.
#include <gtest/gtest.h>

#include <algorithm>

#include "support/flat.h"

namespace {

using support::AddHole;
using support::Read;
using support::ReadBack;
using support::SetMain;
using support::Xyz;

const Xyz kOuter = {0, 0, 7, 10, 0, 7, 10, 10, 7, 0, 10, 7};
const Xyz kInner = {3, 3, 0, 3, 7, 0, 7, 7, 0, 7, 3, 0};
const Xyz kLine = {0, 0, 0, 1, 1, 0, 2, 2, 0};

TEST(Protocol, ReadsWholePointsOnly) {
  const Xyz points = {0, 0, 0, 4, 0, 0, 0, 4, 0, 9, 9};
  for (const int count : {9, 10, 11}) {
    EXPECT_EQ(SetMainContour(count, points.data()), 1);
    EXPECT_EQ(GetContourSize(0), 3);
  }
  for (const int count : {8, 0, -1, -12}) EXPECT_EQ(SetMainContour(count, points.data()), 0);
  EXPECT_EQ(SetMainContour(9, nullptr) + SetHole(9, nullptr), 0);
}

TEST(Protocol, NothingIsWrittenThatIsNotThere) {
  int n[3] = {-7, -7, -7};
  double vertices[12] = {-7};
  const auto all = [&] { return GetCounts(&n[0], &n[1], &n[2]); };
  EXPECT_EQ(SetMain(kOuter), 1);
  EXPECT_EQ(SetMain(kLine), 0) << "a failed call leaves no main polygon";
  EXPECT_EQ(Triangulate() + all() + GetVertices(vertices) + GetEdges(n) + GetFaces(n), 0);
  EXPECT_EQ(GetContourIndex(0) + GetContourSize(0) + GetContourCount(), -2);
  EXPECT_EQ(SetMain(kOuter) + GetVertices(nullptr) + GetEdges(n) + all(), 1) << "not cut yet";
  EXPECT_TRUE(n[0] == 4 && n[1] == -7 && n[2] == -7 && vertices[0] == -7);
  n[0] = -7;
  EXPECT_EQ(GetCounts(&n[0], nullptr, nullptr) + n[0], 4);
  EXPECT_EQ(Triangulate() + GetEdges(nullptr) + GetFaces(nullptr), 1);
  for (int null = 0; null < 8; ++null) {  // what a null pointer would receive is passed over
    int m[3] = {-7, -7, -7};
    const auto to = [&](int i) { return (null >> i & 1) == 0 ? &m[i] : nullptr; };
    EXPECT_EQ(GetCounts(to(0), to(1), to(2)), null == 0 ? 1 : 0);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(m[i], to(i) == nullptr ? -7 : i == 0 ? 4 : 8 - 3 * i);
  }

  EXPECT_EQ(SetMain({0, 0, 0, 1e6, 1e6, 0, 999999.6, 1e6, 0}), 1) << "collapses on its grid";
  EXPECT_EQ(Read().vertexCount + GetContourCount() + Triangulate(), 0);
}

TEST(Protocol, WhatIsEmptyUnitedWithAContourIsThatContour) {
  ASSERT_EQ(SetMain(kOuter) + Triangulate() + AddHole(kOuter) + Substruct() + Triangulate(), 4);
  EXPECT_EQ(Read().vertexCount, 0);
  EXPECT_EQ(Read().faceCount, 2) << "stale";
  ASSERT_EQ(AddHole(kInner) + Union() + Triangulate(), 3);
  EXPECT_EQ(Read().vertexCount, 4);
}

// Areas in the order of their operands, the first area's triangles first; holes in that of the
// calls.
TEST(Protocol, OrderIsKept) {
  Xyz apart = kOuter;
  for (std::size_t k = 0; k < apart.size(); k += 3) apart[k] += 20;
  ASSERT_EQ(SetMain(kOuter) + AddHole(apart) + AddHole(kInner) + Union() + Triangulate(), 5);
  const ReadBack r = Read();
  EXPECT_EQ(r.contourSize, (std::vector<int>{4, 4}));
  EXPECT_EQ(r.vertices[0], 0.0);
  EXPECT_EQ(r.vertices[12], 20.0);
  EXPECT_LT(*std::max_element(r.edges.begin(), r.edges.begin() + 5), 4);

  ASSERT_EQ(SetMain({0, 0, 0, 100, 0, 0, 100, 20, 0, 0, 20, 0}), 1);
  for (const double x : {50.0, 10.0, 80.0}) {
    ASSERT_EQ(AddHole({x, 5, 0, x + 9, 5, 0, x + 9, 9, 0}), 1);
  }
  ASSERT_EQ(Substruct(), 1);
  const ReadBack holes = Read();
  for (int hole = 0; hole < 3; ++hole) {
    const auto first = static_cast<std::size_t>(GetContourIndex(hole + 1));
    EXPECT_NEAR(holes.vertices[3 * first], hole == 0 ? 50 : hole == 1 ? 10 : 80, 10);
  }
}

}  // namespace
