// The plain cases of every operation with their contours written out, and the parts
// that random cases cannot see.
#include <gtest/gtest.h>

#include "boolean/assembly.h"
#include "boolean/boolean.h"
#include "boolean/fixtures.h"
#include "boolean/operand.h"
#include "boolean/soundness.h"
#include "polygon/contour.h"

namespace zelvan {
namespace {

using fixtures::Box;
using oracle::Areas;
using oracle::Ring;
using oracle::Rings;

Areas Of(BoolOp op, const Areas& a, const Areas& b) {
  const OwnedRing ringA = fixtures::RingOf(a);
  const OwnedRing ringB = fixtures::RingOf(b);
  OwnedRing result;
  EXPECT_EQ(Boolean(ringA.first, ringB.first, result.first, op), ERR::OK);
  EXPECT_TRUE(IsSound(result.first));
  return fixtures::AreasOf(result.first);
}

TEST(Boolean, NestedDisjointEqualAndEmpty) {
  const Areas big{{Box(0, 0, 8, 8)}};
  const Areas small{{Box(2, 2, 4, 4)}};
  const Areas far{{Box(20, 0, 22, 2)}};
  const Areas none;
  EXPECT_EQ(Of(SUBTRACT, big, small), (Areas{{Box(0, 0, 8, 8), {{2, 2}, {2, 4}, {4, 4}, {4, 2}}}}));
  EXPECT_EQ(Of(UNION, big, small), big);
  EXPECT_EQ(Of(INTERSECT, big, small), small);
  EXPECT_EQ(Of(XOR, big, small), Of(SUBTRACT, big, small));
  EXPECT_EQ(Of(UNION, far, big), (Areas{far[0], big[0]}));
  for (const BoolOp op : {UNION, INTERSECT}) EXPECT_EQ(Of(op, big, big), big);
  for (const BoolOp op : {SUBTRACT, XOR}) EXPECT_EQ(Of(op, big, big), none);
  EXPECT_EQ(Of(UNION, {{Box(0, 0, 2, 2)}}, {{Box(2, 0, 4, 2)}}), (Areas{{Box(0, 0, 4, 2)}}));
  EXPECT_EQ(Of(INTERSECT, {{Box(0, 0, 2, 2)}}, {{Box(2, 0, 4, 2)}}), none);
  EXPECT_EQ(Of(XOR, {{Box(0, 0, 2, 2)}}, {{Box(2, 0, 4, 2)}}), (Areas{{Box(0, 0, 4, 2)}}));
  for (const BoolOp op : {UNION, INTERSECT, SUBTRACT, XOR}) {
    EXPECT_EQ(Of(op, none, none), none);
    EXPECT_EQ(Of(op, big, none), op == INTERSECT ? none : big);
    EXPECT_EQ(Of(op, none, big), op == UNION || op == XOR ? big : none);
  }
}

TEST(Operands, CopiesKeepTheOrderOfHolesThatTouchTheirOutline) {
  const auto hole = [](std::int64_t x) { return Ring{{x, 0}, {x, 2}, {x + 1, 2}}; };
  const Areas area{{Box(0, 0, 12, 4), hole(1), hole(4), hole(8)}};
  const OwnedRing ring = fixtures::RingOf(area);
  ring.first->triangles.reset(new Triangle[1]);
  ring.first->triangleCount = 1;
  VertexNode* head = ring.first->contours->head;
  ring.first->triangles[0] = {head, head->next, head->next->next};
  const OwnedRing copy(CopyAreas(ring.first));
  EXPECT_EQ(fixtures::AreasOf(copy.first), area);
  const VertexNode* copied = copy.first->contours->head;
  EXPECT_EQ(copy.first->triangles[0].c, copied->next->next);
  EXPECT_EQ(CountVertices(copy.first), 13u);
  EXPECT_EQ(CountVertices(nullptr), 0u);
}

TEST(Assembly, SimplifiedContoursHaveNoEqualNeighbours) {
  const auto simplified = [](const Ring& ring) {
    const OwnedRing owned = fixtures::RingOf(Rings{ring});
    SimplifyContour(owned.first->contours);
    return fixtures::AreasOf(owned.first)[0][0];
  };
  EXPECT_EQ(simplified({{0, 0}, {2, 0}, {4, 0}, {4, 4}}), (Ring{{0, 0}, {4, 0}, {4, 4}}));
  // Spikes whose tip is the head, of one and of two edges' length.
  for (const Ring& ring : {Ring{{9, 0}, {2, 0}, {2, 4}, {0, 4}, {0, 0}, {2, 0}},
                           Ring{{9, 0}, {7, 0}, {2, 0}, {2, 4}, {0, 4}, {0, 0}, {2, 0}, {7, 0}}}) {
    const Ring result = simplified(ring);
    for (std::size_t i = 0; i < result.size(); ++i) {
      EXPECT_NE(result[i], result[(i + 1) % result.size()]) << fixtures::Text({result});
    }
    EXPECT_EQ(oracle::TwiceArea(result), 16);
  }
}

TEST(Soundness, FaultsAreSeen) {
  const auto sound = [](const Areas& areas) { return IsSound(fixtures::RingOf(areas).first); };
  EXPECT_FALSE(sound({{Box(0, 0, 8, 8), {{0, 0}, {2, 4}, {4, 2}}}})) << "hole at a corner";
  EXPECT_FALSE(sound({{Box(0, 0, 8, 8), {{0, 4}, {4, 6}, {4, 2}}}})) << "hole at an edge";
  EXPECT_FALSE(sound({{{{0, 0}, {8, 0}, {8, 8}, {4, 0}, {0, 8}}}})) << "neck of no width";
  EXPECT_TRUE(sound({{{{0, 8}, {0, 0}, {2, 4}, {4, 2}, {0, 0}, {8, 0}, {8, 8}}}}))
      << "the hole at the corner, as one contour";
  EXPECT_TRUE(sound({{Box(0, 0, 4, 8)}, {{{4, 4}, {6, 2}, {6, 6}}}})) << "touch from outside";
  EXPECT_FALSE(sound({{Box(0, 0, 4, 8)}, {{{3, 4}, {6, 2}, {6, 6}}}})) << "crossing";
  EXPECT_FALSE(sound({{Box(0, 0, 4, 8)}, {Box(4, 2, 6, 6)}})) << "edges that coincide in part";
  EXPECT_FALSE(sound({{Box(0, 0, 8, 8)}, {Box(2, 2, 6, 6)}})) << "area in an area";
  EXPECT_FALSE(sound({{{{0, 0}, {0, 4}, {4, 0}}}})) << "clockwise";
  // Through a vertex: (4,4) lies on the first contour and both neighbours beyond.
  EXPECT_FALSE(sound({{{{0, 0}, {8, 0}, {4, 4}, {0, 8}}}, {{{2, 4}, {4, 4}, {6, 8}}}}));
}

}  // namespace
}  // namespace zelvan
