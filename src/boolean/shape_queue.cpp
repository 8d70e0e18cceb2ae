// A queue of operations on one shape (shape_queue.h).
#include "boolean/shape_queue.h"

#include <zelvan/error.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "boolean/assembly.h"
#include "boolean/edge_index.h"
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

GridBox Widened(const GridBox& box) noexcept {
  return {{box.min.gx - 1, box.min.gy - 1}, {box.max.gx + 1, box.max.gy + 1}};
}

bool Overlap(const GridBox& a, const GridBox& b) noexcept {
  return a.min.gx <= b.max.gx && b.min.gx <= a.max.gx && a.min.gy <= b.max.gy &&
         b.min.gy <= a.max.gy;
}

bool AnyEdgeMeets(const Area* ring, const GridBox& box) noexcept {
  bool met = false;
  ForEachContour(ring, [&](const Contour* contour) {
    if (met || !Overlap(contour->gridBox, box)) return;
    ForEachVertex(contour, [&](const VertexNode* v) {
      met = met || EdgeMeetsBox(v->grid, v->next->grid, box);
    });
  });
  return met;
}

bool AnyHoleOverlaps(const Area* area, const GridBox& box) noexcept {
  const Contour* hole = area->contours->next;
  while (hole != nullptr && !Overlap(hole->gridBox, box)) hole = hole->next;
  return hole != nullptr;
}

Contour* LastOf(Contour* contour) noexcept {
  while (contour->next != nullptr) contour = contour->next;
  return contour;
}

// An area without its holes, as long as this lives.
class WithoutHoles {
 public:
  explicit WithoutHoles(Area* area) noexcept
      : outer_(area->contours), holes_(std::exchange(outer_->next, nullptr)) {}
  WithoutHoles(const WithoutHoles&) = delete;
  WithoutHoles& operator=(const WithoutHoles&) = delete;
  ~WithoutHoles() { outer_->next = holes_; }

  /// Hands the holes on.
  [[nodiscard]] Contour* Release() noexcept { return std::exchange(holes_, nullptr); }

 private:
  Contour* outer_;
  Contour* holes_;
};

bool AreSame(const Contour* a, const Contour* b) noexcept {
  if (a->count != b->count || a->flags != b->flags) return false;
  const VertexNode* v = a->head;
  const VertexNode* w = b->head;
  do {
    if (v->grid != w->grid) return false;
    v = v->next;
    w = w->next;
  } while (v != a->head);
  return true;
}

// Where contours are linked: by the numbers of the areas, as in the index.
class Linker {
 public:
  Linker(OwnedRing& ring, std::size_t more) : ring_(ring), index_(ring.first, more) {
    ForEachArea(ring.first, [&](Area* area) { places_.push_back(LastOf(area->contours)); });
  }

  [[nodiscard]] bool Meets(const GridBox& box) const noexcept { return index_.Meets(box); }

  /// Links a plain contour that comes near no edge where the operation would put it, or
  /// frees it. After a failure the ring is as it was and the linker of no use.
  void Link(OwnedContour contour, BoolOp op) {
    const std::uint32_t area = index_.FaceAt(contour->gridBox.min);
    const bool isInside = area != EdgeIndex::kNoArea;
    if (isInside != (op == SUBTRACT) || !FinishContour(contour.get())) return;
    const bool runsCcw = (contour->flags & CONTOUR_CCW) != 0;
    if (runsCcw != (op == UNION)) ReverseContour(contour.get());
    if (isInside) {
      index_.Add(contour.get(), area);
      Contour*& last = places_[area];
      last = last->next = contour.release();
      return;
    }
    OwnedRing one(NewArea());
    index_.Add(contour.get(), static_cast<std::uint32_t>(places_.size()));
    places_.push_back(contour.get());
    one.first->contours = contour.release();
    AppendArea(ring_.first, one.release());
  }

 private:
  OwnedRing& ring_;
  EdgeIndex index_;
  std::vector<Contour*> places_;  // the last contour of each area
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
    bool isExact = false;
    const auto grid = CombineRegions(Ring(), grid_, other, op_, result, isExact);
    if (grid) Replace(result, *grid, isExact);
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
    extent_.reset();
    std::swap(own_.first, ring.first);
    isOwn_ = true;
    grid_ = grid;
  }

  // The ways that take less than an operation on everything. @return whether one did
  bool ApplyToSettled(const Shape& other) {
    OwnedContour contour = PlainOnGrid(other);
    if (contour == nullptr) return false;
    const GridBox box = Widened(contour->gridBox);
    if (!linker_ && !AnyEdgeMeets(own_.first, box)) linker_.emplace(own_, edgesToCome_);
    if (linker_ && !linker_->Meets(box)) {
      linker_->Link(std::move(contour), op_);
      return true;
    }
    return CombineOutline(other, box);
  }

  // The one contour of a shape on the region's grid, if it leaves that grid as it is and
  // is plain; else null.
  OwnedContour PlainOnGrid(const Shape& other) {
    if (!LeavesTheGrid(other) || other.areas->next != other.areas ||
        other.areas->contours->next != nullptr) {
      return nullptr;
    }
    const OwnedRing copy(CopyOnGrid(other.areas, BoxOf(other), grid_));
    if (copy.first == nullptr || !IsPlain(copy.first->contours)) return nullptr;
    return OwnedContour(std::exchange(copy.first->contours, nullptr));
  }

  // An operation that no hole of the only area takes part in. The outline either stays,
  // and what the contour adds comes last, or each new hole has part of it and comes first.
  bool CombineOutline(const Shape& other, const GridBox& box) {
    Area* const area = own_.first;
    if (area->next != area || area->contours->next == nullptr || AnyHoleOverlaps(area, box)) {
      return false;
    }
    OwnedRing result;
    bool isExact = false;
    WithoutHoles outline(area);
    const auto grid = CombineRegions(area, grid_, other, op_, result, isExact);
    if (result.first == nullptr || !IsSame(*grid, grid_)) return false;
    Contour* const outer = result.first->contours;
    const bool outlineStays = AreSame(area->contours, outer);
    if (!outlineStays && result.first->next != result.first) return false;
    Contour* const holes = outline.Release();
    Contour*& place = outlineStays ? outer->next : LastOf(outer)->next;
    LastOf(holes)->next = place;
    place = holes;
    Replace(result, *grid, isExact);
    return true;
  }

  // Is the box of both the box of the region's grid?
  bool LeavesTheGrid(const Shape& other) {
    if (own_.first == nullptr || other.areas == nullptr) return false;
    if (!extent_) extent_ = WorldBoxOf(own_.first, grid_);
    return Contains(*extent_, grid_) && Contains(grid_, WorldBoxOf(other.areas, BoxOf(other)));
  }

  Shape& shape_;
  BoolOp op_;
  OwnedRing own_;  // the region once it is no more the shape's
  bool isOwn_ = false;
  WorldBox grid_;                   // of the region
  std::optional<WorldBox> extent_;  // of the region, where known
  bool settled_ = false;            // the region is its own, and settled
  std::optional<Linker> linker_;    // of a settled region, once there is use for it
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
