// What the overlay engine works on: edges between grid points, and the places at which they
// meet.
//
// What holds here:
//  - Coordinates lie in [-2^30, 2^30). An edge runs from its lower end to its upper one, in
//    (x, then y) order: from left to right, or straight up.
//  - Each end of an edge stands in one vertex, and each vertex names up to two edges.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "polygon/grid.h"

namespace zelvan::overlay {

inline constexpr std::uint32_t kNone = UINT32_MAX;

template <class T>
[[nodiscard]] std::size_t BytesOf(const std::vector<T>& v) noexcept {
  return v.capacity() * sizeof(T);
}

/// The winding numbers of a place in both operands, or a difference of two such. Only the drawer
/// of a sweep (sweep.h) knows what they mean and how they add up: in an overlay of layers the first
/// number names a set of layers, or a difference of two sets (layer_sets.h). Where there is no
/// difference, both are 0; the opposite difference is the negative of both.
struct Windings {
  std::int32_t first = 0;
  std::int32_t second = 0;

  Windings& operator+=(Windings other) noexcept {
    first += other.first;
    second += other.second;
    return *this;
  }
  friend Windings operator+(Windings a, Windings b) noexcept { return a += b; }
  friend Windings operator-(Windings a) noexcept { return {-a.first, -a.second}; }
  friend bool operator==(const Windings&, const Windings&) noexcept = default;
};

struct Edge {
  GridPoint low;
  GridPoint high;
  Windings step;  ///< what crossing the edge upward (a vertical one to the left) adds
};

/// A place with up to two edges that start or end there.
struct Vertex {
  GridPoint at;
  GridPoint far[2];       ///< the other end of each edge; `at` where there is no edge
  std::uint32_t edge[2];  ///< the number of each edge, or kNone
};

class EdgeSet {
 public:
  std::vector<Edge> edges;
  std::vector<Vertex> vertices;

  void Clear() noexcept {
    edges.clear();
    vertices.clear();
  }

  /// Makes room for the rings that will be added. Throws std::bad_alloc, as all do.
  void Reserve(std::size_t points);

  /// Adds a closed ring, which counts as `step` where it runs from left to right. Points that
  /// equal the one before them are passed over.
  void AddRing(std::span<const GridPoint> ring, Windings step);

  /// Brings the vertices into (x, then y) order.
  void SortVertices();

  /// Memory that is kept for the next rings.
  [[nodiscard]] std::size_t Bytes() const noexcept {
    return BytesOf(edges) + BytesOf(vertices) + BytesOf(sorted_) + 2 * BytesOf(words_);
  }

 private:
  std::vector<Vertex> sorted_;
  std::vector<std::uint64_t> words_;
  std::vector<std::uint64_t> scratch_;
};

}  // namespace zelvan::overlay
