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
#include "boolean/operand.h"
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

bool AnyEdgeMeets(const Area* ring, const GridBox& box) noexcept {
  bool met = false;
  ForEachContour(ring, [&](const Contour* contour) {
    const GridBox& own = contour->gridBox;
    if (met || own.max.gx < box.min.gx || own.min.gx > box.max.gx || own.max.gy < box.min.gy ||
        own.min.gy > box.max.gy) {
      return;
    }
    ForEachVertex(contour, [&](const VertexNode* v) {
      met = met || EdgeMeetsBox(v->grid, v->next->grid, box);
    });
  });
  return met;
}

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

bool AreSame(const Area* a, const Area* b) noexcept {
  const Contour* c = a->contours;
  const Contour* d = b->contours;
  for (; c != nullptr && d != nullptr; c = c->next, d = d->next) {
    if (!AreSame(c, d)) return false;
  }
  return c == d;
}

bool RingsAreSame(const Area* a, const Area* b) noexcept {
  if (a == nullptr || b == nullptr) return a == b;
  const Area* const firstA = a;
  const Area* const firstB = b;
  do {
    if (!AreSame(a, b)) return false;
    a = a->next;
    b = b->next;
  } while (a != firstA && b != firstB);
  return a == firstA && b == firstB;
}

// Where contours are linked: by the numbers of the areas, as in the index.
class Linker {
 public:
  Linker(OwnedRing& ring, std::size_t more) : ring_(ring), index_(ring.first, more) {
    ForEachArea(ring.first, [&](Area* area) {
      Contour* last = area->contours;
      while (last->next != nullptr) last = last->next;
      places_.push_back({area, last});
    });
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
      Contour*& last = places_[area].last;
      last = last->next = contour.release();
      return;
    }
    OwnedRing one(NewArea());
    index_.Add(contour.get(), static_cast<std::uint32_t>(places_.size()));
    places_.push_back({one.first, contour.get()});
    one.first->contours = contour.release();
    AppendArea(ring_.first, one.release());
  }

 private:
  struct Place {
    Area* area;
    Contour* last;
  };

  OwnedRing& ring_;
  EdgeIndex index_;
  std::vector<Place> places_;
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
    OwnedContour apart = FindApart(other);
    if (settled_ && apart != nullptr) {
      linker_->Link(std::move(apart), op_);
      return;
    }
    OwnedRing result;
    const auto grid = CombineRegions(Ring(), grid_, other, op_, result);
    if (!grid) return;
    if (apart != nullptr) {
      linker_->Link(std::move(apart), op_);
      settled_ = RingsAreSame(own_.first, result.first);
      if (settled_) return;
    }
    Replace(result, *grid);
  }

  /// Hands the region to the shape. Throws std::bad_alloc; the shape is as it was.
  void Deliver() {
    if (isOwn_) TakeOver(shape_, own_, MakeTables(own_.first), grid_);
  }

 private:
  [[nodiscard]] const Area* Ring() const noexcept { return isOwn_ ? own_.first : shape_.areas; }

  void Replace(OwnedRing& ring, const WorldBox& grid) noexcept {
    linker_.reset();
    settled_ = false;
    extent_.reset();
    isOwn_ = true;
    std::swap(own_.first, ring.first);
    grid_ = grid;
  }

  // The one contour of a shape on the region's grid if it leaves that grid, comes near no
  // edge and is plain; else null. A contour that is found has a linker.
  OwnedContour FindApart(const Shape& other) {
    if (!LeavesTheGrid(other) || other.areas->next != other.areas ||
        other.areas->contours->next != nullptr) {
      return nullptr;
    }
    const OwnedRing copy(CopyOnGrid(other.areas, BoxOf(other), grid_));
    if (copy.first == nullptr) return nullptr;
    const GridBox box = Widened(copy.first->contours->gridBox);
    if (settled_ ? linker_->Meets(box) : AnyEdgeMeets(Ring(), box)) return nullptr;
    if (!IsPlain(copy.first->contours)) return nullptr;
    if (linker_ == std::nullopt) MakeLinker();
    return OwnedContour(std::exchange(copy.first->contours, nullptr));
  }

  void MakeLinker() {
    if (!isOwn_) {
      own_.first = CopyOperand(shape_.areas);
      isOwn_ = true;
    }
    linker_.emplace(own_, edgesToCome_);
  }

  // Is the box of both the box of the region's grid?
  bool LeavesTheGrid(const Shape& other) {
    if (Ring() == nullptr || other.areas == nullptr) return false;
    if (!extent_) extent_ = WorldBoxOf(Ring(), grid_);
    return Contains(*extent_, grid_) && Contains(grid_, WorldBoxOf(other.areas, BoxOf(other)));
  }

  Shape& shape_;
  BoolOp op_;
  OwnedRing own_;  // the region once it is no more the shape's
  bool isOwn_ = false;
  WorldBox grid_;                   // of the region
  std::optional<WorldBox> extent_;  // of the region, where known
  bool settled_ = false;
  std::optional<Linker> linker_;  // of the own region; there is one while it is settled
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
