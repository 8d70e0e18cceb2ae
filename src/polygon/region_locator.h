// Where points lie in a region: an index of its edges, made once.
//
// Heights of vertices cut the plane into slabs, each with few vertices inside. An edge that has
// an end inside a slab is kept there. Of all others that cross the slab, none ends in it, so they
// are ordered from left to right: they hang in a segment tree over the slabs (Bentley, 1977),
// each at the highest nodes whose slabs it crosses. Slabs lie along the axis that has fewer edges
// beside each other: what is said of heights holds with the axes exchanged, then.
//
// What holds here:
//  - The edges of a node cross all of its height and do not cross each other: at every height of
//    the node they have one order.
//  - The list of a node also has every fourth edge of the list above it, which crosses all of
//    the node's height, too. So a place in a list tells the place in the list above but for three
//    comparisons (fractional cascading: Chazelle & Guibas, 1986), and lists that are handed
//    down add up to no more than the edges that hang in the tree.
//  - Heights between slabs belong to the slab above; edges have their lower ends and not their
//    upper ones. What of the boundary no slab has on such a height lies on its shelf.
// An edge hangs at 2 log n nodes at most: n log n memory at worst. A point takes O(log n) steps.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "polygon/flat_region.h"
#include "polygon/grid.h"

namespace zelvan {

class RegionLocator {
 public:
  /// @param region  with coordinates whose differences have 32 bits, and at least one polygon
  /// @param middle  where its point (0, 0) lies in the coordinates of the points that are asked
  ///                for, such that sums with coordinates are exact
  /// Throws std::bad_alloc, std::length_error.
  RegionLocator(const FlatRegion& region, WorldPoint middle);

  /// 1 inside, 0 on the boundary, -1 outside; exact for finite points (SideSign's bounds hold).
  [[nodiscard]] int SideOf(WorldPoint p) const noexcept;

  /// Do points of one x lie in one slab, instead of points of one y?
  [[nodiscard]] bool IsTurned() const noexcept { return isTurned_; }

 private:
  struct Edge {
    GridPoint low;  // of a horizontal edge the left end
    GridPoint high;
  };
  struct Shelf {  // what the boundary has of a height between slabs
    std::int32_t y;
    std::int32_t left;
    std::int32_t right;
  };
  struct Entry {
    std::uint32_t edge;
    std::uint32_t fromAbove;  // entries before this one that are of the list above
  };
  class Maker;

  static constexpr std::size_t kStride = 4;  // every fourth entry is handed down

  [[nodiscard]] static bool IsLeftOf(const Edge& e, const Edge& f) noexcept;
  [[nodiscard]] WorldPoint PlaceOf(GridPoint p) const noexcept;
  [[nodiscard]] int SideOfEdge(const Edge& edge, WorldPoint p) const noexcept;
  [[nodiscard]] bool IsOnShelf(WorldPoint p) const noexcept;
  [[nodiscard]] std::span<const Entry> ListOf(std::size_t node) const noexcept;

  WorldPoint middle_;
  bool isTurned_ = false;              // are the axes of all that follows exchanged?
  std::vector<Edge> edges_;            // from left to right by their middles
  std::vector<std::int32_t> heights_;  // between slabs, ascending
  std::vector<Shelf> shelves_;         // disjoint, by height, from left to right
  std::vector<std::size_t> endings_;   // of each slab, where its edges begin
  std::vector<std::uint32_t> ending_;  // edges that end inside a slab
  std::size_t leaves_ = 1;             // a power of two; a node's children are 2 i and 2 i + 1
  std::vector<std::size_t> lists_;     // of each node, where its entries begin
  std::vector<Entry> entries_;
};

}  // namespace zelvan
