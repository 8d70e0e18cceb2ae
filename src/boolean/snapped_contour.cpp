// Looks at single contours (snapped_contour.h).
#include "boolean/snapped_contour.h"

#include <zelvan/error.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "boolean/boolean.h"
#include "boolean/operand.h"
#include "boolean/shape_boolean.h"
#include "boolean/soundness.h"
#include "polygon/area.h"
#include "polygon/build_shape.h"
#include "polygon/contour.h"
#include "polygon/grid_predicates.h"
#include "polygon/self_crossing.h"

namespace zelvan {

namespace {

struct Edge {
  GridPoint from;
  GridPoint to;
  GridBox box;
  std::uint32_t number;
};

bool OnOneSide(const Edge& e, const Edge& f) noexcept {
  const int side = BeyondPixels(e.from, e.to, f.from);
  return side != 0 && side == BeyondPixels(e.from, e.to, f.to);
}

// Two edges in turn: a right angle or more keeps their far ends apart.
bool TurnsWide(const Edge& e, const Edge& next) noexcept {
  return Dot(Difference(e.to, e.from), Difference(next.to, next.from)) >= 0 ||
         (BeyondPixels(e.from, e.to, next.to) != 0 &&
          BeyondPixels(next.from, next.to, e.from) != 0);
}

bool KeepApart(const Edge& e, const Edge& f, std::uint32_t count) noexcept {
  if ((e.number + 1) % count == f.number) return TurnsWide(e, f);
  if ((f.number + 1) % count == e.number) return TurnsWide(f, e);
  return !Overlap(Widened(e.box), f.box) || OnOneSide(e, f) || OnOneSide(f, e);
}

std::vector<Edge> EdgesFromTheLeft(const Contour* contour) {
  std::vector<Edge> edges;
  edges.reserve(contour->count);
  ForEachVertex(contour, [&](const VertexNode* v) {
    edges.push_back({v->grid, v->next->grid, BoxOfEdge(v->grid, v->next->grid),
                     static_cast<std::uint32_t>(edges.size())});
  });
  std::sort(edges.begin(), edges.end(),
            [](const Edge& e, const Edge& f) { return e.box.min.gx < f.box.min.gx; });
  return edges;
}

bool HaveCommonPoint(GridPoint a, GridPoint b, GridPoint c, GridPoint d) noexcept {
  if (!Overlap(BoxOfEdge(a, b), BoxOfEdge(c, d))) return false;
  const auto onOneSide = [](GridPoint p, GridPoint q, GridPoint r, GridPoint s) {
    const std::int64_t first = Cross(p, q, r);
    const std::int64_t second = Cross(p, q, s);
    return (first > 0 && second > 0) || (first < 0 && second < 0);
  };
  return !onOneSide(a, b, c, d) && !onOneSide(c, d, a, b);
}

// Does the edge that begins at `last` meet others, but for its neighbours at their ends?
bool EdgeMeetsOthers(const VertexNode* last) noexcept {
  const VertexNode* first = last->next;
  if (FoldsBack(last->grid, first->grid, first->next->grid) ||
      FoldsBack(last->prev->grid, last->grid, first->grid)) {
    return true;
  }
  for (const VertexNode* v = first->next; v->next != last; v = v->next) {
    if (HaveCommonPoint(last->grid, first->grid, v->grid, v->next->grid)) return true;
  }
  return false;
}

// Do any two edges meet but in turn, at their common end? Grid points are doubles too.
bool HasContact(const Contour* contour) {
  PointList open;
  open.reserve(contour->count);
  ForEachVertex(contour, [&](const VertexNode* v) {
    open.push_back({static_cast<double>(v->grid.gx), static_cast<double>(v->grid.gy), 0.0});
  });
  return open.size() < 4 || EdgeMeetsOthers(contour->head->prev) ||
         FindContactBySweep(open) != ChainContact::kNone;
}

}  // namespace

bool IsPlain(const Contour* contour) {
  const std::vector<Edge> edges = EdgesFromTheLeft(contour);
  const auto count = static_cast<std::uint32_t>(edges.size());
  if (count < 3) return false;
  std::size_t work = 32 * edges.size();
  std::vector<const Edge*> active;
  for (const Edge& e : edges) {
    std::erase_if(active, [&](const Edge* f) { return f->box.max.gx + 1 < e.box.min.gx; });
    if (active.size() > work) return false;
    work -= active.size();
    for (const Edge* f : active) {
      if (!KeepApart(e, *f, count)) return false;
    }
    active.push_back(&e);
  }
  return true;
}

bool IsSoundContour(const Area* area, bool chainIsApart) {
  const Contour* contour = area->contours;
  if (TwiceArea(contour->head) <= 0) return false;
  // The edge that closed the chain begins or ends at the head, for the ring may be turned.
  if (chainIsApart && !EdgeMeetsOthers(contour->head->prev) && !EdgeMeetsOthers(contour->head)) {
    return true;
  }
  constexpr std::uint32_t few = 64;
  return (contour->count <= few && IsPlain(contour)) || !HasContact(contour) || IsSound(area);
}

void ReplaceByRegion(Shape& shape) {
  const bool isTurned = TwiceArea(shape.areas->contours->head) < 0;  // by the grid
  const WindingRule rule = isTurned ? WindingRule::kNegative : WindingRule::kPositive;
  SweepRecords records;  // outlive the copy
  const OwnedRing copy(CopyAreas(shape.areas));
  OwnedRing region;
  const ERR::CODE code = CombineCopies(copy.first, nullptr, region.first, UNION, records, rule);
  if (code != ERR::OK) ERR::Raise(code);
  AdoptRegion(shape, region, MakeTables(region.first), BoxOf(shape));
}

}  // namespace zelvan
