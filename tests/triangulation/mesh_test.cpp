// The numbering of edges and faces, and the index against the plain scan.
#include "triangulation/mesh.h"

#include <gtest/gtest.h>

#include "support/mesh_checker.h"
#include "support/polygon_families.h"
#include "triangulation/triangulate.h"

namespace {

using VORNEX::MeshEdge;
using VORNEX::MeshFace;
using VORNEX::TriangleMesh;
using zelvan::test::MakeShape;

TEST(TriangleMesh, FindsEdgesAsAScanDoes) {
  const std::uint64_t seed = 8;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  zelvan::test::Random random(seed);
  const zelvan::VertexTable none;
  TriangleMesh mesh(none);
  std::vector<MeshEdge> scanned;
  for (int k = 0; k < 3000; ++k) {
    const MeshEdge wanted{random.Between(-1, 40), random.Between(-1, 40), random.Below(2) == 0};
    std::size_t number = 0;
    while (number < scanned.size() &&
           !(scanned[number].first == wanted.first && scanned[number].second == wanted.second) &&
           !(scanned[number].first == wanted.second && scanned[number].second == wanted.first)) {
      ++number;
    }
    if (number == scanned.size()) scanned.push_back(wanted);
    ASSERT_EQ(mesh.FindOrAddEdge(wanted.first, wanted.second, wanted.onContour), number);
    if (random.Below(500) == 0) {
      const std::size_t kept = scanned.size() - scanned.size() / 3;
      scanned.resize(kept);
      mesh.Truncate(kept, 0);
    }
  }
  EXPECT_EQ(mesh.edges(), scanned);
}

TEST(TriangleMesh, NumbersContinueAcrossAreasAndCoincidentVerticesShareTheLowest) {
  const auto shape = MakeShape({{{{0, 0}, {4, 0}, {4, 4}}}, {{{4, 4}, {8, 4}, {8, 8}, {4, 8}}}});
  ASSERT_TRUE(Triangulate(*shape));
  EXPECT_EQ(zelvan::test::CheckMesh(*shape), "");
  EXPECT_EQ(shape->mesh->VertexIndex(shape->vertexTable[3]), 2);
  EXPECT_EQ(shape->mesh->faces().size(), 3u);
}

}  // namespace
