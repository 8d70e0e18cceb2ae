// EdgeIndex: the edges of a region in square buckets, for two questions: does any
// come near a box, and in which face does a place lie that none comes near?
//
// The grid is cut into at most as many buckets as edges are expected; an edge
// stands in each bucket that it passes. Where long edges would fill the buckets, they
// are made larger, so that making the index takes time and room in proportion to the
// edges expected.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "polygon/records.h"

namespace zelvan {

/// Does the straight edge from a to b have a point in the closed box?
[[nodiscard]] bool EdgeMeetsBox(GridPoint a, GridPoint b, const GridBox& box) noexcept;

class EdgeIndex {
 public:
  /// FaceAt's answer outside the region.
  static constexpr std::uint32_t kNoArea = 0xFFFFFFFF;

  /// Indexes a ring in grid form, its areas numbered from 0 in ring order; `more` is the
  /// number of edges to come. Throws std::bad_alloc.
  EdgeIndex(const Area* ring, std::size_t more);

  /// Adds the edges of one more contour of area `area`. Throws std::bad_alloc; the
  /// index is of no use then.
  void Add(const Contour* contour, std::uint32_t area);

  /// Does any edge have a point in the closed box?
  [[nodiscard]] bool Meets(const GridBox& box) const noexcept;

  /// The area of the region in which the point half a step above `p` lies, or kNoArea.
  /// The indexed contours must bound a region, and no edge may come within a step of p.
  [[nodiscard]] std::uint32_t FaceAt(GridPoint p) const noexcept;

 private:
  static constexpr std::uint32_t kNone = 0xFFFFFFFF;

  struct Entry {
    GridPoint from;
    GridPoint to;
    std::uint32_t area;
    std::uint32_t next;  // in the same bucket
  };

  [[nodiscard]] std::int32_t BucketOf(std::int64_t coordinate) const noexcept;
  [[nodiscard]] std::size_t At(std::int32_t column, std::int32_t row) const noexcept;
  void AddEdge(GridPoint from, GridPoint to, std::uint32_t area);
  void Put(std::int32_t column, std::int32_t row, const Entry& entry);

  std::int32_t shift_ = 20;  // log2 of a bucket's side
  std::int32_t side_ = 1;    // buckets along an axis
  std::vector<std::uint32_t> first_;
  std::vector<Entry> entries_;
};

}  // namespace zelvan
