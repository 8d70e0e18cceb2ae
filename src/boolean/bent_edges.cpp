// Bent edges (bent_edges.h).
#include "boolean/bent_edges.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

#include "boolean/op_rules.h"
#include "polygon/area.h"

namespace zelvan {

namespace {

constexpr std::size_t kMostPieces = 256;

bool InWidenedBox(const GridEdge& e, GridPoint p) noexcept {
  return std::min(e.from.gx, e.to.gx) - 1 <= p.gx && p.gx <= std::max(e.from.gx, e.to.gx) + 1 &&
         std::min(e.from.gy, e.to.gy) - 1 <= p.gy && p.gy <= std::max(e.from.gy, e.to.gy) + 1;
}

bool HasEnd(const GridEdge& e, GridPoint p) noexcept {
  return e.from == p || e.to == p;
}

// Does the edge meet the pixel of p, or come as near as its corners?
bool MeetsPixel(const GridEdge& e, GridPoint p) noexcept {
  return InWidenedBox(e, p) &&
         2 * std::abs(Cross(e.from, e.to, p)) <=
             std::int64_t{std::abs(e.to.gx - e.from.gx)} + std::abs(e.to.gy - e.from.gy);
}

// Adds the edge from the source vertex `from` to the next one, if the sweep has bent it.
// @return that next one
VertexNode* AddIfBent(VertexNode* from, GridPoint to, BoolOp op, BentEdges& bent) {
  const GridEdge edge{from->grid, to};
  bool isStraight = true;
  VertexNode* last = from->next;
  for (; last->grid != to; last = last->next) {
    isStraight = isStraight && Cross(edge.from, edge.to, last->grid) == 0;
  }
  if (isStraight) return last;
  bent.edges.push_back(edge);
  GrowBox(bent.box, Widened({edge.from, edge.from}));
  GrowBox(bent.box, Widened({edge.to, edge.to}));
  for (const VertexNode* v = from; v != last; v = v->next) {
    if (StartRule(op, v)) bent.pieces.push_back({v->grid, v->next->grid});
  }
  return last;
}

}  // namespace

bool KeepSettled(const BentEdges& bent, const Contour* contour) noexcept {
  if (!Overlap(contour->gridBox, bent.box)) return true;
  if (bent.pieces.size() > kMostPieces) return false;
  bool keep = true;
  ForEachVertex(contour, [&](const VertexNode* v) {
    for (const GridEdge& e : bent.pieces) {
      if (HasEnd(e, v->grid) || !MeetsPixel(e, v->grid)) continue;
      keep = keep && Cross(e.from, e.to, v->grid) == 0;
    }
  });
  return keep;
}

bool KeepSettled(const BentEdges& bent, const Area* ring) noexcept {
  bool keep = true;
  ForEachContour(ring, [&](const Contour* contour) { keep = keep && KeepSettled(bent, contour); });
  return keep;
}

bool MeetAnyPixel(const BentEdges& bent, const Contour* contour) noexcept {
  if (!Overlap(contour->gridBox, bent.box)) return false;
  bool meet = false;
  ForEachVertex(contour, [&](const VertexNode* v) {
    for (const GridEdge& e : bent.edges)
      meet = meet || (!HasEnd(e, v->grid) && MeetsPixel(e, v->grid));
  });
  return meet;
}

SourceEdges::SourceEdges(const Area* ring) {
  ForEachContour(ring, [&](const Contour* contour) {
    ForEachVertex(contour, [&](const VertexNode* v) { places_.push_back(v->grid); });
    sizes_.push_back(contour->count);
  });
}

void SourceEdges::AddBent(const Area* ring, BoolOp op, BentEdges& bent) const {
  const GridPoint* first = places_.data();
  const std::uint32_t* size = sizes_.data();
  ForEachContour(ring, [&](const Contour* contour) {
    VertexNode* v = contour->head;
    for (std::uint32_t k = 1; k <= *size; ++k) v = AddIfBent(v, first[k % *size], op, bent);
    first += *size++;
  });
}

}  // namespace zelvan
