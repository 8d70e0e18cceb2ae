#include "pieces.h"

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <utility>

namespace tool {
namespace {

using Edge = std::pair<int, int>;

class Splitter {
 public:
  explicit Splitter(const Mesh& mesh)
      : mesh_(mesh), used_(mesh.triangles.size(), false), next_(mesh.vertices.size(), -1) {
    MergeEqualVertices();
    for (std::size_t t = 0; t < corners_.size(); ++t) {
      const auto& [a, b, c] = corners_[t];
      owner_[{a, b}] = owner_[{b, c}] = owner_[{c, a}] = t;
    }
  }

  std::vector<Ring> Split() {
    std::vector<Ring> pieces;
    for (std::size_t seed = 0; seed < corners_.size(); ++seed) {
      if (!used_[seed]) pieces.push_back(Grow(seed));
    }
    return pieces;
  }

 private:
  // Where contours touch, one place has several vertices; a piece may pass it once.
  void MergeEqualVertices() {
    std::map<std::pair<double, double>, int> first;
    std::vector<int> merged;
    for (const Point& p : mesh_.vertices) {
      merged.push_back(
          first.try_emplace({p.x, p.y}, static_cast<int>(merged.size())).first->second);
    }
    const auto at = [&](int v) { return merged[static_cast<std::size_t>(v)]; };
    for (const auto& [a, b, c] : mesh_.triangles) corners_.push_back({at(a), at(b), at(c)});
  }

  int& Next(int vertex) { return next_[static_cast<std::size_t>(vertex)]; }

  // The free triangle behind an edge of the piece, if its far corner is new.
  std::optional<std::size_t> Behind(const Edge& edge, int& corner) {
    const auto found = owner_.find({edge.second, edge.first});
    if (found == owner_.end() || used_[found->second]) return std::nullopt;
    for (const int v : corners_[found->second]) {
      if (v != edge.first && v != edge.second) corner = v;
    }
    if (Next(corner) != -1) return std::nullopt;
    return found->second;
  }

  Ring Grow(std::size_t seed) {
    const auto [a, b, c] = corners_[seed];
    used_[seed] = true;
    Next(a) = b, Next(b) = c, Next(c) = a;
    std::vector<Edge> open{{a, b}, {b, c}, {c, a}};
    for (std::size_t i = 0; i < open.size(); ++i) {
      const Edge edge = open[i];
      int corner = -1;
      const auto triangle = Behind(edge, corner);
      if (!triangle) continue;
      used_[*triangle] = true;
      Next(edge.first) = corner;
      Next(corner) = edge.second;
      open.insert(open.end(), {{edge.first, corner}, {corner, edge.second}});
    }
    return TakeRing(a);
  }

  // Walks the contour and forgets it.
  Ring TakeRing(int start) {
    Ring ring;
    for (int v = start; Next(v) != -1;) {
      ring.push_back(mesh_.vertices[static_cast<std::size_t>(v)]);
      v = std::exchange(Next(v), -1);
    }
    return ring;
  }

  const Mesh& mesh_;
  std::vector<std::array<int, 3>> corners_;
  std::map<Edge, std::size_t> owner_;  // of each directed edge, counter-clockwise
  std::vector<bool> used_;
  std::vector<int> next_;  // along the contour of the piece that grows, else -1
};

}  // namespace

std::vector<Ring> SplitIntoPieces(const Mesh& mesh) {
  return Splitter(mesh).Split();
}

}  // namespace tool
