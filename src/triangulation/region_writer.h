// Where the triangles of a region's sweep go: into plain arrays of numbers.
//
// What holds here: an edge is named by its number, the edge of the contour from vertex v on by
// v, diagonals by what AddDiagonal gives. Side 3 t + k of triangle t goes from its corner k to
// the next one; of the two triangles that name a diagonal, the second finds the side of the
// first, and both sides learn of each other.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "triangulation/sweep_records.h"

namespace VORNEX {

class RegionWriter {
 public:
  /// Starts a polygon. Throws std::bad_alloc.
  /// @param first     the number of the polygon's first vertex, which the sweep calls 0
  /// @param corners   receives three numbers a triangle
  /// @param twins     receives the sides across, three a triangle; null if nobody asks for them
  void Begin(std::uint32_t first, std::uint32_t vertices, std::uint32_t wanted,
             std::uint32_t* corners, std::uint32_t* twins) {
    first_ = first;
    vertices_ = vertices;
    wanted_ = wanted;
    corners_ = corners;
    twins_ = twins;
    count_ = 0;
    sides_.clear();
    // Of the edges of all triangles each contour edge counts once, each diagonal twice.
    if (twins != nullptr) sides_.reserve((3 * std::size_t{wanted} - vertices) / 2);
  }

  /// A new diagonal by its name. Throws std::bad_alloc.
  [[nodiscard]] std::uint32_t AddDiagonal() {
    if (twins_ == nullptr) return vertices_;
    sides_.push_back(kNone);
    return static_cast<std::uint32_t>(vertices_ + sides_.size() - 1);
  }

  /// Adds a triangle by its corners, counter-clockwise, and its edges, the first one
  /// between the first two corners. @return false when there were enough
  [[nodiscard]] bool Add(const Corner& p, const Corner& q, const Corner& r,
                         const std::array<std::uint32_t, 3>& edges) noexcept {
    if (count_ == wanted_) return false;
    const std::uint32_t side = 3 * count_++;
    corners_[side] = first_ + p.vertex;
    corners_[side + 1] = first_ + q.vertex;
    corners_[side + 2] = first_ + r.vertex;
    if (twins_ != nullptr) {
      for (std::uint32_t k = 0; k < 3; ++k) Link(side + k, edges[k]);
    }
    return true;
  }

  [[nodiscard]] bool IsComplete() const noexcept { return count_ == wanted_; }

 private:
  void Link(std::uint32_t side, std::uint32_t edge) noexcept {
    twins_[side] = kNone;
    if (edge < vertices_) return;
    std::uint32_t& other = sides_[edge - vertices_];
    if (other != kNone) {
      twins_[side] = other;
      twins_[other] = side;
    }
    other = side;
  }

  std::uint32_t first_ = 0;
  std::uint32_t vertices_ = 0;
  std::uint32_t wanted_ = 0;
  std::uint32_t* corners_ = nullptr;
  std::uint32_t* twins_ = nullptr;
  std::uint32_t count_ = 0;
  std::vector<std::uint32_t> sides_;  // of each diagonal the one that was added first
};

}  // namespace VORNEX
