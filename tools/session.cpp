#include "session.h"

#include <zelvan/zelvan.h>

#include <cmath>
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

// The holes that have area on the grid of the outer contour; where the library takes
// a needle for a line, as it is on the grid.
void SubtractHoles(const Polygon& polygon, const Scale& scale, const Box& box, Cut& cut) {
  for (std::size_t i = 0; i < polygon.holes.size(); ++i) {
    const Ring exact = scale.In(polygon.holes[i]);
    const Ring steps = OnGrid(exact, box);
    const Ring on_grid = FromGrid(steps, box);
    if (!HasArea(steps) || !SeesArea(exact, on_grid)) {
      cut.vanished.push_back(i);
    } else if (!QueueContour(exact, Scale()) && !QueueContour(on_grid, Scale())) {
      cut.failure = "hole " + std::to_string(i + 1) + " is not usable";
      return;
    }
  }
  if (!SubtractQueued()) cut.failure = "its holes could not be subtracted";
}

}  // namespace

bool SeesArea(const Ring& exact, const Ring& on_grid) {
  constexpr double kTolerance = 1e-5;
  return HasArea(exact, kTolerance) || HasArea(on_grid, kTolerance);
}

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

namespace {

// Whether an area is a ring's but for a grid step along each edge.
bool IsAreaOf(const Ring& ring, double area) {
  Box box;
  box.Add(ring);
  double slack = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Point& p = ring[i];
    const Point& q = ring[(i + 1) % ring.size()];
    slack += std::abs(q.x - p.x) * (box.high.y - box.low.y) / kGridSteps;
    slack += std::abs(q.y - p.y) * (box.high.x - box.low.x) / kGridSteps;
  }
  return std::abs(std::abs(SignedArea(ring)) - area) <= slack;
}

// A vertex that nearly touches the closing edge can come to lie behind it on the grid.
// United with itself the main contour is sound; but one that crossed its closing edge
// from the start loses area by that.
bool Resolve(const Ring& main, const Scale& scale, Mesh& mesh) {
  if (!QueueContour(main, scale) || !UniteQueued() || !CutMain()) return false;
  mesh = ReadMain(scale, true);
  return IsAreaOf(main, mesh.TriangleArea());
}

}  // namespace

Cut TriangulatePolygon(const Polygon& polygon, const Scale& scale) {
  Cut cut;
  const Ring outer = scale.In(polygon.outer);
  Box box;
  box.Add(outer);
  if (!HasArea(OnGrid(outer, box))) {
    cut.failure = kNoArea;
  } else if (!SetMain(polygon.outer, scale)) {
    cut.failure = kNotUsable;
  } else {
    SubtractHoles(polygon, scale, box, cut);
  }
  if (!cut.failure.empty()) return cut;
  if (CutMain()) {
    cut.mesh = ReadMain(scale, true);
  } else if (GetContourCount() == 0) {
    cut.failure = kNothingLeft;
  } else if (!Resolve(polygon.outer, scale, cut.mesh)) {
    cut.failure = "cannot be triangulated on the library's grid";
  }
  return cut;
}

}  // namespace tool
