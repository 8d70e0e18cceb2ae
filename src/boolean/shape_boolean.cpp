// Unite and Subtract (shape_boolean.h).
#include "boolean/shape_boolean.h"

#include <zelvan/error.h>

#include <cmath>
#include <cstdint>
#include <new>
#include <utility>
#include <vector>

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

// The vertices of a ring, to see after an operation on it whether its edges are straight.
class Edges {
 public:
  explicit Edges(Area* ring) : ring_(ring) {
    ForEachContour(ring, [&](const Contour* contour) {
      ForEachVertex(contour, [&](const VertexNode* v) { places_.push_back(v->grid); });
      sizes_.push_back(contour->count);
    });
  }

  /// Do the vertices that the sweep has put into each edge lie on it?
  [[nodiscard]] bool AreStraight() const noexcept {
    bool straight = true;
    const GridPoint* first = places_.data();
    const std::uint32_t* size = sizes_.data();
    ForEachContour(ring_, [&](const Contour* contour) {
      straight = straight && IsStraight(contour, first, *size);
      first += *size++;
    });
    return straight;
  }

 private:
  static bool IsStraight(const Contour* contour, const GridPoint* places,
                         std::uint32_t size) noexcept {
    std::uint32_t k = 0;
    for (const VertexNode* v = contour->head->next;; v = v->next) {
      const GridPoint to = places[(k + 1) % size];
      if (v->grid == to) {
        if (++k == size) return true;
      } else if (v == contour->head || Cross(places[k], to, v->grid) != 0) {
        return false;
      }
    }
  }

  const Area* ring_;
  std::vector<GridPoint> places_;
  std::vector<std::uint32_t> sizes_;
};

void CombineOrRaise(Shape& shape, const Shape& other, BoolOp op) {
  try {
    OwnedRing result;
    bool isExact = false;
    const auto box = CombineRegions(shape.areas, BoxOf(shape), other, op, result, isExact);
    if (box) TakeOver(shape, result, MakeTables(result.first), *box);
  } catch (const std::bad_alloc&) {
    ERR::Raise(ERR::NOMEM);
  }
}

}  // namespace

WorldBox BoxOf(const Shape& shape) noexcept {
  return {shape.boxMin, shape.boxMax};
}

std::optional<WorldBox> CombineRegions(const Area* areas, const WorldBox& grid, const Shape& other,
                                       BoolOp op, OwnedRing& result, bool& isExact) {
  isExact = false;
  if (other.areas == nullptr || (areas == nullptr && op != UNION)) return std::nullopt;
  if (areas == nullptr) {
    result.first = CopyOperand(other.areas);
    return BoxOf(other);
  }
  const WorldBox common = CommonBox(areas, grid, other);
  SweepRecords records;
  const OwnedRing a(CopyOnGrid(areas, grid, common));
  const OwnedRing b(CopyOnGrid(other.areas, BoxOf(other), common));
  const Edges edgesA(a.first);
  const Edges edgesB(b.first);
  const bool both = a.first != nullptr && b.first != nullptr;
  const ERR::CODE code = both ? CombineCopies(a.first, b.first, result.first, op, records)
                              : Boolean(a.first, b.first, result.first, op);
  if (code != ERR::OK) ERR::Raise(code);
  if (result.first == nullptr) return grid;
  const WorldBox own = MoveToOwnGrid(result.first, common);
  isExact = both && IsSame(own, common) && edgesA.AreStraight() && edgesB.AreStraight();
  return own;
}

void TakeOver(Shape& shape, OwnedRing& ring, ShapeTables tables, const WorldBox& grid) noexcept {
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
