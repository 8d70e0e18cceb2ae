#include "session.h"

#include <zelvan/zelvan.h>

#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

namespace tool {
namespace {

using Take = int(ZELVAN_CALL*)(int, const double*);

bool Feed(Take take, const Ring& ring, const Scale& scale) {
  if (ring.size() > static_cast<std::size_t>(std::numeric_limits<int>::max() / 3)) return false;
  std::vector<double> xyz;
  xyz.reserve(3 * ring.size());
  for (const Point& point : ring) {
    const Point p = scale.In(point);
    xyz.insert(xyz.end(), {p.x, p.y, 0.0});
  }
  return take(static_cast<int>(xyz.size()), xyz.data()) == 1;
}

void Require(int answer) {
  if (answer != 1) throw std::runtime_error("the library does not give its answer back");
}

void ReadVertices(Mesh& mesh, int count, const Scale& scale) {
  std::vector<double> xyz(3 * static_cast<std::size_t>(count));
  Require(GetVertices(xyz.data()));
  for (std::size_t i = 0; i < xyz.size(); i += 3) {
    mesh.vertices.push_back(scale.Out({xyz[i], xyz[i + 1]}));
  }
  const int contours = GetContourCount();
  for (int i = 0; i < contours; ++i) {
    mesh.contours.push_back(static_cast<std::size_t>(GetContourSize(i)));
  }
}

std::vector<int> ReadTriples(int(ZELVAN_CALL* get)(int*), int count) {
  std::vector<int> triples(3 * static_cast<std::size_t>(count));
  Require(get(triples.data()));
  return triples;
}

int SharedEnd(const MeshEdge& a, const MeshEdge& b) {
  return a.from == b.from || a.from == b.to ? a.from : a.to;
}

// A face gives its edges clockwise: the corners before the first, the last and
// the second edge are its corners counter-clockwise.
void ReadTriangles(Mesh& mesh, int edges, int faces) {
  const std::vector<int> edge = ReadTriples(GetEdges, edges);
  for (std::size_t i = 0; i < edge.size(); i += 3) {
    mesh.edges.push_back({edge[i], edge[i + 1], edge[i + 2] == 2});
  }
  const std::vector<int> face = ReadTriples(GetFaces, faces);
  const auto at = [&](std::size_t i) { return mesh.edges[static_cast<std::size_t>(face[i])]; };
  for (std::size_t i = 0; i < face.size(); i += 3) {
    mesh.triangles.push_back({SharedEnd(at(i + 2), at(i)), SharedEnd(at(i + 1), at(i + 2)),
                              SharedEnd(at(i), at(i + 1))});
  }
}

std::string SubtractHoles(const Polygon& polygon, const Scale& scale) {
  if (polygon.holes.empty()) return "";
  for (std::size_t i = 0; i < polygon.holes.size(); ++i) {
    if (!QueueContour(polygon.holes[i], scale)) {
      return "hole " + std::to_string(i + 1) + " is not usable";
    }
  }
  return SubtractQueued() ? "" : "its holes could not be subtracted";
}

}  // namespace

bool SetMain(const Ring& ring, const Scale& scale) {
  return Feed(SetMainContour, ring, scale);
}
bool QueueContour(const Ring& ring, const Scale& scale) {
  return Feed(SetHole, ring, scale);
}
bool UniteQueued() {
  return Union() == 1;
}
bool SubtractQueued() {
  return Substruct() == 1;
}
bool CutMain() {
  return Triangulate() == 1;
}

Mesh ReadMain(const Scale& scale, bool triangles) {
  Mesh mesh;
  int vertices = 0;
  int edges = 0;
  int faces = 0;
  const int answer = GetCounts(&vertices, &edges, &faces);  // 0 before the first cut
  if (triangles) Require(answer);
  ReadVertices(mesh, vertices, scale);
  if (triangles) ReadTriangles(mesh, edges, faces);
  return mesh;
}

Cut TriangulatePolygon(const Polygon& polygon, const Scale& scale) {
  Cut cut;
  if (!SetMain(polygon.outer, scale)) {
    cut.failure = polygon.holes.empty() ? "not usable" : "its outer contour is not usable";
  } else {
    cut.failure = SubtractHoles(polygon, scale);
  }
  if (!cut.failure.empty()) return cut;
  if (CutMain()) {
    cut.mesh = ReadMain(scale, true);
  } else {
    cut.failure = GetContourCount() == 0 ? "nothing is left of it on the library's grid"
                                         : "cannot be triangulated on the library's grid";
  }
  return cut;
}

}  // namespace tool
