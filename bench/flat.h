// A host's calls of the flat interface, each of which must succeed.
#pragma once

#include <zelvan/zelvan.h>

#include <cmath>
#include <vector>

#include "contours.h"
#include "harness.h"

namespace bench {

inline void Set(const Xyz& contour) {
  Require(SetMainContour(static_cast<int>(contour.size()), contour.data()) == 1,
          "the main contour was refused");
}

inline void Queue(const Xyz& contour) {
  Require(SetHole(static_cast<int>(contour.size()), contour.data()) == 1,
          "a further contour was refused");
}

inline void Clear() {
  SetMainContour(0, nullptr);
}

struct Mesh {
  std::vector<double> vertices;
  std::vector<int> edges;
  std::vector<int> faces;
};

inline void ReadOut(Mesh& mesh) {
  int vertexCount = 0, edgeCount = 0, faceCount = 0;
  Require(GetCounts(&vertexCount, &edgeCount, &faceCount) == 1, "there are no triangles");
  mesh.vertices.resize(3 * static_cast<std::size_t>(vertexCount));
  mesh.edges.resize(3 * static_cast<std::size_t>(edgeCount));
  mesh.faces.resize(3 * static_cast<std::size_t>(faceCount));
  Require(GetVertices(mesh.vertices.data()) == 1, "no vertices are read");
  Require(GetEdges(mesh.edges.data()) == 1, "no edges are read");
  Require(GetFaces(mesh.faces.data()) == 1, "no faces are read");
}

/// The sum of the triangles' areas.
inline double Area(const Mesh& mesh) {
  double sum = 0.0;
  for (std::size_t face = 0; face < mesh.faces.size(); face += 3) {
    const int* a = &mesh.edges[3 * static_cast<std::size_t>(mesh.faces[face])];
    const int* b = &mesh.edges[3 * static_cast<std::size_t>(mesh.faces[face + 1])];
    const int third = b[0] == a[0] || b[0] == a[1] ? b[1] : b[0];
    Xyz triangle;
    for (const int vertex : {a[0], a[1], third}) {
      const double* point = &mesh.vertices[3 * static_cast<std::size_t>(vertex)];
      Add(triangle, point[0], point[1]);
    }
    sum += std::fabs(DoubleArea(triangle)) / 2;
  }
  return sum;
}

/// The area of the main polygon, as its contours are read out: outer contours run one
/// way, holes the other.
inline double MainArea() {
  std::vector<int> sizes;
  std::size_t vertices = 0;
  for (int i = 0; i < GetContourCount(); ++i) {
    sizes.push_back(GetContourSize(i));
    vertices += static_cast<std::size_t>(sizes.back());
  }
  Xyz all(3 * vertices);
  Require(GetVertices(all.data()) == 1, "no vertices are read");
  double sum = 0.0;
  auto first = all.begin();
  for (const int size : sizes) {
    sum += DoubleArea(Xyz(first, first + 3 * size)) / 2;
    first += 3 * size;
  }
  return std::fabs(sum);
}

}  // namespace bench
