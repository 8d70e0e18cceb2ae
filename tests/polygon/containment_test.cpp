// Containment on the grid, against sampling: contours that touch in every way.
#include "polygon/containment.h"

#include <gtest/gtest.h>
#include <zelvan/error.h>

#include "rings.h"
#include "support/random.h"

namespace zelvan {
namespace {

// Whether (x, y) + (1/2, 1/4) of a lattice step lies in the ring; the samples lie
// on no edge of a ring on multiples of kStep.
constexpr std::int32_t kStep = 64;
bool SampleInside(const GridRing& ring, double x, double y) {
  bool inside = false;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const GridPoint a = ring[i];
    const GridPoint b = ring[(i + 1) % ring.size()];
    if ((a.gy > y) != (b.gy > y) &&
        x < a.gx + (y - a.gy) * (b.gx - a.gx) / static_cast<double>(b.gy - a.gy)) {
      inside = !inside;
    }
  }
  return inside;
}

enum class Relation { kInside, kApart, kMixed };

Relation Sampled(const GridRing& inner, const GridRing& outer, std::int32_t size) {
  int in = 0;
  int out = 0;
  for (std::int32_t i = 0; i < size * kStep; i += 4) {
    for (std::int32_t j = 0; j < size * kStep; j += 4) {
      const double x = i + 1.43;
      const double y = j + 1.61;
      if (SampleInside(inner, x, y)) ++(SampleInside(outer, x, y) ? in : out);
    }
  }
  if (in > 0 && out > 0) return Relation::kMixed;
  return in > 0 ? Relation::kInside : Relation::kApart;
}

// A random star-shaped ring on few lattice points: simple, and full of contacts
// with every other.
GridRing RandomTriangleOrQuad(support::Random& random, std::int32_t size) {
  for (;;) {
    GridRing ring;
    const std::uint32_t n = 3 + random.Below(2);
    for (std::uint32_t i = 0; i < n; ++i) {
      ring.push_back({random.Between(0, size) * kStep, random.Between(0, size) * kStep});
    }
    bool simple = true;  // every corner turns the same way: convex
    for (std::size_t i = 0; i < n; ++i) {
      simple = simple && Cross(ring[i], ring[(i + 1) % n], ring[(i + 2) % n]) > 0;
    }
    if (simple) return ring;
  }
}

TEST(ContourInside, AgreesWithSamplingWhereverContoursDoNotCross) {
  support::Random random(3);
  int decidedByInterior = 0;
  int insideCount = 0;
  for (int round = 0; round < 20000; ++round) {
    SCOPED_TRACE(round);
    const GridRing a = RandomTriangleOrQuad(random, 4);
    const GridRing b = RandomTriangleOrQuad(random, 4);
    const Relation relation = Sampled(a, b, 4);
    if (relation == Relation::kMixed) continue;
    const OwnedContour inner = MakeGridContour(a);
    const OwnedContour outer = MakeGridContour(b);
    EXPECT_EQ(ContourInside(inner.get(), outer.get()), relation == Relation::kInside);
    insideCount += relation == Relation::kInside ? 1 : 0;
    decidedByInterior += Locate(a[0], outer.get()) == Location::kBoundary ? 1 : 0;
    ReverseContour(inner.get());
    EXPECT_EQ(ContourInside(inner.get(), outer.get()), relation == Relation::kInside);
  }
  EXPECT_GT(decidedByInterior, 1000);
  EXPECT_GT(insideCount, 200);
}

TEST(ContourInside, AContourThatSurroundsTheOtherWithTheSameBoxIsNotInside) {
  // The notch of `small` leaves it within the square and touches no corner of it.
  const OwnedContour square = MakeGridContour({{0, 0}, {8, 0}, {8, 8}, {0, 8}});
  const OwnedContour small = MakeGridContour({{0, 0}, {8, 0}, {8, 8}, {4, 4}, {0, 8}});
  EXPECT_TRUE(ContourInside(small.get(), square.get()));
  EXPECT_FALSE(ContourInside(square.get(), small.get()));
  EXPECT_FALSE(ContourInside(square.get(), nullptr));
}

TEST(PointInContour, FalseOnEveryPointOfTheBoundary) {
  const OwnedContour diamond = MakeGridContour({{4, 0}, {8, 4}, {4, 8}, {0, 4}});
  for (std::int32_t x = -1; x <= 9; ++x) {
    for (std::int32_t y = -1; y <= 9; ++y) {
      const int distance = std::abs(x - 4) + std::abs(y - 4);
      EXPECT_EQ(PointInContour({x, y}, diamond.get()), distance < 4) << x << "," << y;
      EXPECT_EQ(Locate({x, y}, diamond.get()) == Location::kBoundary, distance == 4);
    }
  }
  EXPECT_FALSE(PointInContour({0, 0}, nullptr));
}

TEST(PlaceContour, AHoleGoesToTheInnermostAreaRightBehindItsOuterContour) {
  const auto square = [](std::int32_t lo, std::int32_t hi) {
    return MakeGridContour({{lo, lo}, {hi, lo}, {hi, hi}, {lo, hi}});
  };
  const auto hole = [&](std::int32_t lo, std::int32_t hi) {
    OwnedContour contour = square(lo, hi);
    ReverseContour(contour.get());
    return contour;
  };
  OwnedRing ring;
  try {
    PlaceContour(ring.first, hole(1, 2).get());
    ADD_FAILURE() << "a hole without an area was placed";
  } catch (CException* exception) {
    EXPECT_EQ(ERR::Delete(exception), ERR::FAIL);
  }
  for (const std::int32_t inset : {10, 0, 20, 40}) {
    PlaceContour(ring.first, square(inset, 100 - inset).release());
  }
  OwnedContour second = hole(30, 70);
  OwnedContour first = hole(30, 35);
  OwnedContour outside = hole(-9, -3);
  Area* third = ring.first->next->next;
  PlaceContour(ring.first, first.release());
  PlaceContour(ring.first, second.release());
  ASSERT_NE(third->contours->next, nullptr) << "20..80 is the innermost that contains 30..70";
  EXPECT_EQ(PointsOf(third->contours->next)[0], (GridPoint{30, 30}));
  EXPECT_EQ(third->contours->next->gridBox.max.gx, 70);
  EXPECT_EQ(third->contours->next->next->gridBox.max.gx, 35);
  try {
    PlaceContour(ring.first, outside.get());
    ADD_FAILURE();
  } catch (CException* e) {
    EXPECT_EQ(ERR::Delete(e), ERR::FAIL);
  }
}

}  // namespace
}  // namespace zelvan
