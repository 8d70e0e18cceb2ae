// Bent edges (bent_edges.h).
#include "queue/bent_edges.h"

#include <cstddef>

#include "boolean/op_rules.h"
#include "polygon/area.h"
#include "polygon/grid_predicates.h"

namespace zelvan {

void BentEdges::Note(const Area* a, const Area* b) {
  for (const Area* ring : {a, b}) {
    ForEachContour(ring, [&](const Contour* contour) {
      ForEachVertex(contour, [&](const VertexNode* v) { places_.push_back(v->grid); });
      sizes_.push_back(contour->count);
    });
  }
}

void BentEdges::Find(const Area* a, const Area* b, BoolOp op) {
  FindInRing(a, op);
  FindInRing(b, op);
}

void BentEdges::FindInRing(const Area* ring, BoolOp op) {
  ForEachContour(ring, [&](const Contour* contour) {
    const std::uint32_t size = sizes_[sizesRead_++];
    const GridPoint* const first = places_.data() + placesRead_;
    VertexNode* v = contour->head;
    for (std::uint32_t k = 1; k <= size; ++k) v = AddIfBent(v, first[k % size], op);
    placesRead_ += size;
  });
}

// Adds the edge from the noted vertex `from` to the next one, if the sweep has bent it.
// @return that next one
VertexNode* BentEdges::AddIfBent(VertexNode* from, GridPoint to, BoolOp op) {
  const Edge edge{from->grid, to};
  bool isStraight = true;
  VertexNode* last = from->next;
  for (; last->grid != to; last = last->next) {
    isStraight = isStraight && Cross(edge.from, edge.to, last->grid) == 0;
  }
  if (isStraight) return last;
  edges_.push_back(edge);
  GrowBox(box_, Widened({edge.from, edge.from}));
  GrowBox(box_, Widened({edge.to, edge.to}));
  for (const VertexNode* v = from; v != last; v = v->next) {
    if (StartRule(op, v)) pieces_.push_back({v->grid, v->next->grid});
  }
  return last;
}

// Does an edge for which condition(edge, place) holds meet the pixel of a vertex that is none
// of its own ends?
template <class Condition>
bool BentEdges::AnyMeetsPixel(const std::vector<Edge>& edges, const Contour* contour,
                              Condition condition) const noexcept {
  bool any = false;
  ForEachVertex(contour, [&](const VertexNode* v) {
    const GridPoint p = v->grid;
    for (const Edge& e : edges) {
      any = any || (e.from != p && e.to != p && MayMeetPixel(e.from, e.to, p) && condition(e, p));
    }
  });
  return any;
}

bool BentEdges::KeepSnapStable(const Contour* contour) const noexcept {
  constexpr std::size_t kMostPieces = 256;
  if (!Overlap(contour->gridBox, box_)) return true;
  const auto passesBeside = [](const Edge& e, GridPoint p) { return Cross(e.from, e.to, p) != 0; };
  return pieces_.size() <= kMostPieces && !AnyMeetsPixel(pieces_, contour, passesBeside);
}

bool BentEdges::MeetAnyPixel(const Contour* contour) const noexcept {
  return Overlap(contour->gridBox, box_) &&
         AnyMeetsPixel(edges_, contour, [](const Edge&, GridPoint) { return true; });
}

}  // namespace zelvan
