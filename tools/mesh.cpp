#include "mesh.h"

#include <utility>

namespace tool {
namespace {

Ring Corners(const Mesh& mesh, const std::array<int, 3>& triangle) {
  Ring ring;
  for (const int corner : triangle) ring.push_back(mesh.vertices[static_cast<std::size_t>(corner)]);
  return ring;
}

}  // namespace

std::vector<Ring> Mesh::Rings() const {
  std::vector<Ring> rings;
  auto next = vertices.begin();
  for (const std::size_t size : contours) {
    const auto end = next + static_cast<std::ptrdiff_t>(size);
    rings.emplace_back(next, end);
    next = end;
  }
  return rings;
}

// Outer contours run counter-clockwise, holes clockwise.
std::vector<Polygon> Mesh::Region() const {
  std::vector<Polygon> region;
  for (Ring& ring : Rings()) {
    if (region.empty() || SignedArea(ring) > 0) {
      region.push_back({std::move(ring), {}});
    } else {
      region.back().holes.push_back(std::move(ring));
    }
  }
  return region;
}

std::vector<Polygon> Mesh::Triangles() const {
  std::vector<Polygon> polygons;
  for (const auto& triangle : triangles) polygons.push_back({Corners(*this, triangle), {}});
  return polygons;
}

double Mesh::TriangleArea() const {
  double area = 0;
  for (const auto& triangle : triangles) area += SignedArea(Corners(*this, triangle));
  return area;
}

Mesh Without(const Mesh& mesh, const std::function<bool(const Ring&)>& drop) {
  Mesh rest;
  std::vector<int> renumbered;  // -1 for a vertex that goes
  for (const Ring& ring : mesh.Rings()) {
    const bool stays = !drop(ring);
    for (const Point& p : ring) {
      renumbered.push_back(stays ? static_cast<int>(rest.vertices.size()) : -1);
      if (stays) rest.vertices.push_back(p);
    }
    if (stays) rest.contours.push_back(ring.size());
  }
  const auto at = [&](int vertex) { return renumbered[static_cast<std::size_t>(vertex)]; };
  for (const MeshEdge& edge : mesh.edges) {
    if (at(edge.from) >= 0) rest.edges.push_back({at(edge.from), at(edge.to), edge.diagonal});
  }
  for (const auto& [p, q, r] : mesh.triangles) {
    if (at(p) >= 0) rest.triangles.push_back({at(p), at(q), at(r)});
  }
  return rest;
}

void Append(Mesh& mesh, const Mesh& part) {
  const int first = static_cast<int>(mesh.vertices.size());
  mesh.vertices.insert(mesh.vertices.end(), part.vertices.begin(), part.vertices.end());
  mesh.contours.insert(mesh.contours.end(), part.contours.begin(), part.contours.end());
  for (const MeshEdge& edge : part.edges) {
    mesh.edges.push_back({edge.from + first, edge.to + first, edge.diagonal});
  }
  for (const auto& [p, q, r] : part.triangles) {
    mesh.triangles.push_back({p + first, q + first, r + first});
  }
}

}  // namespace tool
