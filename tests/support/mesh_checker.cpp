// The judge of triangulations (mesh_checker.h).
#include "support/mesh_checker.h"

#include <zelvan/region.h>

#include <algorithm>
#include <boost/multiprecision/cpp_int.hpp>
#include <cmath>
#include <map>
#include <utility>

#include "polygon/area.h"
#include "triangulation/area_sweep.h"
#include "triangulation/engine.h"
#include "triangulation/mesh.h"
#include "triangulation/region_triangles.h"

namespace zelvan::test {

namespace {

using Numbers = std::array<std::uint32_t, 3>;
using Edge = std::pair<std::uint32_t, std::uint32_t>;
using Points = std::vector<GridPoint>;

// For coordinates of up to 31 bits.
std::int64_t TwiceArea(GridPoint a, GridPoint b, GridPoint c) {
  return (std::int64_t{b.gx} - a.gx) * (std::int64_t{c.gy} - a.gy) -
         (std::int64_t{b.gy} - a.gy) * (std::int64_t{c.gx} - a.gx);
}

// Points contour after contour, and the edges of the contours as pairs of numbers.
struct Contours {
  Points points;
  std::vector<Edge> edges;
  std::uint64_t twiceArea = 0;
  std::int64_t wanted = 0;  // triangles, where no contours touch

  void Close() {
    const auto first = static_cast<std::uint32_t>(edges.size());
    const auto end = static_cast<std::uint32_t>(points.size());
    std::uint64_t twice = 0;  // the sum fits 63 bits and a sign, though not every part of it
    for (std::uint32_t i = first; i < end; ++i) {
      edges.push_back({i, i + 1 < end ? i + 1 : first});
      twice += static_cast<std::uint64_t>(
          TwiceArea(points[first], points[i], points[edges.back().second]));
    }
    twiceArea += twice;
    wanted += end - first + (twice >> 63 == 0 ? -2 : 2);
  }

  // For each vertex the lowest number on its point.
  [[nodiscard]] std::vector<std::uint32_t> Lowest() const {
    std::map<GridPoint, std::uint32_t> first;
    std::vector<std::uint32_t> lowest;
    for (const GridPoint p : points) {
      lowest.push_back(first.emplace(p, static_cast<std::uint32_t>(lowest.size())).first->second);
    }
    return lowest;
  }

  void Renumber(const std::vector<std::uint32_t>& numbers) {
    for (auto& [a, b] : edges) a = numbers[a], b = numbers[b];
  }
};

std::string Faults(const Contours& contours, const std::vector<Numbers>& triangles) {
  std::map<Edge, int> uses;  // by triangles, less those by contours
  std::map<Edge, int> onContour;
  for (const Edge& edge : contours.edges) --uses[edge], ++onContour[edge];
  std::uint64_t rest = contours.twiceArea;
  for (const auto& [a, b, c] : triangles) {
    if (std::max({a, b, c}) >= contours.points.size()) return "a triangle names no vertex";
    const std::int64_t twice =
        TwiceArea(contours.points[a], contours.points[b], contours.points[c]);
    if (twice <= 0) return "a triangle is not strictly counter-clockwise";
    rest -= static_cast<std::uint64_t>(twice);
    ++uses[{a, b}], ++uses[{b, c}], ++uses[{c, a}];
  }
  if (rest != 0) return "twice the area is wrong by " + std::to_string(rest);
  for (const auto& [edge, times] : uses) {
    const auto back = uses.find({edge.second, edge.first});
    if (onContour.count(edge) != 0 ? times != 0 : times != 1 || back == uses.end()) {
      return "edge " + std::to_string(edge.first) + " is not used once from each side";
    }
  }
  return "";
}

std::string FaultsOfCount(std::size_t count, const Contours& contours) {
  if (static_cast<std::int64_t>(count) == contours.wanted) return "";
  return std::to_string(count) + " triangles, not " + std::to_string(contours.wanted);
}

// Neighbours as the directed edges of the triangles say.
std::vector<std::array<std::int32_t, 3>> Neighbours(const std::vector<Numbers>& triangles) {
  std::map<Edge, std::int32_t> sides;
  for (std::size_t t = 0; t < triangles.size(); ++t) {
    for (std::size_t k = 0; k < 3; ++k) {
      sides[{triangles[t][(k + 1) % 3], triangles[t][k]}] = static_cast<std::int32_t>(t);
    }
  }
  std::vector<std::array<std::int32_t, 3>> neighbours(triangles.size());
  for (std::size_t t = 0; t < triangles.size(); ++t) {
    for (std::size_t k = 0; k < 3; ++k) {
      const auto twin = sides.find({triangles[t][k], triangles[t][(k + 1) % 3]});
      neighbours[t][k] = twin == sides.end() ? -1 : twin->second;
    }
  }
  return neighbours;
}

// Of corners on one circle the lowest, of equally low ones the leftmost, is an end of the edge.
std::string FaultsOfDelaunay(const Points& points, const std::vector<Numbers>& triangles,
                             const std::vector<std::array<std::int32_t, 3>>& neighbours) {
  const auto isLower = [](GridPoint p, GridPoint q) {
    return std::pair(p.gy, p.gx) < std::pair(q.gy, q.gx);
  };
  for (std::size_t t = 0; t < triangles.size(); ++t) {
    for (std::size_t k = 0; k < 3; ++k) {
      if (neighbours[t][k] < 0) continue;
      const auto at = [&](std::size_t i) { return points[triangles[t][(k + i) % 3]]; };
      const GridPoint a = at(0), b = at(1), c = at(2);
      for (const std::uint32_t v : triangles[static_cast<std::size_t>(neighbours[t][k])]) {
        const GridPoint d = points[v];
        if (d == a || d == b) continue;
        const int side = InCircle(a, b, c, d);
        if (side > 0) return "an edge is not Delaunay";
        if (side == 0 && std::min(a, b, isLower) != std::min({a, b, c, d}, isLower)) {
          return "corners on a circle are cut in another way";
        }
      }
    }
  }
  return "";
}

Contours ContoursOf(const Area& area, std::map<const VertexNode*, std::uint32_t>& numbers) {
  Contours contours;
  for (const Contour* c = area.contours; c != nullptr; c = c->next) {
    ForEachVertex(c, [&](const VertexNode* v) {
      numbers.emplace(v, static_cast<std::uint32_t>(contours.points.size()));
      contours.points.push_back(v->grid);
    });
    contours.Close();
  }
  return contours;
}

std::vector<Numbers> TrianglesOf(const Area& area,
                                 const std::map<const VertexNode*, std::uint32_t>& numbers) {
  std::vector<Numbers> triangles;
  for (std::uint32_t i = 0; i < area.triangleCount; ++i) {
    const Triangle& t = area.triangles[i];
    triangles.push_back({numbers.at(t.a), numbers.at(t.b), numbers.at(t.c)});
  }
  return triangles;
}

std::vector<Numbers> Sorted(std::vector<Numbers> triangles) {
  for (Numbers& t : triangles) std::sort(t.begin(), t.end());
  std::sort(triangles.begin(), triangles.end());
  return triangles;
}

// Edges and faces as plain scans number them.
void Number(const std::vector<Numbers>& triangles, const Contours& contours, FlatMesh& mesh) {
  std::vector<Edge> onContour = contours.edges;
  for (const auto& [a, b] : contours.edges) onContour.push_back({b, a});
  std::sort(onContour.begin(), onContour.end());
  std::map<Edge, std::int32_t> numbers;
  for (const Numbers& t : triangles) {
    std::array<std::int32_t, 3> face{};
    for (std::size_t k = 0; k < 3; ++k) {
      const Edge edge{t[k], t[(k + 1) % 3]};
      const auto next = static_cast<std::int32_t>(mesh.edges.size());
      const auto [found, isNew] = numbers.emplace(std::minmax(edge.first, edge.second), next);
      face[k] = found->second;
      if (!isNew) continue;
      const bool contour = std::binary_search(onContour.begin(), onContour.end(), edge);
      mesh.edges.push_back({static_cast<std::int32_t>(edge.first),
                            static_cast<std::int32_t>(edge.second), contour ? 0 : 2});
    }
    mesh.faces.push_back({face[0], face[2], face[1]});  // clockwise
  }
}

// The corners of a face pq, rp, qr; three zeros where it has none.
Numbers CornersOf(const FlatMesh& mesh, const std::array<std::int32_t, 3>& face) {
  const auto shared = [&](std::int32_t e, std::int32_t f) -> std::uint32_t {
    const auto n = static_cast<std::int32_t>(mesh.edges.size());
    if (std::min(e, f) < 0 || std::max(e, f) >= n) return 0;
    const auto& g = mesh.edges[static_cast<std::size_t>(e)];
    const auto& h = mesh.edges[static_cast<std::size_t>(f)];
    return static_cast<std::uint32_t>(g[0] == h[0] || g[0] == h[1] ? g[0] : g[1]);
  };
  return {shared(face[0], face[1]), shared(face[0], face[2]), shared(face[1], face[2])};
}

std::vector<Numbers> CornersOf(const FlatMesh& mesh) {
  std::vector<Numbers> triangles;
  for (const auto& face : mesh.faces) triangles.push_back(CornersOf(mesh, face));
  return triangles;
}

// Of a region: its rings, and triangles with their neighbours.
std::string FaultsOfMesh(Contours contours, std::vector<Numbers> triangles,
                         const std::vector<std::array<std::int32_t, 3>>& neighbours,
                         bool delaunay) {
  if (neighbours != Neighbours(triangles)) return "neighbours are wrong";
  if (delaunay) {  // the order of flips.h
    const auto isFirst = [](const Numbers& t) { return t[0] < std::min(t[1], t[2]); };
    if (!std::all_of(triangles.begin(), triangles.end(), isFirst)) return "another first corner";
    if (!std::is_sorted(triangles.begin(), triangles.end())) return "another order";
  }
  const std::vector<std::uint32_t> lowest = contours.Lowest();
  contours.Renumber(lowest);
  std::vector<bool> used(lowest.size());
  for (Numbers& t : triangles) {
    for (std::uint32_t& v : t) used[v] = true, v = lowest[v];
  }
  if (std::find(used.begin(), used.end(), false) != used.end()) return "a vertex is not used";
  std::string wrong = Faults(contours, triangles);
  if (delaunay && wrong.empty()) wrong = FaultsOfDelaunay(contours.points, triangles, neighbours);
  return wrong;
}

std::string FaultsOfMesh(const zelvan::Region& region, bool delaunay) {
  const zelvan::Mesh mesh = zelvan::Triangulate(region, {delaunay});
  const zelvan::Grid grid = region.Grid();
  Contours contours;
  const auto add = [&](const zelvan::Ring& ring) {
    for (const zelvan::Point p : ring) {
      contours.points.push_back({static_cast<std::int32_t>((p.x - grid.Origin().x) / grid.Step()),
                                 static_cast<std::int32_t>((p.y - grid.Origin().y) / grid.Step())});
    }
    contours.Close();
  };
  for (const zelvan::Polygon& polygon : region.Polygons()) {
    add(polygon.outer);
    for (const zelvan::Ring& hole : polygon.holes) add(hole);
  }
  if (mesh.vertices != region.Vertices()) return "the vertices are not the region's";
  const double area = std::ldexp(static_cast<double>(contours.twiceArea), -1) * grid.Step();
  if (region.Area() != area * grid.Step()) return "another area";
  return FaultsOfMesh(contours, mesh.triangles, mesh.neighbours, delaunay);
}

std::string FaultsOfMesh(const FlatRegion& region, bool delaunay) {
  Contours contours;
  std::size_t count = 0;
  for (std::size_t p = 0; p < region.Polygons(); ++p) {
    for (std::uint32_t i = region.polygonOffsets[p]; i < region.polygonOffsets[p + 1]; ++i) {
      for (const GridPoint point : region.Ring(i)) contours.points.push_back(point);
      contours.Close();
    }
    ForEachTouch(region, p, [&](auto points) { count -= 2 * (points.size() - 1); });
  }
  count += static_cast<std::size_t>(contours.wanted);
  std::vector<Numbers> triangles(count);
  std::vector<std::array<std::int32_t, 3>> neighbours(count);
  CutRegion(region, delaunay, triangles[0].data(), neighbours[0].data());
  std::vector<Numbers> alone(count);
  CutRegion(region, delaunay, alone[0].data(), nullptr);
  if (alone != triangles) return "neighbours change the triangles";
  return FaultsOfMesh(contours, triangles, neighbours, delaunay);
}

template <class AnyRegion>
std::string FaultsOfMeshes(const AnyRegion& region) {
  const std::string plain = FaultsOfMesh(region, false);
  return plain.empty() ? FaultsOfMesh(region, true) : "plain: " + plain;
}

// One area while it is cut in several ways: the first success fixes the triangles.
class Piece {
 public:
  explicit Piece(Area& area) : area_(area), contours_(ContoursOf(area, numbers_)) {}

  std::string Judge(bool succeeded) {
    const bool nothing = area_.triangles == nullptr && area_.triangleCount == 0;
    if (!succeeded) return nothing ? "" : "triangles after a failure";
    std::vector<Numbers> set = Sorted(TrianglesOf(area_, numbers_));
    if (expected_.empty()) expected_ = set;
    return set == expected_ ? CheckTriangles(area_) : "other triangles than before";
  }

 private:
  Area& area_;
  std::map<const VertexNode*, std::uint32_t> numbers_;
  Contours contours_;
  std::vector<Numbers> expected_;
};

bool Inserts(Area& area, const VORNEX::InsertionOrder& order) {
  try {
    VORNEX::TRIAGLOBS().Run(&area, order);
    return true;
  } catch (...) {
    ERR::Clear();
    return false;
  }
}

}  // namespace

std::string CheckTriangles(const Area& area) {
  std::map<const VertexNode*, std::uint32_t> numbers;
  const Contours contours = ContoursOf(area, numbers);
  return FaultsOfCount(area.triangleCount, contours) + Faults(contours, TrianglesOf(area, numbers));
}

std::string CheckMesh(const FlatMesh& mesh) {
  Contours contours;
  for (const std::uint32_t size : mesh.contourSizes) {
    const std::size_t before = contours.points.size();
    if (size < 3 || mesh.points.size() - before < size) return "contour sizes are off";
    const auto from = mesh.points.begin() + static_cast<std::ptrdiff_t>(before);
    contours.points.insert(contours.points.end(), from, from + size);
    contours.Close();
  }
  if (contours.points.size() != mesh.points.size()) return "vertices outside the contours";
  contours.Renumber(contours.Lowest());
  const std::vector<Numbers> triangles = CornersOf(mesh);
  std::string wrong = FaultsOfCount(triangles.size(), contours) + Faults(contours, triangles);
  FlatMesh numbered;
  Number(triangles, contours, numbered);
  if (numbered.edges != mesh.edges) wrong += "edges differ from those of plain scans";
  if (numbered.faces != mesh.faces) wrong += "faces differ from those of plain scans";
  return wrong;
}

std::string CheckMesh(const Shape& shape) {
  if (shape.mesh == nullptr) return "no mesh";
  std::string wrong = CheckMesh(Flatten(shape));
  ForEachArea(static_cast<const Area*>(shape.areas),
              [&](const Area* area) { wrong += CheckTriangles(*area); });
  return wrong;
}

std::string CheckMeshes(const zelvan::Region& region) {
  return FaultsOfMeshes(region);
}

std::string CheckMeshes(const FlatRegion& region) {
  return FaultsOfMeshes(region);
}

FlatMesh Flatten(const Shape& shape) {
  FlatMesh flat;
  for (const VertexNode* v : shape.vertexTable) flat.points.push_back(v->grid);
  ForEachContour(static_cast<const Area*>(shape.areas),
                 [&](const Contour* c) { flat.contourSizes.push_back(c->count); });
  for (const VORNEX::MeshEdge& e : shape.mesh->edges()) {
    flat.edges.push_back({e.first, e.second, e.onContour ? 0 : 2});
  }
  for (const VORNEX::MeshFace& f : shape.mesh->faces()) {
    flat.faces.push_back({static_cast<std::int32_t>(f.edge[0]),
                          static_cast<std::int32_t>(f.edge[1]),
                          static_cast<std::int32_t>(f.edge[2])});
  }
  return flat;
}

Cuts CutInAllWays(Area* ring, bool sound, const std::vector<VORNEX::InsertionOrder>& orders) {
  Cuts cuts{true, true, ""};
  ForEachArea(ring, [&](Area* area) {
    Piece piece(*area);
    const auto judge = [&](bool succeeded, bool must, const char* way) {
      const std::string wrong = must && !succeeded ? "gave up" : piece.Judge(succeeded);
      if (!wrong.empty()) cuts.wrong += way + (": " + wrong);
      return succeeded;
    };
    const bool swept = judge(VORNEX::TriangulateBySweep(*area), sound, "sweep");
    cuts.swept = swept && cuts.swept;
    for (const VORNEX::InsertionOrder& order : orders) {
      cuts.inserted = judge(Inserts(*area, order), sound || swept, "insertion") && cuts.inserted;
    }
  });
  return cuts;
}

// In doubles where that decides, else in numbers of any size that is needed: up to 128 bits.
int InCircle(GridPoint a, GridPoint b, GridPoint c, GridPoint d) {
  const GridPoint points[] = {a, b, c, a, b};
  const auto determinant = [&](auto number) {
    using Number = decltype(number);
    Number sum = 0;
    const auto x = [&](int i) { return Number(std::int64_t{points[i].gx} - d.gx); };
    const auto y = [&](int i) { return Number(std::int64_t{points[i].gy} - d.gy); };
    for (int i = 0; i < 3; ++i) {
      sum += (x(i) * x(i) + y(i) * y(i)) * (x(i + 1) * y(i + 2) - x(i + 2) * y(i + 1));
    }
    return sum;
  };
  const double rounded = determinant(0.0);  // off by less than 2^-50 of 2^131
  if (std::fabs(rounded) > 0x1p82) return rounded > 0 ? 1 : -1;
  return determinant(boost::multiprecision::checked_int256_t(0)).sign();
}

}  // namespace zelvan::test
