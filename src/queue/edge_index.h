// EdgeIndex: the edges of a region in square buckets, for two questions: which come
// near a box, and in which face does a place lie that no edge comes near?
//
// The grid is cut into at most as many buckets as edges are expected; an edge stands in
// each bucket that it passes. If long edges would fill the buckets, these are made
// larger, so that making the index takes time and room in proportion to the edges expected.
#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <span>
#include <vector>

#include "polygon/grid_predicates.h"
#include "polygon/records.h"

namespace zelvan {

struct ListedContour;
using ContourList = std::list<ListedContour>;

class EdgeIndex {
 public:
  /// The index names contours by their places in the lists of the region.
  using Owner = ContourList::iterator;

  /// Indexes contours in grid form; `more` is the number of edges to come. Throws
  /// std::bad_alloc.
  EdgeIndex(std::span<const Owner> contours, std::size_t more);

  /// Adds the edges of a ring. Throws std::bad_alloc; the index is of no use then.
  void Add(Owner owner, const Contour& ring);

  /// Takes out the edges of a ring.
  void Remove(Owner owner, const Contour& ring) noexcept;

  /// Takes out the edges of `old` and adds those of `ring`. Throws as Add.
  void Exchange(Owner owner, const Contour& old, const Contour& ring);

  /// Calls visit(owner) for each edge that has a point in the closed box, once or more often.
  template <class Visit>
  void ForEachNear(const GridBox& box, Visit visit) const;

  /// A contour of the area in which the point half a step above `p` lies, null outside.
  /// The indexed contours must bound a region, and no edge may come within a step of p.
  [[nodiscard]] const Owner* FaceAt(GridPoint p) const noexcept;

 private:
  static constexpr std::uint32_t kNone = 0xFFFFFFFF;

  struct Entry {
    GridPoint from;
    GridPoint to;
    Owner owner;
    std::uint32_t next;  // in the same bucket, or of the free ones
  };

  [[nodiscard]] std::int32_t BucketOf(std::int64_t coordinate) const noexcept;
  [[nodiscard]] std::size_t At(std::int32_t column, std::int32_t row) const noexcept;
  template <class Visit>
  void ForEachBucket(GridPoint a, GridPoint b, Visit visit);
  void AddEdge(const VertexNode* v, Owner owner);
  void RemoveEdge(const VertexNode* v, Owner owner) noexcept;

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
        if (EdgeMeetsBox(entry.from, entry.to, box)) visit(entry.owner);
      }
    }
  }
}

}  // namespace zelvan
