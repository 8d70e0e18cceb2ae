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

std::vector<Mesh> SplitAreas(const Mesh& mesh) {
  std::vector<Mesh> areas;
  std::vector<std::size_t> area_of;  // per vertex
  std::vector<int> first;            // the first vertex of each area
  for (const Ring& ring : mesh.Rings()) {
    if (areas.empty() || SignedArea(ring) > 0) {
      areas.emplace_back();
      first.push_back(static_cast<int>(area_of.size()));
    }
    Mesh& area = areas.back();
    area.contours.push_back(ring.size());
    area.vertices.insert(area.vertices.end(), ring.begin(), ring.end());
    area_of.insert(area_of.end(), ring.size(), areas.size() - 1);
  }
  for (const MeshEdge& edge : mesh.edges) {
    const std::size_t a = area_of[static_cast<std::size_t>(edge.from)];
    areas[a].edges.push_back({edge.from - first[a], edge.to - first[a], edge.diagonal});
  }
  for (const auto& [p, q, r] : mesh.triangles) {
    const std::size_t a = area_of[static_cast<std::size_t>(p)];
    areas[a].triangles.push_back({p - first[a], q - first[a], r - first[a]});
  }
  return areas;
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
