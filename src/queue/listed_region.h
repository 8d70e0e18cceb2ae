// The region of a queue as lists, in which areas and contours come and go in constant time: the
// contours that come near a box, and the area around a place.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <list>
#include <optional>
#include <vector>

#include "polygon/area.h"
#include "polygon/contour.h"
#include "polygon/grid_box.h"
#include "queue/edge_index.h"

namespace zelvan {

struct ListedArea;
using AreaList = std::list<ListedArea>;
using AreaPlace = AreaList::iterator;

/// A contour of a region and its place.
struct ListedContour {
  OwnedContour contour;
  AreaPlace area{};
  std::uint64_t rank = 0;  ///< grows along the contours of the area
};

struct ListedArea {
  ContourList contours;    ///< the outer boundary, then the holes
  std::uint64_t rank = 0;  ///< grows along the areas
};

/// Moves all elements of a list into another one, before `place`, and ranks them there.
template <class List>
void MoveRanked(List& to, typename List::iterator place, List& from) noexcept {
  constexpr std::uint64_t gap = std::uint64_t{1} << 32;
  const std::uint64_t parts = from.size() + 1;
  std::uint64_t rank = place == to.begin() ? 0 : std::prev(place)->rank;
  const std::uint64_t step = place == to.end() ? gap : (place->rank - rank) / parts;
  for (auto& each : from) each.rank = rank += step;
  to.splice(place, from);
  if (step > 0) return;
  rank = 0;
  for (auto& each : to) each.rank = rank += gap;
}

class ListedRegion {
 public:
  /// Takes a ring over; `edgesToCome` is about the number of edges that operations will add.
  /// Throws std::bad_alloc, the ring is then as it was.
  ListedRegion(OwnedRing& ring, std::size_t edgesToCome);

  /// Gives the region back as a ring. Raises ERR::NOMEM, the region is then as it was.
  [[nodiscard]] OwnedRing ToRing();

  /// The contours with an edge that has a point in the closed box, in the region's order. The
  /// first looks are at all contours; after some the edges get an index. Throws std::bad_alloc.
  [[nodiscard]] std::vector<ContourList::iterator> Near(const GridBox& box);

  /// The area around the point half a step above a place, or the end of the areas. No edge may
  /// come within a step of the place. Throws std::bad_alloc.
  [[nodiscard]] AreaPlace AreaAt(GridPoint p);

  /// Appends a contour to an area, or with an area of its own at the end of the areas. Throws
  /// std::bad_alloc; the region is then as it was, and without an index.
  void Append(OwnedContour contour, AreaPlace area);

  [[nodiscard]] AreaList& Areas() noexcept { return areas_; }

  /// Has the index, if there is one, follow: update(index) tells it what has changed.
  template <class Update>
  void UpdateIndex(Update update) noexcept {
    try {
      if (index_) update(*index_);
    } catch (...) {
      index_.reset();
    }
  }

 private:
  void LookAtAll(const GridBox& box, std::vector<ContourList::iterator>& near);
  void MakeIndex();

  AreaList areas_;
  std::size_t edgesToCome_;
  int looksAtAll_ = 0;
  std::optional<EdgeIndex> index_;
};

/// Does a contour stand before another one in the region's order?
[[nodiscard]] inline bool StandsBefore(ContourList::iterator a, ContourList::iterator b) noexcept {
  return a->area != b->area ? a->area->rank < b->area->rank : a->rank < b->rank;
}

}  // namespace zelvan
