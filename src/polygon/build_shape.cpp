// From points to a stored polygon (build_shape.h).
#include "polygon/build_shape.h"

#include <zelvan/error.h>

#include <cmath>
#include <utility>

#include "polygon/area.h"
#include "polygon/grid_mapping.h"
#include "polygon/input_predicates.h"
#include "polygon/self_crossing.h"
#include "polygon/tables.h"

namespace zelvan {

namespace {

// Everything that follows works on numbers whose differences are numbers, also
// when the way back from the grid multiplies them by up to GRID_MAX.
void RequireFiniteExtent(const PointList& list) {
  if (list.empty()) return;
  WorldPoint boxMin{list[0].x, list[0].y};
  WorldPoint boxMax = boxMin;
  for (const InputPoint& p : list) {
    if (!std::isfinite(p.x) || !std::isfinite(p.y)) throw ZelvanLib::BadPolyError();
    MergeBoxes(boxMin, boxMax, {p.x, p.y}, {p.x, p.y});
  }
  if (!std::isfinite((boxMax.x - boxMin.x) * GRID_MAX) ||
      !std::isfinite((boxMax.y - boxMin.y) * GRID_MAX)) {
    throw ZelvanLib::BadPolyError();
  }
}

}  // namespace

void RemoveCollinear(PointList& list) {
  if (list.size() <= 2) return;
  const InputPoint last = list.back();
  const bool dropFirst = IsCollinear(last, list[0], list[1]);
  std::size_t kept = dropFirst ? 0 : 1;  // list[0, kept) is what stays
  const auto before = [&]() -> const InputPoint& { return kept == 0 ? last : list[kept - 1]; };
  for (std::size_t i = 1; i + 1 < list.size(); ++i) {
    if (!IsCollinear(before(), list[i], list[i + 1])) list[kept++] = list[i];
  }
  const InputPoint& first = kept == 0 ? last : list[0];
  if (!IsCollinear(before(), last, first)) list[kept++] = last;
  list.resize(kept);
}

Contour* FixOrientation(Contour* contour) {
  double sum = 0.0;
  std::uint32_t count = 0;
  ForEachVertex(contour, [&](const VertexNode* v) {
    const WorldPoint p = v->prev->world;
    sum += (p.y + v->world.y) * (p.x - v->world.x);
    ++count;
  });
  contour->count = count;
  if (sum == 0.0 || std::isnan(sum)) throw ZelvanLib::BadPolyError();
  if (sum > 0.0) {
    contour->flags |= CONTOUR_CCW;
  } else {
    contour->flags &= ~CONTOUR_CCW;
    ReverseContour(contour);
  }
  return contour;
}

ValidatedContour::ValidatedContour(PointList points) : points_(std::move(points)) {
  RequireFiniteExtent(points_);
  RemoveCollinear(points_);
  if (points_.size() < 3) throw ZelvanLib::BadPolyError();
  const ChainContact contact = FindContact(points_);
  if (contact == ChainContact::kCrossing) throw ZelvanLib::BadPolyError();
  chainStaysApart_ = contact == ChainContact::kNoneOnGrid;
}

OwnedContour MakeContour(const ValidatedContour& validated) {
  const PointList& list = validated.Points();
  OwnedContour contour = NewContour(static_cast<std::uint32_t>(list.size()));
  contour->worldBox = {Planar(list[0]), Planar(list[0])};
  VertexNode* v = contour->head;
  for (const InputPoint& p : list) {
    v->world = Planar(p);
    MergeBoxes(contour->worldBox.min, contour->worldBox.max, v->world, v->world);
    v = v->next;
  }
  FixOrientation(contour.get());
  return contour;
}

std::unique_ptr<Shape> BuildShape(const ValidatedContour& validated) {
  auto shape = std::make_unique<Shape>();
  OwnedContour contour = MakeContour(validated);
  shape->boxMin = contour->worldBox.min;
  shape->boxMax = contour->worldBox.max;
  PlaceContour(shape->areas, contour.get());
  static_cast<void>(contour.release());
  SnapShape(*shape, shape->boxMin, shape->boxMax);
  RebuildTables(*shape);
  return shape;
}

}  // namespace zelvan
