// The flat interface for tests: everything it returns, in one record.
#pragma once

#include <zelvan/zelvan.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "interface/workspace.h"
#include "support/mesh_checker.h"

namespace support {

using Xyz = std::vector<double>;  // (x, y, z) triples

inline int SetMain(const Xyz& xyz) {
  return SetMainContour(static_cast<int>(xyz.size()), xyz.data());
}
inline int AddHole(const Xyz& xyz) {
  return SetHole(static_cast<int>(xyz.size()), xyz.data());
}

struct ReadBack {
  int counted = 0;  // what GetCounts returned
  int vertexCount = 0;
  int edgeCount = 0;
  int faceCount = 0;
  std::vector<double> vertices;
  std::vector<std::int32_t> edges;
  std::vector<std::int32_t> faces;
  std::vector<int> contourIndex;
  std::vector<int> contourSize;

  friend bool operator==(const ReadBack&, const ReadBack&) = default;
};

inline ReadBack Read() {
  ReadBack r;
  r.counted = GetCounts(&r.vertexCount, &r.edgeCount, &r.faceCount);
  r.vertices.resize(3 * static_cast<std::size_t>(r.vertexCount));
  r.edges.resize(3 * static_cast<std::size_t>(r.edgeCount));
  r.faces.resize(3 * static_cast<std::size_t>(r.faceCount));
  GetVertices(r.vertices.data());
  GetEdges(r.edges.data());
  GetFaces(r.faces.data());
  for (int i = 0; i < GetContourCount(); ++i) {
    r.contourIndex.push_back(GetContourIndex(i));
    r.contourSize.push_back(GetContourSize(i));
  }
  return r;
}

/// What is wrong with a triangulation read back, or nothing. The polygon must still
/// be the main one: its vertices go back to the grid of its box, which only the
/// library knows.
inline std::string CheckFlatMesh(const ReadBack& r) {
  const zelvan::Shape* shape = zelvan::ProcessWorkspace().Main();
  const auto toGrid = [](double v, double low, double high) {
    return static_cast<std::int32_t>(std::lround((v - low) / (high - low) * zelvan::GRID_MAX)) -
           zelvan::GRID_OFFSET;
  };
  zelvan::test::FlatMesh mesh;
  mesh.contourSizes = {r.contourSize.begin(), r.contourSize.end()};
  for (std::size_t i = 0; i < r.vertices.size(); i += 3) {
    mesh.points.push_back({toGrid(r.vertices[i], shape->boxMin.x, shape->boxMax.x),
                           toGrid(r.vertices[i + 1], shape->boxMin.y, shape->boxMax.y)});
  }
  const auto inThrees = [](const std::vector<std::int32_t>& list, auto& threes) {
    for (std::size_t i = 0; i < list.size(); i += 3) {
      threes.push_back({list[i], list[i + 1], list[i + 2]});
    }
  };
  inThrees(r.edges, mesh.edges);
  inThrees(r.faces, mesh.faces);
  return zelvan::test::CheckMesh(mesh);
}

}  // namespace support
