// A queue of operations on one shape (shape_queue.h).
#include "queue/shape_queue.h"

#include <zelvan/error.h>

#include <cstddef>
#include <optional>
#include <utility>

#include "boolean/assembly.h"
#include "boolean/regrid.h"
#include "boolean/shape_boolean.h"
#include "boolean/snapped_contour.h"
#include "polygon/contour.h"
#include "polygon/tables.h"
#include "queue/bent_edges.h"
#include "queue/listed_region.h"
#include "queue/near_operation.h"

namespace zelvan {

namespace {

bool Contains(const WorldBox& box, const WorldBox& inner) noexcept {
  return box.min.x <= inner.min.x && box.min.y <= inner.min.y && inner.max.x <= box.max.x &&
         inner.max.y <= box.max.y;
}

// Sees whether the result of an operation is snap-stable.
class StabilityWatcher final : public CopiesWatcher {
 public:
  explicit StabilityWatcher(BoolOp op) noexcept : op_(op) {}

  void BeforeSweep(const Area* a, const Area* b) override { bent_.Note(a, b); }
  void AfterSweep(const Area* a, const Area* b, const Area* result) override {
    bent_.Find(a, b, op_);
    isStable_ = true;
    ForEachContour(result, [this](const Contour* contour) {
      isStable_ = isStable_ && bent_.KeepSnapStable(contour);
    });
  }
  [[nodiscard]] bool IsStable() const noexcept { return isStable_; }

 private:
  BoolOp op_;
  BentEdges bent_;
  bool isStable_ = false;
};

// The region while the queue is applied, apart from the shape, which takes it over at
// the end.
class Accumulation {
 public:
  Accumulation(Shape& shape, BoolOp op, const ShapeQueue& others)
      : shape_(shape), op_(op), grid_(BoxOf(shape)) {
    for (const auto& other : others) edgesToCome_ += other->vertexTable.size();
  }

  /// Either applies a shape or, on failure, leaves the region as it was.
  void Apply(const Shape& other) {
    edgesToCome_ -= other.vertexTable.size();
    if (isStable_ && ApplyToStable(other)) return;
    Unlist();
    OwnedRing result;
    StabilityWatcher watcher(op_);
    const auto grid = CombineRegions(isOwn_ ? own_.first : shape_.areas, grid_, other, op_, result,
                                     edgesToCome_ > 0 ? &watcher : nullptr);
    ++ways_.whole;
    if (!grid) return;
    std::swap(own_.first, result.first);
    isOwn_ = true;
    grid_ = *grid;
    isStable_ = watcher.IsStable() && Contains(BoxOfRing(own_.first), kWholeGrid);
  }

  [[nodiscard]] const QueueWays& Ways() const noexcept { return ways_; }

  /// Hands the region to the shape. Raises ERR::NOMEM, throws std::bad_alloc; the shape is then
  /// as it was.
  void Deliver() {
    Unlist();
    if (isOwn_) AdoptRegion(shape_, own_, MakeTables(own_.first), grid_);
  }

 private:
  void Unlist() {
    if (!listed_) return;
    OwnedRing ring = listed_->ToRing();
    std::swap(own_.first, ring.first);
    listed_.reset();
  }

  // The ways that take less than an operation on everything, if the shape lies within the box
  // of the region's grid. @return whether one did
  bool ApplyToStable(const Shape& other) {
    if (other.areas == nullptr || !Contains(grid_, WorldBoxOf(other.areas, BoxOf(other)))) {
      return false;
    }
    OwnedRing operand(CopyOnGrid(other.areas, BoxOf(other), grid_));
    if (operand.first == nullptr) return true;
    if (!listed_) listed_.emplace(own_, edgesToCome_);
    const GridBox box = Widened(BoxOfRing(operand.first));
    const auto near = listed_->Near(box);
    if (near.empty() && LinkIfPlain(operand)) return true;
    NearOperation operation(*listed_, near, box, op_);
    if (!operation.Prepare(operand)) return false;
    operation.Commit();
    ++ways_.partial;
    isStable_ = operation.IsSnapStable();
    return true;
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
    const AreaPlace area = listed_->AreaAt(contour->gridBox.min);
    const bool isInside = area != listed_->Areas().end();
    if (isInside != (op_ == SUBTRACT) || !FinishContour(contour.get())) return true;
    const bool runsCcw = (contour->flags & CONTOUR_CCW) != 0;
    if (runsCcw != (op_ == UNION)) ReverseContour(contour.get());
    listed_->Append(std::move(contour), area);
    return true;
  }

  Shape& shape_;
  BoolOp op_;
  OwnedRing own_;  // the region once it is no more the shape's, while it is not listed
  bool isOwn_ = false;
  WorldBox grid_;                       // of the region
  bool isStable_ = false;               // the region is its own, fills its grid and is snap-stable
  std::optional<ListedRegion> listed_;  // a stable region, once there is use for the lists
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
  Accumulation region(shape, op, others);
  try {
    for (const auto& other : others) region.Apply(*other);
  } catch (...) {
    DeliverIfPossible(region);
    throw;
  }
  region.Deliver();
  return region.Ways();
}

}  // namespace

QueueWays UniteAll(Shape& shape, const ShapeQueue& others) {
  return CombineAll(shape, others, UNION);
}

QueueWays SubtractAll(Shape& shape, const ShapeQueue& others) {
  return CombineAll(shape, others, SUBTRACT);
}

}  // namespace zelvan
