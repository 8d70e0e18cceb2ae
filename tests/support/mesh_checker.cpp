// An independent judge of triangulations (mesh_checker.h).
#include "support/mesh_checker.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>
#include <utility>

#include "polygon/area.h"
#include "triangulation/mesh.h"

namespace zelvan::test {

namespace {

// Collects complaints: the text of the first one is the answer.
class Complaint {
 public:
  template <class... Parts>
  bool Require(bool holds, const Parts&... parts) {
    if (holds || !text_.empty()) return holds;
    std::ostringstream out;
    (out << ... << parts);
    text_ = out.str();
    return false;
  }
  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  std::string text_;
};

std::int64_t TwiceSigned(GridPoint a, GridPoint b, GridPoint c) {
  return zelvan::test::TwiceSigned(Ring{a, b, c});
}

using Node = const VertexNode*;

// Directed uses of the contour edges and of everything else.
class EdgeUses {
 public:
  explicit EdgeUses(const Area& area) {
    for (const Contour* c = area.contours; c != nullptr; c = c->next) {
      ForEachVertex(c, [&](Node v) { contour_[{v, v->next}] = 0; });
    }
  }

  void Add(Node a, Node b) {
    const auto found = contour_.find({a, b});
    if (found != contour_.end()) {
      ++found->second;
    } else {
      ++diagonals_[{a, b}];
    }
  }

  void Check(Complaint& complaint) const {
    for (const auto& [edge, uses] : contour_) {
      complaint.Require(uses == 1, "a contour edge is used ", uses, " times");
    }
    for (const auto& [edge, uses] : diagonals_) {
      const auto back = diagonals_.find({edge.second, edge.first});
      complaint.Require(uses == 1 && back != diagonals_.end(),
                        "a diagonal is not used once each way");
    }
  }

 private:
  std::map<std::pair<Node, Node>, int> contour_;
  std::map<std::pair<Node, Node>, int> diagonals_;
};

Region RegionOf(const Area& area) {
  Region region;
  for (const Contour* c = area.contours; c != nullptr; c = c->next) {
    Ring& ring = region.emplace_back();
    ForEachVertex(c, [&](Node v) { ring.push_back(v->grid); });
  }
  return region;
}

struct Corners {
  std::int32_t v[3];  // in the order of the face's edges: edge i joins v[i] and v[i + 1]
};

std::int32_t Shared(const std::array<std::int32_t, 3>& e, const std::array<std::int32_t, 3>& f) {
  const bool first = e[0] == f[0] || e[0] == f[1];
  const bool second = e[1] == f[0] || e[1] == f[1];
  return first == second ? -1 : first ? e[0] : e[1];
}

class MeshJudge {
 public:
  explicit MeshJudge(const FlatMesh& mesh) : mesh_(mesh) {}

  std::string Judge() {
    if (ReadContours() && CheckEdges() && CheckFaces()) CheckWhole();
    return complaint_.text();
  }

 private:
  // Vertices on one point go by the lowest number.
  bool ReadContours() {
    const auto less = [](GridPoint a, GridPoint b) {
      return std::pair(a.gx, a.gy) < std::pair(b.gx, b.gy);
    };
    std::map<GridPoint, std::int32_t, decltype(less)> lowest(less);
    std::vector<std::int32_t> number;
    for (std::size_t i = 0; i < mesh_.points.size(); ++i) {
      number.push_back(lowest.emplace(mesh_.points[i], static_cast<std::int32_t>(i)).first->second);
    }
    std::size_t start = 0;
    for (const std::uint32_t size : mesh_.contourSizes) {
      if (!complaint_.Require(size >= 3 && start + size <= number.size(),
                              "contour sizes are off")) {
        return false;
      }
      Ring ring;
      for (std::size_t i = 0; i < size; ++i) {
        ring.push_back(mesh_.points[start + i]);
        ++contourEdges_[std::minmax({number[start + i], number[start + (i + 1) % size]})].times;
      }
      const std::int64_t twice = test::TwiceSigned(ring);
      twiceArea_ += twice;
      (twice > 0 ? outers_ : holes_) += 1;
      start += size;
    }
    return complaint_.Require(start == number.size(), "vertices outside the contours");
  }

  bool CheckEdges() {
    std::map<std::pair<std::int32_t, std::int32_t>, int> seen;
    const auto n = static_cast<std::int32_t>(mesh_.points.size());
    for (const auto& [first, second, kind] : mesh_.edges) {
      const bool inRange = first >= 0 && second >= 0 && first < n && second < n && first != second;
      if (!complaint_.Require(inRange, "an edge names no two vertices")) return false;
      const std::pair<std::int32_t, std::int32_t> ends = std::minmax({first, second});
      complaint_.Require(++seen[ends] == 1, "an edge is there twice");
      const auto onContour = contourEdges_.find(ends);
      const bool isContour = onContour != contourEdges_.end();
      complaint_.Require(kind == (isContour ? 0 : 2), "an edge is of the wrong kind");
      uses_.push_back(isContour ? onContour->second.times : 2);
      if (isContour) onContour->second.found = true;
    }
    for (const auto& [ends, edge] : contourEdges_) {
      complaint_.Require(edge.found, "a contour edge is missing");
      coincidences_ += edge.times - 1;
    }
    return complaint_.text().empty();
  }

  bool CheckFaces() {
    forward_.assign(mesh_.edges.size(), 0);
    backward_.assign(mesh_.edges.size(), 0);
    for (const auto& face : mesh_.faces) {
      for (const std::int32_t e : face) {
        const bool inRange = e >= 0 && static_cast<std::size_t>(e) < mesh_.edges.size();
        if (!complaint_.Require(inRange, "a face names no edge")) return false;
      }
      const std::int32_t corner[3] = {Shared(Edge(face[2]), Edge(face[0])),
                                      Shared(Edge(face[0]), Edge(face[1])),
                                      Shared(Edge(face[1]), Edge(face[2]))};
      const bool closed = std::min({corner[0], corner[1], corner[2]}) >= 0 &&
                          corner[0] != corner[1] && corner[1] != corner[2] &&
                          corner[2] != corner[0];
      if (!complaint_.Require(closed, "a face is no triangle")) return false;
      const std::int64_t twice = TwiceSigned(Point(corner[0]), Point(corner[1]), Point(corner[2]));
      complaint_.Require(twice < 0, "a face is not strictly clockwise");
      faceArea_ -= twice;
      for (int i = 0; i < 3; ++i) {
        const auto e = static_cast<std::size_t>(face[static_cast<std::size_t>(i)]);
        ++(mesh_.edges[e][0] == corner[i] ? forward_ : backward_)[e];
      }
      // The corners p, q, r were met as pq, qr, rp; the face lists pq, rp, qr.
      for (const std::int32_t e : {face[0], face[2], face[1]}) {
        complaint_.Require(e <= next_, "edges are not numbered in order of appearance");
        if (e == next_) ++next_;
      }
    }
    return complaint_.text().empty();
  }

  void CheckWhole() {
    const auto vertices = static_cast<std::int64_t>(mesh_.points.size());
    const auto edges = static_cast<std::int64_t>(mesh_.edges.size());
    const auto faces = static_cast<std::int64_t>(mesh_.faces.size());
    complaint_.Require(faces == vertices + 2 * holes_ - 2 * outers_, faces, " faces for ", vertices,
                       " vertices, ", outers_, " areas, ", holes_, " holes");
    complaint_.Require(vertices - (edges + coincidences_) + faces == outers_ - holes_,
                       "Euler's formula fails");
    complaint_.Require(faceArea_ == twiceArea_, "twice the area is ", faceArea_, ", not ",
                       twiceArea_);
    for (std::size_t e = 0; e < mesh_.edges.size(); ++e) {
      const int uses = forward_[e] + backward_[e];
      complaint_.Require(uses == uses_[e], "edge ", e, " is used ", uses, " times");
      complaint_.Require(forward_[e] <= 1 && backward_[e] <= 1,
                         "two faces lie on one side of edge ", e);
    }
  }

  [[nodiscard]] const std::array<std::int32_t, 3>& Edge(std::int32_t e) const {
    return mesh_.edges[static_cast<std::size_t>(e)];
  }
  [[nodiscard]] GridPoint Point(std::int32_t v) const {
    return mesh_.points[static_cast<std::size_t>(v)];
  }

  const FlatMesh& mesh_;
  Complaint complaint_;
  // A contour that runs along one line there and back has edges that coincide: they
  // have one number in the mesh, and a face for each.
  struct ContourEdge {
    int times = 0;
    bool found = false;
  };
  std::map<std::pair<std::int32_t, std::int32_t>, ContourEdge> contourEdges_;
  std::vector<int> uses_;  // how many faces each edge of the mesh must have
  std::int64_t coincidences_ = 0;
  std::vector<int> forward_;
  std::vector<int> backward_;
  std::int64_t twiceArea_ = 0;
  std::int64_t faceArea_ = 0;
  std::int64_t outers_ = 0;
  std::int64_t holes_ = 0;
  std::int32_t next_ = 0;
};

// The numbering by plain scans.
struct ScannedMesh {
  std::vector<std::array<std::int32_t, 3>> edges;
  std::vector<std::array<std::int32_t, 3>> faces;

  std::int32_t EdgeNumber(std::int32_t i, std::int32_t j, bool onContour) {
    for (std::size_t k = 0; k < edges.size(); ++k) {
      const auto& e = edges[k];
      if ((e[0] == i && e[1] == j) || (e[0] == j && e[1] == i)) return static_cast<std::int32_t>(k);
    }
    edges.push_back({i, j, onContour ? 0 : 2});
    return static_cast<std::int32_t>(edges.size() - 1);
  }

  void Add(const std::vector<Node>& table, const Triangle& t) {
    const Node corner[3] = {t.a, t.b, t.c};
    std::int32_t edge[3];
    std::int32_t number[3];
    for (int i = 0; i < 3; ++i) {
      const auto at = std::find_if(table.begin(), table.end(),
                                   [&](Node v) { return v->grid == corner[i]->grid; });
      number[i] = static_cast<std::int32_t>(at - table.begin());
    }
    for (int i = 0; i < 3; ++i) {
      const int j = (i + 1) % 3;
      const bool onContour = corner[i]->next == corner[j] || corner[j]->next == corner[i];
      edge[i] = EdgeNumber(number[i], number[j], onContour);
    }
    const bool ccw = TwiceSigned(t.a->grid, t.b->grid, t.c->grid) > 0;
    faces.push_back({edge[0], edge[ccw ? 2 : 1], edge[ccw ? 1 : 2]});
  }
};

}  // namespace

std::string CheckTriangles(const Area& area) {
  Complaint complaint;
  const Region region = RegionOf(area);
  std::size_t expected = 2 * (region.size() - 1) - 2;
  for (const Ring& ring : region) expected += ring.size();
  complaint.Require(area.triangleCount == expected, area.triangleCount, " triangles, not ",
                    expected);
  if (!complaint.Require(area.triangles != nullptr, "no triangles")) return complaint.text();
  EdgeUses uses(area);
  std::int64_t sum = 0;
  for (std::uint32_t i = 0; i < area.triangleCount; ++i) {
    const Triangle& t = area.triangles[i];
    const std::int64_t twice = TwiceSigned(t.a->grid, t.b->grid, t.c->grid);
    complaint.Require(twice > 0, "triangle ", i, " is not strictly counter-clockwise");
    sum += twice;
    uses.Add(t.a, t.b);
    uses.Add(t.b, t.c);
    uses.Add(t.c, t.a);
  }
  complaint.Require(sum == test::TwiceSigned(region), "the areas sum to ", sum);
  uses.Check(complaint);
  return complaint.text();
}

std::string CheckMesh(const FlatMesh& mesh) {
  return MeshJudge(mesh).Judge();
}

std::string CheckMesh(const Shape& shape) {
  if (shape.mesh == nullptr) return "no mesh";
  const FlatMesh mesh = Flatten(shape);
  std::vector<Node> table(shape.vertexTable.begin(), shape.vertexTable.end());
  ScannedMesh scanned;
  std::string wrong;
  ForEachArea(static_cast<const Area*>(shape.areas), [&](const Area* area) {
    if (wrong.empty()) wrong = CheckTriangles(*area);
    for (std::uint32_t i = 0; i < area->triangleCount; ++i) scanned.Add(table, area->triangles[i]);
  });
  if (!wrong.empty()) return wrong;
  if (scanned.edges != mesh.edges) return "edges differ from those of plain scans";
  if (scanned.faces != mesh.faces) return "faces differ from those of plain scans";
  return CheckMesh(mesh);
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

FlatMesh FromReadOut(const std::vector<double>& xyz, const std::vector<std::uint32_t>& contourSizes,
                     const std::vector<std::int32_t>& edges, const std::vector<std::int32_t>& faces,
                     WorldPoint boxMin, WorldPoint boxMax) {
  FlatMesh flat;
  flat.contourSizes = contourSizes;
  const auto toGrid = [](double v, double low, double high) {
    return static_cast<std::int32_t>(std::lround((v - low) / (high - low) * GRID_MAX)) -
           GRID_OFFSET;
  };
  for (std::size_t i = 0; i + 2 < xyz.size(); i += 3) {
    flat.points.push_back(
        {toGrid(xyz[i], boxMin.x, boxMax.x), toGrid(xyz[i + 1], boxMin.y, boxMax.y)});
  }
  for (std::size_t i = 0; i + 2 < edges.size(); i += 3) {
    flat.edges.push_back({edges[i], edges[i + 1], edges[i + 2]});
  }
  for (std::size_t i = 0; i + 2 < faces.size(); i += 3) {
    flat.faces.push_back({faces[i], faces[i + 1], faces[i + 2]});
  }
  return flat;
}

FlatMesh FromReadOut(const std::vector<double>& xyz, const std::vector<std::uint32_t>& contourSizes,
                     const std::vector<std::int32_t>& edges,
                     const std::vector<std::int32_t>& faces) {
  WorldPoint low{xyz.at(0), xyz.at(1)};
  WorldPoint high = low;
  for (std::size_t i = 0; i + 2 < xyz.size(); i += 3) {
    low = {std::min(low.x, xyz[i]), std::min(low.y, xyz[i + 1])};
    high = {std::max(high.x, xyz[i]), std::max(high.y, xyz[i + 1])};
  }
  return FromReadOut(xyz, contourSizes, edges, faces, low, high);
}

std::vector<std::array<std::uint32_t, 3>> TriangleSet(const Shape& shape) {
  std::map<Node, std::uint32_t> number;
  for (const VertexNode* v : shape.vertexTable) {
    number.emplace(v, static_cast<std::uint32_t>(number.size()));
  }
  std::vector<std::array<std::uint32_t, 3>> set;
  ForEachArea(static_cast<const Area*>(shape.areas), [&](const Area* area) {
    for (std::uint32_t i = 0; i < area->triangleCount; ++i) {
      const Triangle& t = area->triangles[i];
      auto& corners = set.emplace_back(
          std::array<std::uint32_t, 3>{number.at(t.a), number.at(t.b), number.at(t.c)});
      std::sort(corners.begin(), corners.end());
    }
  });
  std::sort(set.begin(), set.end());
  return set;
}

}  // namespace zelvan::test
