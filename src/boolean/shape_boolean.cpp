// Unite and Subtract (shape_boolean.h).
#include "boolean/shape_boolean.h"

#include <zelvan/error.h>

#include <cmath>
#include <cstdint>
#include <new>
#include <utility>

#include "boolean/boolean.h"
#include "boolean/operand.h"
#include "boolean/regrid.h"
#include "polygon/grid_mapping.h"
#include "polygon/tables.h"

namespace zelvan {

namespace {

WorldBox CommonBox(const Area* areas, const WorldBox& grid, const Shape& other) {
  WorldBox box = WorldBoxOf(areas, grid);
  const WorldBox otherBox = WorldBoxOf(other.areas, BoxOf(other));
  MergeBoxes(box.min, box.max, otherBox.min, otherBox.max);
  if (!std::isfinite((box.max.x - box.min.x) * GRID_MAX) ||
      !std::isfinite((box.max.y - box.min.y) * GRID_MAX)) {
    ERR::Raise(ERR::FAIL);
  }
  return box;
}

void CombineOrRaise(Shape& shape, const Shape& other, BoolOp op) {
  try {
    OwnedRing result;
    const auto box = CombineRegions(shape.areas, BoxOf(shape), other, op, result);
    if (box) AdoptRegion(shape, result, MakeTables(result.first), *box);
  } catch (const std::bad_alloc&) {
    ERR::Raise(ERR::NOMEM);
  }
}

}  // namespace

WorldBox BoxOf(const Shape& shape) noexcept {
  return {shape.boxMin, shape.boxMax};
}

std::optional<WorldBox> CombineRegions(const Area* areas, const WorldBox& grid, const Shape& other,
                                       BoolOp op, OwnedRing& result, CopiesWatcher* watcher) {
  if (other.areas == nullptr || (areas == nullptr && op != UNION)) return std::nullopt;
  if (areas == nullptr) {
    result.first = CopyAreas(other.areas);
    return BoxOf(other);
  }
  const WorldBox common = CommonBox(areas, grid, other);
  SweepRecords records;
  const OwnedRing a(CopyOnGrid(areas, grid, common));
  const OwnedRing b(CopyOnGrid(other.areas, BoxOf(other), common));
  const bool both = a.first != nullptr && b.first != nullptr;
  const bool isWatched = watcher != nullptr && both;
  if (isWatched) watcher->BeforeSweep(a.first, b.first);
  const ERR::CODE code = both ? CombineCopies(a.first, b.first, result.first, op, records)
                              : Boolean(a.first, b.first, result.first, op);
  if (code != ERR::OK) ERR::Raise(code);
  if (result.first == nullptr) return grid;
  const WorldBox own = MoveToOwnGrid(result.first, common);
  if (isWatched && IsSame(own, common)) watcher->AfterSweep(a.first, b.first, result.first);
  return own;
}

void AdoptRegion(Shape& shape, OwnedRing& ring, ShapeTables tables, const WorldBox& grid) noexcept {
  std::swap(shape.areas, ring.first);
  AdoptTables(shape, std::move(tables));
  shape.boxMin = grid.min;
  shape.boxMax = grid.max;
}

void Unite(Shape& shape, const Shape& other) {
  CombineOrRaise(shape, other, UNION);
}

void Subtract(Shape& shape, const Shape& other) {
  CombineOrRaise(shape, other, SUBTRACT);
}

}  // namespace zelvan
