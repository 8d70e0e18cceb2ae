// The look at a single contour (plain_contour.h): edges by their left ends, each
// against those that reach as far right.
#include "boolean/plain_contour.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "polygon/area.h"

namespace zelvan {

namespace {

struct Edge {
  GridPoint from;
  GridPoint to;
  std::int32_t left;
  std::int32_t right;
  std::uint32_t number;
};

// Beyond the pixels through which the edge's line passes: positive to the left,
// negative to the right, 0 within.
int BeyondLine(const Edge& e, GridPoint p) noexcept {
  const std::int64_t twice = 2 * Cross(e.from, e.to, p);
  const std::int64_t margin =
      std::int64_t{std::abs(e.to.gx - e.from.gx)} + std::abs(e.to.gy - e.from.gy);
  return twice > margin ? 1 : twice < -margin ? -1 : 0;
}

bool OnOneSide(const Edge& e, const Edge& f) noexcept {
  const int side = BeyondLine(e, f.from);
  return side != 0 && side == BeyondLine(e, f.to);
}

bool BoxesAreApart(const Edge& e, const Edge& f) noexcept {
  return e.right + 1 < f.left || f.right + 1 < e.left ||
         std::max(e.from.gy, e.to.gy) + 1 < std::min(f.from.gy, f.to.gy) ||
         std::max(f.from.gy, f.to.gy) + 1 < std::min(e.from.gy, e.to.gy);
}

// Two edges in turn: a right angle or more keeps their far ends apart.
bool TurnsWide(const Edge& e, const Edge& next) noexcept {
  const std::int64_t along = std::int64_t{e.to.gx - e.from.gx} * (next.to.gx - next.from.gx) +
                             std::int64_t{e.to.gy - e.from.gy} * (next.to.gy - next.from.gy);
  return along >= 0 || (BeyondLine(e, next.to) != 0 && BeyondLine(next, e.from) != 0);
}

bool KeepApart(const Edge& e, const Edge& f, std::uint32_t count) noexcept {
  if ((e.number + 1) % count == f.number) return TurnsWide(e, f);
  if ((f.number + 1) % count == e.number) return TurnsWide(f, e);
  return BoxesAreApart(e, f) || OnOneSide(e, f) || OnOneSide(f, e);
}

std::vector<Edge> EdgesFromTheLeft(const Contour* contour) {
  std::vector<Edge> edges;
  edges.reserve(contour->count);
  ForEachVertex(contour, [&](const VertexNode* v) {
    const GridPoint a = v->grid;
    const GridPoint b = v->next->grid;
    edges.push_back({a, b, std::min(a.gx, b.gx), std::max(a.gx, b.gx),
                     static_cast<std::uint32_t>(edges.size())});
  });
  std::sort(edges.begin(), edges.end(),
            [](const Edge& e, const Edge& f) { return e.left < f.left; });
  return edges;
}

}  // namespace

bool IsPlain(const Contour* contour) {
  const std::vector<Edge> edges = EdgesFromTheLeft(contour);
  const auto count = static_cast<std::uint32_t>(edges.size());
  if (count < 3) return false;
  std::size_t work = 64 * edges.size();
  std::vector<const Edge*> active;
  for (const Edge& e : edges) {
    std::erase_if(active, [&](const Edge* f) { return f->right + 1 < e.left; });
    if (active.size() > work) return false;
    work -= active.size();
    for (const Edge* f : active) {
      if (!KeepApart(e, *f, count)) return false;
    }
    active.push_back(&e);
  }
  return true;
}

}  // namespace zelvan
