// The order of points against a plain sort.
#include "polygon/key_sort.h"

#include <gtest/gtest.h>

#include <numeric>

#include "support/random.h"

namespace {

using zelvan::GridPoint;

TEST(KeySort, OrdersPointsAsAPlainSortDoes) {
  const std::uint64_t seed = 22;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  support::Random random(seed);
  for (const std::int32_t half : {1, 150, zelvan::GRID_OFFSET - 1}) {
    for (const std::uint32_t n : {1u, 50u, 500u, 5000u}) {
      std::vector<GridPoint> points(n);
      for (GridPoint& p : points) {
        p.gx = random.Between(-half, half);
        p.gy = random.Between(-half, half);
      }
      std::vector<std::uint32_t> expected(n);
      std::iota(expected.begin(), expected.end(), 0u);
      std::stable_sort(expected.begin(), expected.end(), [&](std::uint32_t a, std::uint32_t b) {
        return std::pair(points[a].gy, points[a].gx) > std::pair(points[b].gy, points[b].gx);
      });
      std::vector<std::uint32_t> firsts;  // the run of each place, by its first place
      for (std::uint32_t k = 0; k < n; ++k) {
        const bool same = k > 0 && points[expected[k]] == points[expected[k - 1]];
        firsts.push_back(same ? firsts.back() : k);
      }
      for (const std::size_t packLimit : {std::size_t{0}, std::size_t{n}}) {
        const zelvan::KeyOrder order = zelvan::SortByKey(
            n, [&](std::uint32_t i) { return zelvan::KeyFromTheTop(points[i]); }, packLimit);
        ASSERT_EQ(order.positions, expected);
        std::vector<std::uint32_t> runs(n);
        std::iota(runs.begin(), runs.end(), 0u);
        for (const auto& run : order.equal) {
          ASSERT_GE(run.end - run.begin, 2u);
          std::fill(runs.begin() + run.begin, runs.begin() + run.end, run.begin);
        }
        ASSERT_EQ(runs, firsts);
      }
    }
  }
}

}  // namespace
