// BlockPool and VertexTable: the order in which slots are handed out and visited,
// and the search by place against the plain scan.
#include "memory/block_pool.h"

#include <gtest/gtest.h>

#include <vector>

#include "polygon/records.h"
#include "polygon/vertex_table.h"
#include "support/random.h"

namespace zelvan {
namespace {

struct Record {
  int value;
  void* link;
};

std::vector<int> LiveValues(BlockPool<Record>& pool) {
  std::vector<int> values;
  pool.Find([&](const Record& record) {
    values.push_back(record.value);
    return false;
  });
  return values;
}

TEST(BlockPool, HandsOutFromTheLastSlotDownAndVisitsNewestBlockFirst) {
  BlockPool<Record> pool;
  pool.Release();  // nothing to do yet
  std::vector<Record*> taken;
  for (int i = 0; i < 18; ++i) {
    taken.push_back(pool.Take());
    EXPECT_EQ(taken.back()->value, 0);
    taken.back()->value = i;
  }
  for (int i = 1; i < 16; ++i) EXPECT_LT(taken[i], taken[i - 1]);
  EXPECT_EQ(LiveValues(pool),
            (std::vector<int>{17, 16, 15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0}));

  pool.Give(taken[3]);
  pool.Give(taken[16]);
  EXPECT_EQ(LiveValues(pool).size(), 16u);
  EXPECT_EQ(pool.Take(), taken[16]) << "the slot given back last is the next taken";
  EXPECT_EQ(pool.Take(false), taken[3]);
  EXPECT_EQ(taken[16]->value, 0);
  EXPECT_EQ(taken[3]->value, 3) << "not zero-filled unless asked";
  EXPECT_EQ(pool.Count(), 18u);

  pool.Release();
  EXPECT_EQ(pool.Count(), 0u);
  EXPECT_TRUE(LiveValues(pool).empty());
  EXPECT_EQ(pool.Take()->value, 0);
}

TEST(VertexTable, FindsWhatAScanFinds) {
  support::Random random(1);
  for (const int n : {0, 1, 7, 300}) {
    std::vector<VertexNode> nodes(static_cast<std::size_t>(n));
    std::vector<VertexNode*> vertices;
    for (VertexNode& node : nodes) {
      node.grid = {random.Between(-GRID_OFFSET, -GRID_OFFSET + 12), random.Between(-8, 8)};
      vertices.push_back(&node);
    }
    VertexTable table;
    EXPECT_EQ(table.Find({0, 0}), -1);
    table.Assign(vertices);
    for (std::int32_t gx = -GRID_OFFSET; gx < -GRID_OFFSET + 14; ++gx) {
      for (std::int32_t gy = -9; gy <= 9; ++gy) {
        std::int32_t scan = -1;
        for (int i = n; i-- > 0;) {
          if (nodes[static_cast<std::size_t>(i)].grid == GridPoint{gx, gy}) scan = i;
        }
        EXPECT_EQ(table.Find({gx, gy}), scan);
      }
    }
    table.Clear();
    EXPECT_EQ(table.Find({-GRID_OFFSET, 0}), -1);
  }
}

}  // namespace
}  // namespace zelvan
