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
  /// Indexes a ring in grid form; `more` is the number of edges to come. Throws
  /// std::bad_alloc.
  EdgeIndex(const Area* ring, std::size_t more);

  /// Adds the edges of one more contour. Throws std::bad_alloc; the index is of no use then.
  void Add(const Contour* contour);

  /// Takes out the edges of a contour.
  void Remove(const Contour* contour) noexcept;

  /// The contour has its own ring now, for that of `old` before.
  void Exchange(const Contour* contour, const Contour* old);

  /// Calls visit(contour) for each edge of a contour that has a point in the closed box,
  /// once or more often.
  template <class Visit>
  void ForEachNear(const GridBox& box, Visit visit) const;

  /// Does any edge have a point in the closed box?
  [[nodiscard]] bool Meets(const GridBox& box) const noexcept;

  /// A contour of the area in which the point half a step above `p` lies, null outside.
  /// The indexed contours must bound a region, and no edge may come within a step of p.
  [[nodiscard]] const Contour* FaceAt(GridPoint p) const noexcept;

 private:
  static constexpr std::uint32_t kNone = 0xFFFFFFFF;

  struct Entry {
    GridPoint from;
    GridPoint to;
    const Contour* contour;
    std::uint32_t next;  // in the same bucket, or of the free ones
  };

  [[nodiscard]] std::int32_t BucketOf(std::int64_t coordinate) const noexcept;
  [[nodiscard]] std::size_t At(std::int32_t column, std::int32_t row) const noexcept;
  template <class Visit>
  void ForEachBucket(GridPoint a, GridPoint b, Visit visit);
  void AddEdge(GridPoint from, GridPoint to, const Contour* contour);
  void Put(std::uint32_t& bucket, const Entry& entry);
  void TakeOut(GridPoint from, GridPoint to, const Contour* contour) noexcept;

  std::int32_t shift_ = 20;  // log2 of a bucket's side
  std::int32_t side_ = 1;    // buckets along an axis
  std::vector<std::uint32_t> first_;
  std::vector<Entry> entries_;
  std::uint32_t free_ = kNone;
};

template <class Visit>
void EdgeIndex::ForEachNear(const GridBox& box, Visit visit) const {
  const std::int32_t right = BucketOf(box.max.gx);
  const std::int32_t top = BucketOf(box.max.gy);
  for (std::int32_t row = BucketOf(box.min.gy); row <= top; ++row) {
    for (std::int32_t column = BucketOf(box.min.gx); column <= right; ++column) {
      for (std::uint32_t i = first_[At(column, row)]; i != kNone; i = entries_[i].next) {
        const Entry& entry = entries_[i];
        if (EdgeMeetsBox(entry.from, entry.to, box)) visit(entry.contour);
      }
    }
  }
}

}  // namespace zelvan
