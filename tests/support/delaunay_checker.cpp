// An independent judge of Delaunay triangulations (delaunay_checker.h).
#include "support/delaunay_checker.h"

#include <zelvan/error.h>

#include <algorithm>
#include <array>
#include <map>
#include <vector>

#include "polygon/area.h"
#include "support/mesh_checker.h"
#include "support/polygon_families.h"
#include "triangulation/area_sweep.h"
#include "triangulation/flat_triangles.h"

namespace zelvan::test {

namespace {

using VORNEX::FlatTriangles;

// Numbers of 128 bits as digits to the base 2^16, the lowest first, the highest with the sign.
using Digits = std::array<std::int64_t, 8>;

Digits Carried(Digits digits) {
  for (std::size_t i = 0; i < 7; ++i) {
    digits[i + 1] += digits[i] >> 16;
    digits[i] &= 0xFFFF;
  }
  digits[7] = static_cast<std::int16_t>(digits[7]);
  return digits;
}

Digits Product(const Digits& a, const Digits& b) {
  Digits product{};
  for (std::size_t i = 0; i < 8; ++i) {
    for (std::size_t j = 0; i + j < 8; ++j) product[i + j] += a[i] * b[j];
  }
  return Carried(product);
}

Digits Sum(Digits a, const Digits& b) {
  for (std::size_t i = 0; i < 8; ++i) a[i] += b[i];
  return Carried(a);
}

using Edges = std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint32_t>;

// The triangle of each directed edge.
Edges EdgesOf(const FlatTriangles& flat) {
  Edges edges;
  for (std::uint32_t t = 0; t < flat.corners.size(); ++t) {
    const auto& [a, b, c] = flat.corners[t];
    edges[{a, b}] = edges[{b, c}] = edges[{c, a}] = t;
  }
  return edges;
}

void Join(FlatTriangles& flat) {
  const Edges edges = EdgesOf(flat);
  for (std::size_t t = 0; t < flat.corners.size(); ++t) {
    for (std::size_t k = 0; k < 3; ++k) {
      const auto twin = edges.find({flat.corners[t][(k + 1) % 3], flat.corners[t][k]});
      flat.neighbours[t][k] = twin == edges.end() ? -1 : static_cast<std::int32_t>(twin->second);
    }
  }
}

class Judge {
 public:
  explicit Judge(Area& area) : area_(area) {
    for (const Contour* c = area.contours; c != nullptr; c = c->next) {
      ForEachVertex(c, [&](VertexNode* v) {
        nodes_.push_back(v);
        places_.push_back(v->grid);
      });
    }
  }

  FlatTriangles MadeDelaunay(FlatTriangles flat) {
    Look(flat);
    if (!wrong_.empty()) return flat;
    VORNEX::MakeDelaunay(places_, flat);
    Look(flat);
    return flat;
  }

  void Require(bool holds, const char* what) {
    if (!holds && wrong_.empty()) wrong_ = what;
  }

  // Random flips; the neighbours follow at the end.
  FlatTriangles Shaken(FlatTriangles flat) const {
    Random random(1 + places_.size());
    Edges edges = EdgesOf(flat);
    for (std::size_t round = 2 * flat.corners.size(); round > 0; --round) {
      const auto t = static_cast<std::uint32_t>(random.Bits() % flat.corners.size());
      const auto [a, b, c] = flat.corners[t];
      const auto twin = edges.find({b, a});
      if (twin == edges.end()) continue;
      const std::uint32_t u = twin->second;
      const auto& [p, q, r] = flat.corners[u];
      const std::uint32_t d = p != a && p != b ? p : q != a && q != b ? q : r;
      if (Cross(places_[c], places_[a], places_[d]) <= 0 ||
          Cross(places_[d], places_[b], places_[c]) <= 0)
        continue;
      edges.erase({a, b});
      edges.erase({b, a});
      flat.corners[t] = {c, a, d};
      flat.corners[u] = {b, c, d};
      edges[{c, a}] = edges[{a, d}] = edges[{d, c}] = t;
      edges[{b, c}] = edges[{c, d}] = edges[{d, b}] = u;
    }
    Join(flat);
    return flat;
  }

  void LookAtEdges(const FlatTriangles& flat) {
    Require(std::is_sorted(flat.corners.begin(), flat.corners.end()), "out of order");
    const auto isLower = [](GridPoint p, GridPoint q) {
      return std::pair(p.gy, p.gx) < std::pair(q.gy, q.gx);
    };
    for (std::size_t t = 0; t < flat.corners.size(); ++t) {
      const auto& corners = flat.corners[t];
      Require(corners[0] < corners[1] && corners[0] < corners[2], "another corner is first");
      for (std::size_t k = 0; k < 3; ++k) {
        if (flat.neighbours[t][k] < static_cast<std::int32_t>(t)) continue;  // contour, or seen
        const GridPoint a = places_[corners[k]];
        const GridPoint b = places_[corners[(k + 1) % 3]];
        const GridPoint c = places_[corners[(k + 2) % 3]];
        for (const std::uint32_t v :
             flat.corners[static_cast<std::size_t>(flat.neighbours[t][k])]) {
          const GridPoint d = places_[v];
          if (d == a || d == b) continue;
          const int side = InCircle(a, b, c, d);
          Require(side <= 0, "an edge is not Delaunay");
          Require(side < 0 || std::min(a, b, isLower) == std::min({a, b, c, d}, isLower),
                  "corners on a circle are cut in another way");
        }
      }
    }
  }

  [[nodiscard]] const std::string& wrong() const { return wrong_; }

 private:
  void Look(const FlatTriangles& flat) {
    FlatTriangles joined = flat;
    Join(joined);
    Require(flat.neighbours == joined.neighbours, "neighbours are wrong");
    area_.triangleCount = static_cast<std::uint32_t>(flat.corners.size());
    area_.triangles = std::make_unique<Triangle[]>(area_.triangleCount);
    for (std::size_t t = 0; t < flat.corners.size(); ++t) {
      const auto& [a, b, c] = flat.corners[t];
      area_.triangles[t] = {nodes_[a], nodes_[b], nodes_[c]};
    }
    if (wrong_.empty()) wrong_ = CheckTriangles(area_);
  }

  Area& area_;
  std::vector<VertexNode*> nodes_;
  std::vector<GridPoint> places_;
  std::string wrong_;
};

}  // namespace

int InCircle(GridPoint a, GridPoint b, GridPoint c, GridPoint d) {
  const auto difference = [](std::int32_t p, std::int32_t q) { return Carried({p - q}); };
  Digits determinant{0};
  const GridPoint points[] = {a, b, c, a, b};
  for (int i = 0; i < 3; ++i) {
    const Digits x = difference(points[i].gx, d.gx);
    const Digits y = difference(points[i].gy, d.gy);
    const Digits x1 = difference(points[i + 1].gx, d.gx);
    const Digits y1 = difference(points[i + 1].gy, d.gy);
    const Digits x2 = difference(points[i + 2].gx, d.gx);
    const Digits y2 = difference(points[i + 2].gy, d.gy);
    const Digits minor = Sum(Product(x1, y2), Product({-1}, Product(x2, y1)));
    determinant = Sum(determinant, Product(Sum(Product(x, x), Product(y, y)), minor));
  }
  if (determinant.back() < 0) return -1;
  return std::any_of(determinant.begin(), determinant.end(), [](auto digit) { return digit != 0; });
}

std::string CheckDelaunay(Area& area) try {
  Judge judge(area);
  const FlatTriangles cut = VORNEX::CutArea(area);
  const FlatTriangles made = judge.MadeDelaunay(cut);
  for (const FlatTriangles& start :
       {VORNEX::CutArea(area, VORNEX::Cutting::kNearby), judge.Shaken(cut), judge.Shaken(made)}) {
    const FlatTriangles again = judge.MadeDelaunay(start);
    judge.Require(again.corners == made.corners, "the start changes the result");
  }
  judge.LookAtEdges(made);
  FlatTriangles swept[2];
  judge.Require(VORNEX::CutBySweep(area, VORNEX::Cutting::kTrapezoids, swept[0]) ==
                    VORNEX::CutBySweep(area, VORNEX::Cutting::kNearby, swept[1]),
                "the sweep gives up with one cutter alone");
  return judge.wrong();
} catch (CException* problem) {
  ERR::Delete(problem);
  return "the area cannot be cut";
}

}  // namespace zelvan::test
