// What is read back from the library: a region as contours over a list of
// vertices and, once it is cut, its edges and triangles.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <vector>

#include "geometry.h"

namespace tool {

struct MeshEdge {
  int from;
  int to;
  bool diagonal;  // inside, not on a contour
};

struct Mesh {
  std::vector<Point> vertices;                // contour after contour
  std::vector<std::size_t> contours;          // their sizes: each outer one, then its holes
  std::vector<MeshEdge> edges;                // empty until cut, as are the triangles
  std::vector<std::array<int, 3>> triangles;  // corners, counter-clockwise

  std::vector<Ring> Rings() const;
  std::vector<Polygon> Region() const;
  std::vector<Polygon> Triangles() const;
  double TriangleArea() const;
};

// What is left of a mesh without some of its contours and all that stands on
// their vertices; `drop` answers for a contour.
Mesh Without(const Mesh& mesh, const std::function<bool(const Ring&)>& drop);

// Puts a part behind what is there.
void Append(Mesh& mesh, const Mesh& part);

}  // namespace tool
