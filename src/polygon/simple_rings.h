// From a boundary walk, which may touch itself, to simple rings.
//
// A walk goes once around one boundary component of one connected face, the face to its left,
// and is at a vertex wherever it touches itself. Each of its visits to a place bounds one wedge
// of the face there; the face lies on one side of all of them, so visits to two places never
// alternate, and cutting at every place that is visited again gives the same simple rings
// wherever the walk starts. Of an outer walk one ring runs counter-clockwise and encloses the
// others; all others run clockwise.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "polygon/grid.h"

namespace zelvan {

struct WalkPoint {
  GridPoint point;
  bool touches;        ///< may it lie on another point of the walk? in a simple ring: does it?
  bool stays = false;  ///< is it kept where it is no corner and does not touch?
};

/// Cuts a walk, which is used up, into simple rings. They keep corners, the places where the
/// walk touches itself and what stays, and begin with their least point (x, then y). Calls
/// visit(ring) for each. Throws std::bad_alloc.
template <class Visit>
void ForEachSimpleRing(std::vector<WalkPoint>& walk, Visit visit);

namespace detail {
/// For each position of the walk the number of its place where that is visited several times,
/// else -1; empty where no place is. `touches` then tells just that.
[[nodiscard]] std::vector<std::int32_t> RepeatedPlaces(std::vector<WalkPoint>& walk);
void Normalise(std::vector<WalkPoint>& ring);
}  // namespace detail

template <class Visit>
void ForEachSimpleRing(std::vector<WalkPoint>& walk, Visit visit) {
  const std::vector<std::int32_t> place = detail::RepeatedPlaces(walk);
  const auto finish = [&](std::vector<WalkPoint>& ring) {
    detail::Normalise(ring);
    if (ring.size() >= 3) visit(std::span<const WalkPoint>(ring));
  };
  if (place.empty()) return finish(walk);
  std::vector<WalkPoint> path;
  std::vector<WalkPoint> ring;
  std::vector<std::size_t> onPath(walk.size());  // of each place, its position there
  for (std::size_t i = 0; i < walk.size(); ++i) {
    if (place[i] >= 0) {
      std::size_t& position = onPath[static_cast<std::size_t>(place[i])];
      if (position < path.size() && path[position].point == walk[i].point) {
        ring.assign(path.begin() + static_cast<std::ptrdiff_t>(position), path.end());
        path.resize(position);
        finish(ring);
      }
      position = path.size();
    }
    path.push_back(walk[i]);
  }
  finish(path);
}

}  // namespace zelvan
