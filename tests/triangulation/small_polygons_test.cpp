// All polygons on a tiny grid, where everything is aligned, collinear or touching,
// and random ones against the oracle of areas; the two builders against each other.
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "support/delaunay_checker.h"
#include "support/mesh_checker.h"
#include "support/polygon_families.h"
#include "support/region_oracle.h"
#include "triangulation/area_sweep.h"
#include "triangulation/triangulate.h"

namespace {

using zelvan::test::BoundsAnArea;
using zelvan::test::Describe;
using zelvan::test::Random;
using zelvan::test::Region;
using zelvan::test::Ring;

using Order = std::vector<std::uint32_t>;
using TriangleSet = std::vector<std::array<std::uint32_t, 3>>;

// Cuts one region by the sweep and, under several orders, by insertion, and holds the
// results together.
class Trial {
 public:
  explicit Trial(const Region& region)
      : region_(region),
        shape_(zelvan::test::MakeShape({region})),
        swept_(VORNEX::TriangulateBySweep(*shape_->areas)) {
    if (swept_) wrong_ = Judge();
    const std::string verdict = zelvan::test::CheckDelaunay(*shape_->areas);
    if (swept_ || verdict != "the area cannot be cut") wrong_ += verdict;
    if (!swept_ && verdict.empty()) ++byInsertion;
  }

  // Where the sweep succeeds the insertion does, with the same triangles, and where the
  // region bounds an area both succeed.
  testing::AssertionResult Try(const Order& order, bool isArea) {
    inserted_ = VORNEX::TriangulateAreas(shape_->areas, {.positions = order}) == ERR::OK;
    if (inserted_ && wrong_.empty()) wrong_ = Judge();
    if (!inserted_ && shape_->areas->triangles != nullptr) wrong_ = "triangles after a failure";
    if ((swept_ || isArea) && !inserted_) wrong_ = "the insertion failed";
    if (isArea && !swept_) wrong_ = "the sweep gave up";
    if (wrong_.empty()) return testing::AssertionSuccess();
    auto failure = testing::AssertionFailure()
                   << wrong_ << " on " << Describe(region_) << " in order";
    for (const std::uint32_t i : order) failure << " " << i;
    return failure;
  }

  testing::AssertionResult MustSucceed(const Order& order) { return Try(order, true); }

  testing::AssertionResult MustSucceedInAllOrders() {
    Order order(shape_->vertexTable.size());
    std::iota(order.begin(), order.end(), 0u);
    do {
      const auto result = MustSucceed(order);
      if (!result) return result;
    } while (std::next_permutation(order.begin(), order.end()));
    return testing::AssertionSuccess();
  }

  inline static int byInsertion = 0;

  // Was the last try refused by the insertion, and so by both?
  [[nodiscard]] bool refused() const { return !inserted_; }

 private:
  // What is wrong with a success, or nothing.
  std::string Judge() {
    std::string wrong = zelvan::test::CheckTriangles(*shape_->areas);
    const TriangleSet set = zelvan::test::TriangleSet(*shape_);
    if (expected_.empty()) expected_ = set;
    if (wrong.empty() && set != expected_) wrong = "the set of triangles depends on the builder";
    return wrong;
  }

  Region region_;
  std::unique_ptr<zelvan::Shape> shape_;
  bool swept_;
  bool inserted_ = false;
  std::string wrong_;
  TriangleSet expected_;
};

// The numbers of rings are those of a separate count over all sequences.
TEST(SmallPolygons, AllOnAGridOfFourByFour) {
  const std::size_t known[] = {516, 2290, 10004, 35376};
  const std::uint64_t seed = 4;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  Random random(seed);
  for (std::int32_t n = 3; n <= 6; ++n) {
    std::size_t count = 0;
    std::size_t touching = 0;
    zelvan::test::ForEachSmallRing(4, n, true, [&](const Ring& ring) {
      if (testing::Test::HasFailure()) return;
      ++count;
      Trial trial({ring});
      if (n <= 4) {
        EXPECT_TRUE(trial.MustSucceedInAllOrders());
        return;
      }
      const bool simple = zelvan::test::IsSimple({ring});
      if (!simple) {
        ++touching;
        EXPECT_TRUE(trial.MustSucceedInAllOrders());
      }
      for (int k = 0; k < 4; ++k) {
        EXPECT_TRUE(trial.MustSucceed(random.Permutation(static_cast<std::size_t>(n))));
      }
    });
    EXPECT_EQ(count, known[n - 3]) << n;
    EXPECT_EQ(touching, n == 6 ? 16u : 0u) << n;
  }
}

// Random closed paths on tiny grids: what bounds an area must succeed, the rest must
// fail, or give triangles that are right for the winding of the path.
TEST(SmallPolygons, RandomPathsAgainstTheOracle) {
  const std::uint64_t seed = 5;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  Random random(seed);
  std::size_t touching = 0;
  std::size_t refused = 0;
  for (int round = 0; round < 40000 && !HasFailure(); ++round) {
    const std::int32_t side = random.Between(3, 7);
    const std::int32_t wanted = random.Between(5, 12);
    const bool onlyAreas = random.Below(4) != 0;
    Ring ring;
    const auto point = [&] { return zelvan::GridPoint{random.Below(side), random.Below(side)}; };
    for (int k = 0; k < 3; ++k) ring.push_back(point());
    for (int k = 0; k < 30 && static_cast<std::int32_t>(ring.size()) < wanted; ++k) {
      Ring longer = ring;
      longer.insert(longer.begin() + random.Below(static_cast<std::int32_t>(ring.size())), point());
      if (!onlyAreas || BoundsAnArea({longer})) ring = longer;
    }
    if (zelvan::test::TwiceSigned(ring) <= 0) continue;
    const bool isArea = BoundsAnArea({ring});
    if (isArea && !zelvan::test::IsSimple({ring})) ++touching;
    Trial trial({ring});
    for (int k = 0; k < 3; ++k) {
      const Order order = random.Permutation(ring.size());
      EXPECT_TRUE(trial.Try(order, isArea));
      refused += trial.refused() ? 1 : 0;
    }
  }
  EXPECT_GT(touching, 300u) << "too few cases exercise contact";
  EXPECT_GT(refused, 1000u);
  EXPECT_GE(Trial::byInsertion, 4) << "too few cases that the sweep gives up";
}

// Contours that cross themselves on purpose: an answer at once, whatever it is.
TEST(SmallPolygons, CrossingContoursEndInAnAnswer) {
  const std::uint64_t seed = 6;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  Random random(seed);
  for (int round = 0; round < 300; ++round) {
    Region region(static_cast<std::size_t>(random.Between(1, 3)));
    for (Ring& ring : region) {
      const std::int32_t side = random.Below(2) == 0 ? 6 : 500000;
      for (int k = random.Between(3, 60); k > 0; --k) {
        const zelvan::GridPoint p{random.Below(side), random.Below(side)};
        if (ring.empty() || ring.back() != p) ring.push_back(p);
      }
    }
    std::size_t n = 0;
    for (const Ring& ring : region) n += ring.size();
    EXPECT_TRUE(Trial(region).Try(random.Permutation(n), false));
  }
}

}  // namespace
