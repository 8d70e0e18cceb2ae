// The flips, and the order of the result (delaunay.h).
#include "triangulation/delaunay.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "triangulation/in_circle.h"

namespace VORNEX {

namespace {

using zelvan::GridPoint;

constexpr std::size_t Next(std::size_t corner) noexcept {
  return corner == 2 ? 0 : corner + 1;
}

constexpr std::size_t Last(std::size_t corner) noexcept {
  return corner == 0 ? 2 : corner - 1;
}

constexpr bool IsLower(GridPoint p, GridPoint q) noexcept {
  return p.gy < q.gy || (p.gy == q.gy && p.gx < q.gx);
}

// For two triangles with c and d opposite to their edge ab, counter-clockwise a, d, b, c.
bool IsLegal(GridPoint a, GridPoint b, GridPoint c, GridPoint d) noexcept {
  const int side = SideOfCircle(a, b, c, d);
  if (side != 0) return side < 0;
  return IsLower(std::min(a, b, IsLower), std::min(c, d, IsLower));
}

class Flips {
 public:
  Flips(std::span<const GridPoint> places, FlatTriangles& triangles)
      : places_(places),
        corners_(triangles.corners),
        neighbours_(triangles.neighbours),
        waits_(corners_.size()) {}

  std::uint64_t Run() {
    for (std::uint32_t t = 0; t < corners_.size(); ++t) {
      for (std::uint32_t k = 0; k < 3; ++k) Legalize(t, k);
      while (!waiting_.empty()) {
        const std::uint32_t side = waiting_.back();
        waiting_.pop_back();
        waits_[side / 3] &= static_cast<std::uint8_t>(~(1u << side % 3));
        Legalize(side / 3, side % 3);
      }
    }
    return flips_;
  }

 private:
  void Legalize(std::uint32_t t, std::uint32_t k);
  void Flip(std::uint32_t t, std::size_t k, std::uint32_t u, std::size_t j);
  void Wait(std::uint32_t t, std::uint32_t k);

  // The side of triangle t that lies across from its neighbour u.
  [[nodiscard]] std::size_t SideTo(std::uint32_t t, std::uint32_t u) const noexcept {
    const auto& all = neighbours_[t];
    const auto wanted = static_cast<std::int32_t>(u);
    return all[0] == wanted ? 0 : all[1] == wanted ? 1 : 2;
  }

  void Replace(std::int32_t t, std::uint32_t old, std::uint32_t now) noexcept {
    if (t < 0) return;
    const auto at = static_cast<std::uint32_t>(t);
    neighbours_[at][SideTo(at, old)] = static_cast<std::int32_t>(now);
  }

  std::span<const GridPoint> places_;
  std::vector<std::array<std::uint32_t, 3>>& corners_;
  std::vector<std::array<std::int32_t, 3>>& neighbours_;
  std::vector<std::uint32_t> waiting_;  // sides, 3 t + k, to be looked at (again)
  std::vector<std::uint8_t> waits_;     // which sides of each triangle wait, as bits
  std::uint64_t flips_ = 0;
};

void Flips::Wait(std::uint32_t t, std::uint32_t k) {
  const auto bit = static_cast<std::uint8_t>(1u << k);
  if ((waits_[t] & bit) != 0) return;
  waiting_.push_back(3 * t + k);
  waits_[t] |= bit;
}

// Looks at the edge from corner k of triangle t.
void Flips::Legalize(std::uint32_t t, std::uint32_t k) {
  if (neighbours_[t][k] < 0) return;
  const auto u = static_cast<std::uint32_t>(neighbours_[t][k]);
  const std::size_t j = SideTo(u, t);
  const auto& corners = corners_[t];
  if (IsLegal(places_[corners[k]], places_[corners[Next(k)]], places_[corners[Last(k)]],
              places_[corners_[u][Last(j)]])) {
    return;
  }
  Flip(t, k, u, j);
  ++flips_;
  for (const std::uint32_t side : {0u, 1u}) {
    Wait(t, side);
    Wait(u, side);
  }
}

//        c                 c
//      / t \             / | \        the edge from a to b becomes that from d to c,
//     a --- b    ->     a t|u b       side 2 of both
//      \ u /             \ | /
//        d                 d
void Flips::Flip(std::uint32_t t, std::size_t k, std::uint32_t u, std::size_t j) {
  const std::uint32_t a = corners_[t][k];
  const std::uint32_t b = corners_[t][Next(k)];
  const std::uint32_t c = corners_[t][Last(k)];
  const std::uint32_t d = corners_[u][Last(j)];
  const std::int32_t bc = neighbours_[t][Next(k)];
  const std::int32_t ca = neighbours_[t][Last(k)];
  const std::int32_t ad = neighbours_[u][Next(j)];
  const std::int32_t db = neighbours_[u][Last(j)];
  corners_[t] = {c, a, d};
  corners_[u] = {d, b, c};
  neighbours_[t] = {ca, ad, static_cast<std::int32_t>(u)};
  neighbours_[u] = {db, bc, static_cast<std::int32_t>(t)};
  Replace(ad, u, t);
  Replace(bc, t, u);
}

// Brings the lowest number to the front; neighbours go with their corners.
void TurnToLowest(std::array<std::uint32_t, 3>& corners, std::array<std::int32_t, 3>& neighbours) {
  const auto lowest = std::min_element(corners.begin(), corners.end()) - corners.begin();
  std::rotate(corners.begin(), corners.begin() + lowest, corners.end());
  std::rotate(neighbours.begin(), neighbours.begin() + lowest, neighbours.end());
}

// The triangles by their first corners, of equal ones by the second.
std::vector<std::uint32_t> OrderByCorners(std::size_t n, const FlatTriangles& triangles) {
  const auto& corners = triangles.corners;
  std::vector<std::uint32_t> begins(n + 1);
  for (const auto& triangle : corners) ++begins[triangle[0] + 1];
  for (std::size_t v = 0; v < n; ++v) begins[v + 1] += begins[v];
  std::vector<std::uint32_t> order(corners.size());
  std::vector<std::uint32_t> ends(begins);
  for (std::uint32_t t = 0; t < corners.size(); ++t) order[ends[corners[t][0]]++] = t;
  for (std::size_t v = 0; v < n; ++v) {
    const auto fan = std::span(order).subspan(begins[v], begins[v + 1] - begins[v]);
    std::sort(fan.begin(), fan.end(),
              [&](std::uint32_t s, std::uint32_t t) { return corners[s][1] < corners[t][1]; });
  }
  return order;
}

}  // namespace

std::uint64_t FlipToDelaunay(std::span<const GridPoint> places, FlatTriangles& triangles) {
  return Flips(places, triangles).Run();
}

void ArrangeByCorners(std::size_t n, FlatTriangles& triangles) {
  for (std::size_t t = 0; t < triangles.corners.size(); ++t) {
    TurnToLowest(triangles.corners[t], triangles.neighbours[t]);
  }
  const std::vector<std::uint32_t> order = OrderByCorners(n, triangles);
  std::vector<std::int32_t> numbers(order.size());
  FlatTriangles arranged;
  arranged.corners.resize(order.size());
  arranged.neighbours.resize(order.size());
  for (std::uint32_t t = 0; t < order.size(); ++t) numbers[order[t]] = static_cast<std::int32_t>(t);
  for (std::uint32_t t = 0; t < order.size(); ++t) {
    arranged.corners[t] = triangles.corners[order[t]];
    for (std::size_t k = 0; k < 3; ++k) {
      const std::int32_t old = triangles.neighbours[order[t]][k];
      arranged.neighbours[t][k] = old < 0 ? -1 : numbers[static_cast<std::uint32_t>(old)];
    }
  }
  triangles = std::move(arranged);
}

void MakeDelaunay(std::span<const GridPoint> places, FlatTriangles& triangles) {
  FlipToDelaunay(places, triangles);
  ArrangeByCorners(places.size(), triangles);
}

}  // namespace VORNEX
