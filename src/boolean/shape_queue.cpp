// A queue of operations on one shape (shape_queue.h).
#include "boolean/shape_queue.h"

#include <zelvan/error.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <utility>

#include "boolean/assembly.h"
#include "boolean/grid_box.h"
#include "boolean/near_operation.h"
#include "boolean/region_index.h"
#include "boolean/regrid.h"
#include "boolean/shape_boolean.h"
#include "boolean/snapped_contour.h"
#include "polygon/area.h"
#include "polygon/contour.h"
#include "polygon/tables.h"

namespace zelvan {

namespace {

bool Contains(const WorldBox& box, const WorldBox& inner) noexcept {
  return box.min.x <= inner.min.x && box.min.y <= inner.min.y && inner.max.x <= box.max.x &&
         inner.max.y <= box.max.y;
}

// The region while the queue is applied, apart from the shape, which takes it over at
// the end.
class Accumulation {
  // So many looks at all contours cost about what an index does.
  static constexpr int kMostWithoutIndex = 128;

 public:
  Accumulation(Shape& shape, BoolOp op, const ShapeQueue& others)
      : shape_(shape), op_(op), grid_(BoxOf(shape)) {
    for (const auto& other : others) edgesToCome_ += other->vertexTable.size();
  }

  /// Either applies a shape or, on failure, leaves the region as it was.
  void Apply(const Shape& other) {
    edgesToCome_ -= other.vertexTable.size();
    if (settled_ && ApplyToSettled(other)) return;
    OwnedRing result;
    bool isSettled = false;
    bool* const wanted = edgesToCome_ > 0 ? &isSettled : nullptr;
    const auto grid = CombineRegions(Ring(), grid_, other, op_, result, wanted);
    if (grid) Replace(result, *grid, isSettled);
    ++ways_.whole;
  }

  [[nodiscard]] const QueueWays& Ways() const noexcept { return ways_; }

  /// Hands the region to the shape. Throws std::bad_alloc; the shape is as it was.
  void Deliver() {
    if (isOwn_) TakeOver(shape_, own_, MakeTables(own_.first), grid_);
  }

 private:
  [[nodiscard]] const Area* Ring() const noexcept { return isOwn_ ? own_.first : shape_.areas; }

  void Replace(OwnedRing& ring, const WorldBox& grid, bool isSettled) noexcept {
    index_.reset();
    withoutIndex_ = 0;
    settled_ = isSettled;
    fillsGrid_.reset();
    std::swap(own_.first, ring.first);
    isOwn_ = true;
    grid_ = grid;
  }

  // The ways that take less than an operation on everything. @return whether one did
  bool ApplyToSettled(const Shape& other) {
    if (!LeavesTheGrid(other)) return false;
    OwnedRing operand(CopyOnGrid(other.areas, BoxOf(other), grid_));
    if (operand.first == nullptr) return true;
    const GridBox box = Widened(BoxOfRing(operand.first));
    if (!index_) {
      NearOperation operation(own_, box, op_);
      if (operation.AnyEdgeIsNear() && ++withoutIndex_ < kMostWithoutIndex) {
        return Apply(operation, operand);
      }
      index_.emplace(own_, edgesToCome_);
    }
    if (!index_->Meets(box) && LinkIfPlain(operand)) return true;
    NearOperation operation(own_, *index_, box, op_);
    return Apply(operation, operand);
  }

  bool Apply(NearOperation& operation, OwnedRing& operand) {
    if (!operation.Prepare(operand)) return false;
    operation.Commit();
    ++ways_.partial;
    settled_ = operation.IsSettled();
    if (index_) Tell(operation);
    return true;
  }

  void Tell(const NearOperation& operation) noexcept {
    try {
      if (settled_) return operation.Tell(*index_);
    } catch (...) {
      ERR::Clear();
    }
    index_.reset();
  }

  // Where a plain contour that comes near no edge goes by the face that it lies in, if it
  // goes anywhere.
  bool LinkIfPlain(OwnedRing& operand) {
    const Area* only = operand.first;
    if (only->next != only || only->contours->next != nullptr || !IsPlain(only->contours)) {
      return false;
    }
    ++ways_.linked;
    OwnedContour contour(std::exchange(operand.first->contours, nullptr));
    Area* const area = index_->AreaAt(contour->gridBox.min);
    const bool isInside = area != nullptr;
    if (isInside != (op_ == SUBTRACT) || !FinishContour(contour.get())) return true;
    const bool runsCcw = (contour->flags & CONTOUR_CCW) != 0;
    if (runsCcw != (op_ == UNION)) ReverseContour(contour.get());
    index_->Append(std::move(contour), area);
    return true;
  }

  // Is the box of both the box of the region's grid, which the region fills?
  bool LeavesTheGrid(const Shape& other) {
    if (own_.first == nullptr || other.areas == nullptr) return false;
    if (!fillsGrid_) fillsGrid_ = Contains(BoxOfRing(own_.first), kWholeGrid);
    return *fillsGrid_ && Contains(grid_, WorldBoxOf(other.areas, BoxOf(other)));
  }

  Shape& shape_;
  BoolOp op_;
  OwnedRing own_;  // the region once it is no more the shape's
  bool isOwn_ = false;
  WorldBox grid_;                     // of the region
  std::optional<bool> fillsGrid_;     // does the region, where that is known?
  bool settled_ = false;              // the region is its own, and settled
  std::optional<RegionIndex> index_;  // of a settled region, once there is use for it
  int withoutIndex_ = 0;              // operations since the region is another one
  std::size_t edgesToCome_ = 0;
  QueueWays ways_;
};

void DeliverIfPossible(Accumulation& region) noexcept {
  try {
    region.Deliver();
  } catch (...) {
    ERR::Clear();
  }
}

QueueWays CombineAll(Shape& shape, const ShapeQueue& others, BoolOp op) {
  try {
    Accumulation region(shape, op, others);
    try {
      for (const auto& other : others) region.Apply(*other);
    } catch (...) {
      DeliverIfPossible(region);
      throw;
    }
    region.Deliver();
    return region.Ways();
  } catch (const std::bad_alloc&) {
    ERR::Raise(ERR::NOMEM);
  }
}

}  // namespace

QueueWays UniteAll(Shape& shape, const ShapeQueue& others) {
  return CombineAll(shape, others, UNION);
}

QueueWays SubtractAll(Shape& shape, const ShapeQueue& others) {
  return CombineAll(shape, others, SUBTRACT);
}

}  // namespace zelvan
