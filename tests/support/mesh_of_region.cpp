// The judge of meshes of regions (mesh_of_region.h).
#include "support/mesh_of_region.h"

#include <algorithm>
#include <cmath>

namespace support {

namespace {

using zelvan::Mesh;
using zelvan::Point;

double Cross(Point a, Point b, Point c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

// Positive where d lies inside the circle through a, b and c, which run counter-clockwise.
std::int64_t InCircle(Point a, Point b, Point c, Point d) {
  const auto row = [d](Point p) {
    const auto x = static_cast<std::int64_t>(p.x - d.x);
    const auto y = static_cast<std::int64_t>(p.y - d.y);
    return std::array<std::int64_t, 3>{x, y, x * x + y * y};
  };
  const auto p = row(a), q = row(b), r = row(c);
  return p[2] * (q[0] * r[1] - q[1] * r[0]) - q[2] * (p[0] * r[1] - p[1] * r[0]) +
         r[2] * (p[0] * q[1] - p[1] * q[0]);
}

bool IsSmallAndWhole(Point p) {
  return std::fabs(p.x) < 16384 && std::fabs(p.y) < 16384 && p.x == std::floor(p.x) &&
         p.y == std::floor(p.y);
}

using Edge = std::pair<std::pair<double, double>, std::pair<double, double>>;

Edge EdgeOf(Point a, Point b) {
  return {{a.x, a.y}, {b.x, b.y}};
}

std::vector<Edge> ContourEdges(const zelvan::Region& region) {
  std::vector<Edge> edges;
  const auto add = [&](const zelvan::Ring& ring) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
      edges.push_back(EdgeOf(ring[i], ring[(i + 1) % ring.size()]));
    }
  };
  for (const zelvan::Polygon& polygon : region.Polygons()) {
    add(polygon.outer);
    for (const zelvan::Ring& hole : polygon.holes) add(hole);
  }
  std::sort(edges.begin(), edges.end());
  return edges;
}

std::string Faults(const zelvan::Region& region, const Mesh& mesh, bool delaunay) {
  const auto corner = [&](std::size_t t, std::size_t k) { return mesh.triangles[t][k % 3]; };
  const auto at = [&](std::size_t t, std::size_t k) { return mesh.vertices[corner(t, k)]; };
  const bool exact = std::all_of(mesh.vertices.begin(), mesh.vertices.end(), IsSmallAndWhole);
  std::vector<Edge> contour;
  std::vector<bool> used(mesh.vertices.size());
  double twice = 0;
  for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
    const double area = Cross(at(t, 0), at(t, 1), at(t, 2));
    if (!(area > 0)) return "a triangle does not run counter-clockwise";
    twice += area;
    for (std::size_t k = 0; k < 3; ++k) {
      used[corner(t, k)] = true;
      const std::int32_t across = mesh.neighbours[t][k];
      if (across < 0) {
        contour.push_back(EdgeOf(at(t, k), at(t, k + 1)));
        continue;
      }
      const auto n = static_cast<std::size_t>(across);
      if (n >= mesh.triangles.size()) return "a neighbour does not exist";
      std::size_t j = 0;
      while (j < 3 && mesh.neighbours[n][j] != static_cast<std::int32_t>(t)) ++j;
      if (j == 3 || corner(n, j) != corner(t, k + 1) || corner(n, j + 1) != corner(t, k)) {
        return "neighbours do not name each other across their edge";
      }
      if (delaunay && exact && InCircle(at(t, 0), at(t, 1), at(t, 2), at(n, j + 2)) > 0) {
        return "a circle holds the vertex across an edge";
      }
    }
  }
  std::sort(contour.begin(), contour.end());
  if (contour != ContourEdges(region)) return "the edges without neighbour are not the contours";
  if (std::find(used.begin(), used.end(), false) != used.end()) return "a vertex is not used";
  // Of a map in degrees the sum is not exact.
  if (std::fabs(twice / 2 - region.Area()) > (exact ? 0 : 1e-9 * region.Area())) {
    return "the areas do not sum to the region's";
  }
  return "";
}

}  // namespace

std::string FaultsOfMesh(const zelvan::Region& region) {
  for (const bool delaunay : {false, true}) {
    const std::string faults = Faults(region, zelvan::Triangulate(region, {delaunay}), delaunay);
    if (!faults.empty()) return (delaunay ? "Delaunay: " : "plain: ") + faults;
  }
  return "";
}

}  // namespace support
