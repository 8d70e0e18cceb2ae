// Unite and Subtract (shape_boolean.h).
#include "boolean/shape_boolean.h"

#include <zelvan/error.h>

#include <cmath>
#include <new>
#include <utility>

#include "boolean/boolean.h"
#include "boolean/operand.h"
#include "boolean/regrid.h"
#include "polygon/area.h"
#include "polygon/grid_mapping.h"
#include "polygon/tables.h"

namespace zelvan {

namespace {

WorldBox BoxOf(const Shape& shape) noexcept {
  return {shape.boxMin, shape.boxMax};
}

WorldBox CommonBox(const Shape& shape, const Shape& other) {
  WorldBox box = WorldBoxOf(shape.areas, BoxOf(shape));
  const WorldBox otherBox = WorldBoxOf(other.areas, BoxOf(other));
  MergeBoxes(box.min, box.max, otherBox.min, otherBox.max);
  if (!std::isfinite((box.max.x - box.min.x) * GRID_MAX) ||
      !std::isfinite((box.max.y - box.min.y) * GRID_MAX)) {
    ERR::Raise(ERR::FAIL);
  }
  return box;
}

// Nothing can fail any more.
void Replace(Shape& shape, OwnedRing& ring, ShapeTables tables, const WorldBox& box) noexcept {
  std::swap(shape.areas, ring.first);
  AdoptTables(shape, std::move(tables));
  if (shape.areas == nullptr) return;  // keeps its box
  shape.boxMin = box.min;
  shape.boxMax = box.max;
}

void Combine(Shape& shape, const Shape& other, BoolOp op) {
  const WorldBox common = CommonBox(shape, other);
  const OwnedRing a(CopyOnGrid(shape.areas, BoxOf(shape), common));
  const OwnedRing b(CopyOnGrid(other.areas, BoxOf(other), common));
  OwnedRing result;
  const ERR::CODE code = a.first != nullptr && b.first != nullptr
                             ? CombineCopies(a.first, b.first, result.first, op)
                             : Boolean(a.first, b.first, result.first, op);
  if (code != ERR::OK) ERR::Raise(code);
  const WorldBox box = MoveToOwnGrid(result.first, common);
  Replace(shape, result, MakeTables(result.first), box);
}

void CombineOrRaise(Shape& shape, const Shape& other, BoolOp op) {
  if (other.areas == nullptr) return;
  try {
    if (shape.areas != nullptr) {
      Combine(shape, other, op);
    } else if (op == UNION) {
      OwnedRing copy(CopyOperand(other.areas));
      Replace(shape, copy, MakeTables(copy.first), BoxOf(other));
    }
  } catch (const std::bad_alloc&) {
    ERR::Raise(ERR::NOMEM);
  }
}

}  // namespace

void Unite(Shape& shape, const Shape& other) {
  CombineOrRaise(shape, other, UNION);
}

void Subtract(Shape& shape, const Shape& other) {
  CombineOrRaise(shape, other, SUBTRACT);
}

}  // namespace zelvan
