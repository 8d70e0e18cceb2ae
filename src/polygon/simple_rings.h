// From a boundary walk, which may touch itself, to simple rings.
//
// A walk goes once around one boundary component of one connected face, the face to its left,
// and is at a vertex wherever it touches itself. Each of its visits to a place bounds one wedge
// of the face there; the face lies on one side of all of them, so visits to two places never
// alternate, and cutting at every place that is visited again gives the same simple rings
// wherever the walk starts. Of an outer walk one ring runs counter-clockwise and encloses the
// others; all others run clockwise.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "polygon/grid.h"

namespace zelvan {

/// A walk by its points, with the positions of those that may lie on another one of them.
struct Walk {
  std::vector<GridPoint> points;
  std::vector<std::uint32_t> mayTouch;  ///< ascending
};

/// Cuts a walk into simple rings, without the points on straight runs, each from its least
/// point (x, then y) on, and calls visit(ring) for each with three points or more.
/// Throws std::bad_alloc. `walk.mayTouch` is used up.
template <class Visit>
void ForEachSimpleRing(Walk& walk, Visit visit);

namespace detail {
/// For each position of the walk the number of its place where that is visited several times,
/// else -1; empty where no place is.
[[nodiscard]] std::vector<std::int32_t> RepeatedPlaces(Walk& walk);
/// Drops the points on straight runs and begins with the least one.
void Normalise(std::vector<GridPoint>& ring);
}  // namespace detail

template <class Visit>
void ForEachSimpleRing(Walk& walk, Visit visit) {
  const std::vector<std::int32_t> place = detail::RepeatedPlaces(walk);
  const auto finish = [&](std::vector<GridPoint>& ring) {
    detail::Normalise(ring);
    if (ring.size() >= 3) visit(std::span<const GridPoint>(ring));
  };
  if (place.empty()) return finish(walk.points);
  std::vector<GridPoint> path;
  std::vector<GridPoint> ring;
  std::vector<std::size_t> onPath(walk.points.size());  // of each place, its position there
  for (std::size_t i = 0; i < walk.points.size(); ++i) {
    if (place[i] >= 0) {
      std::size_t& position = onPath[static_cast<std::size_t>(place[i])];
      if (position < path.size() && path[position] == walk.points[i]) {
        ring.assign(path.begin() + static_cast<std::ptrdiff_t>(position), path.end());
        path.resize(position);
        finish(ring);
      }
      position = path.size();
    }
    path.push_back(walk.points[i]);
  }
  finish(path);
}

}  // namespace zelvan
