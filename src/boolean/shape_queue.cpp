// A queue of operations on one shape (shape_queue.h).
#include "boolean/shape_queue.h"

#include <zelvan/error.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <unordered_map>
#include <utility>

#include "boolean/assembly.h"
#include "boolean/edge_index.h"
#include "boolean/grid_box.h"
#include "boolean/near_operation.h"
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

Contour* LastOf(Contour* contour) noexcept {
  while (contour->next != nullptr) contour = contour->next;
  return contour;
}

// The edges of a settled region, and where a contour that comes near none is linked.
class Linker {
 public:
  Linker(OwnedRing& ring, std::size_t more) : ring_(ring), index_(ring.first, more) {
    ForEachArea(ring.first, [&](Area* area) {
      for (Contour* c = area->contours; c != nullptr; c = c->next) areas_[c] = area;
      last_[area] = LastOf(area->contours);
    });
  }

  [[nodiscard]] bool Meets(const GridBox& box) const noexcept { return index_.Meets(box); }

  /// Links a plain contour that comes near no edge where the operation would put it, or
  /// frees it. After a failure the ring is as it was and the linker of no use.
  void Link(OwnedContour contour, BoolOp op) {
    const Contour* face = index_.FaceAt(contour->gridBox.min);
    const bool isInside = face != nullptr;
    if (isInside != (op == SUBTRACT) || !FinishContour(contour.get())) return;
    const bool runsCcw = (contour->flags & CONTOUR_CCW) != 0;
    if (runsCcw != (op == UNION)) ReverseContour(contour.get());
    OwnedRing one(isInside ? nullptr : NewArea());
    Area* const area = isInside ? areas_.at(face) : one.first;
    index_.Add(contour.get());
    areas_[contour.get()] = area;
    Contour*& last = last_[area];
    if (isInside) {
      last = last->next = contour.release();
    } else {
      last = one.first->contours = contour.release();
      AppendArea(ring_.first, one.release());
    }
  }

  /// Follows an operation that was done on the ring. Throws std::bad_alloc; the linker is
  /// of no use then.
  void Follow(const NearOperation& done) {
    for (const OwnedContour& contour : done.Removed()) {
      index_.Remove(contour.get());
      areas_.erase(contour.get());
    }
    for (const NearOperation::Outer& outer : done.Outers()) {
      if (outer.isNew) index_.Add(outer.contour);
      areas_[outer.contour] = outer.area;
      last_[outer.area] = outer.last;
    }
    for (const NearOperation::Hole& hole : done.Holes()) {
      const Area* area = done.Outers()[hole.outer].area;
      if (hole.isNew) index_.Add(hole.contour);
      if (hole.isNew || hole.place != area) areas_[hole.contour] = done.Outers()[hole.outer].area;
    }
  }

 private:
  OwnedRing& ring_;
  EdgeIndex index_;
  std::unordered_map<const Contour*, Area*> areas_;
  std::unordered_map<const Area*, Contour*> last_;  // the last contour of each
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
    if (settled_ && ApplyToSettled(other)) return;
    OwnedRing result;
    bool isSettled = false;
    bool* const wanted = edgesToCome_ > 0 ? &isSettled : nullptr;
    const auto grid = CombineRegions(Ring(), grid_, other, op_, result, wanted);
    if (grid) Replace(result, *grid, isSettled);
  }

  /// Hands the region to the shape. Throws std::bad_alloc; the shape is as it was.
  void Deliver() {
    if (isOwn_) TakeOver(shape_, own_, MakeTables(own_.first), grid_);
  }

 private:
  [[nodiscard]] const Area* Ring() const noexcept { return isOwn_ ? own_.first : shape_.areas; }

  void Replace(OwnedRing& ring, const WorldBox& grid, bool isSettled) noexcept {
    linker_.reset();
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
    if (linker_ && !linker_->Meets(box) && LinkIfPlain(operand)) return true;
    NearOperation operation(own_, box, op_);
    if (!linker_ && !operation.AnyEdgeIsNear()) {
      linker_.emplace(own_, edgesToCome_);
      if (LinkIfPlain(operand)) return true;
    }
    if (!operation.Prepare(operand)) return false;
    operation.Commit();
    settled_ = operation.IsSettled();
    Follow(operation);
    return true;
  }

  bool LinkIfPlain(OwnedRing& operand) {
    const Area* area = operand.first;
    if (area->next != area || area->contours->next != nullptr || !IsPlain(area->contours)) {
      return false;
    }
    linker_->Link(OwnedContour(std::exchange(operand.first->contours, nullptr)), op_);
    return true;
  }

  void Follow(const NearOperation& operation) noexcept {
    if (!linker_) return;
    try {
      if (settled_) return linker_->Follow(operation);
    } catch (...) {
      ERR::Clear();
    }
    linker_.reset();
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
  WorldBox grid_;                  // of the region
  std::optional<bool> fillsGrid_;  // does the region, where that is known?
  bool settled_ = false;           // the region is its own, and settled
  std::optional<Linker> linker_;   // of a settled region, once there is use for it
  std::size_t edgesToCome_ = 0;
};

void DeliverIfPossible(Accumulation& region) noexcept {
  try {
    region.Deliver();
  } catch (...) {
    ERR::Clear();
  }
}

void CombineAll(Shape& shape, const ShapeQueue& others, BoolOp op) {
  try {
    Accumulation region(shape, op, others);
    try {
      for (const auto& other : others) region.Apply(*other);
    } catch (...) {
      DeliverIfPossible(region);
      throw;
    }
    region.Deliver();
  } catch (const std::bad_alloc&) {
    ERR::Raise(ERR::NOMEM);
  }
}

}  // namespace

void UniteAll(Shape& shape, const ShapeQueue& others) {
  CombineAll(shape, others, UNION);
}

void SubtractAll(Shape& shape, const ShapeQueue& others) {
  CombineAll(shape, others, SUBTRACT);
}

}  // namespace zelvan
