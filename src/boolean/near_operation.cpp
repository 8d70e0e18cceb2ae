// Operations near the operand (near_operation.h).
#include "boolean/near_operation.h"

#include <zelvan/error.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <utility>

#include "boolean/assembly.h"
#include "boolean/boolean.h"
#include "boolean/edge_index.h"
#include "boolean/grid_box.h"
#include "boolean/op_rules.h"
#include "boolean/operand.h"
#include "polygon/containment.h"

namespace zelvan {

namespace {

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

bool AnyEdgeMeets(const Contour* contour, const GridBox& box) noexcept {
  if (!Overlap(contour->gridBox, box)) return false;
  const VertexNode* v = contour->head;
  do {
    if (EdgeMeetsBox(v->grid, v->next->grid, box)) return true;
    v = v->next;
  } while (v != contour->head);
  return false;
}

std::int64_t SizeOf(const Contour* contour) noexcept {
  return std::abs(TwiceArea(contour->head));
}

// What an operation takes of one contour, in the order in which it is met: outer
// boundaries, then holes.
std::vector<OwnedContour> Collect(Contour* contour, BoolOp op) {
  OwnedRing areas;
  PendingHoles holes;
  CollectContour(contour, areas, holes, op);
  std::vector<OwnedContour> made;
  ForEachArea(areas.first, [&](Area* area) {
    OwnedContour outer(std::exchange(area->contours, nullptr));
    made.push_back(std::move(outer));
  });
  const auto outers = static_cast<std::ptrdiff_t>(made.size());
  while (!holes.Empty()) made.push_back(holes.Pop());
  std::reverse(made.begin() + outers, made.end());
  return made;
}

}  // namespace

GridBox BoxOfRing(const Area* ring) noexcept {
  GridBox box = kNoBox;
  ForEachArea(ring, [&](const Area* area) { GrowBox(box, area->contours->gridBox); });
  return box;
}

NearOperation::NearOperation(OwnedRing& region, const GridBox& box, BoolOp op)
    : region_(region), op_(op), box_(box) {
  ForEachArea(region_.first, [&](Area* area) {
    if (!Overlap(area->contours->gridBox, box_)) return;
    areas_.push_back(area);
    last_ = nullptr;
    for (Contour* c = area->contours; c != nullptr; last_ = c, c = c->next) {
      if (AnyEdgeMeets(c, box_)) parts_.push_back({area, c, last_});
    }
  });
  if (!parts_.empty()) {
    LookAround();
    return;
  }
  ForEachContour(region_.first, [&](const Contour* contour) {
    isAround_ = isAround_ != PointInContour(box_.min, contour);
  });
}

NearOperation::NearOperation(OwnedRing& region, const RegionIndex& index, const GridBox& box,
                             BoolOp op)
    : region_(region), index_(&index), op_(op), box_(box) {
  for (Contour* contour : index.Near(box_)) {
    const RegionIndex::Place& place = index.PlaceOf(contour);
    if (areas_.empty() || areas_.back() != place.area) areas_.push_back(place.area);
    parts_.push_back({place.area, contour, place.before});
  }
  if (!parts_.empty()) {
    LookAround();
  } else if (Area* area = index.AreaAt(box_.min)) {
    isAround_ = true;
    areas_.push_back(area);
  }
  if (!areas_.empty()) last_ = index.LastOf(areas_.back());
}

// No contour that takes part is around the one that reaches farthest to the left, but one
// that reaches as far. So what is left of it bounds on it and on what does not take part.
void NearOperation::LookAround() noexcept {
  const auto isFarther = [](const Part& a, const Part& b) {
    const GridBox& boxA = a.contour->gridBox;
    const GridBox& boxB = b.contour->gridBox;
    return boxA.min.gx != boxB.min.gx ? boxA.min.gx < boxB.min.gx
           : !Contains(boxA, boxB)    ? false
           : !Contains(boxB, boxA)    ? true
                                      : SizeOf(a.contour) > SizeOf(b.contour);
  };
  const auto farthest = std::min_element(parts_.begin(), parts_.end(), isFarther);
  isAround_ = (farthest->contour->flags & CONTOUR_CCW) == 0;
}

bool NearOperation::Prepare(OwnedRing& operand) {
  std::swap(operand_.first, operand.first);
  const OwnedRing copies(NewArea());
  if (!CopyParts(copies.first)) return false;
  const SourceEdges edges(copies.first);
  const SourceEdges operandEdges(operand_.first);
  LabelCopies(copies.first, operand_.first, records_);
  edges.AddBent(copies.first, op_, bent_);
  operandEdges.AddBent(operand_.first, op_, bent_);
  Assemble(copies.first);
  if (!BendsAlike()) return false;
  ListContours();
  if (!LeavesTheGrid() || !PlaceHoles()) return false;
  MakeRoom();
  return true;
}

// The contours that take part. A frame around them and the operand stands for those around
// all of that, where their number is odd; behind all others.
// @return whether there is room for the frame
bool NearOperation::CopyParts(Area* copies) const {
  GridBox frame = box_;
  Contour** end = &copies->contours;
  for (const Part& part : parts_) {
    *end = CopyContour(part.contour).release();
    end = &(*end)->next;
    GrowBox(frame, part.contour->gridBox);
  }
  if (!isAround_) return true;
  frame = Widened(frame);
  if (!Contains(kWholeGrid, frame)) return false;
  const GridPoint corners[] = {
      frame.min, {frame.max.gx, frame.min.gy}, frame.max, {frame.min.gx, frame.max.gy}};
  *end = NewContour(corners).release();
  return true;
}

// What becomes of each contour that takes part. Those of the region that meet nothing, and
// those that come out as they were, stay.
void NearOperation::Assemble(const Area* copies) {
  Contour* copy = copies->contours;
  for (Part& part : parts_) {
    if (LabelOf(copy) != CONTOUR_CROSSED) {
      part.stays = ContourRule(op_, copy).has_value();
    } else {
      part.made = Collect(copy, op_);
      part.stays = part.made.size() == 1 && AreSame(part.contour, part.made[0].get());
      if (part.stays) part.made.clear();
    }
    copy = copy->next;
  }
  ForEachContour(operand_.first, [&](Contour* contour) {
    for (OwnedContour& one : Collect(contour, op_)) fromOperand_.made.push_back(std::move(one));
  });
}

bool NearOperation::LeavesTheGrid() const noexcept {
  if (op_ == UNION && bent_.edges.empty()) return true;
  const auto reachesIn = [&](const Part& part) {
    return part.stays || Contains(kWholeGrid, Widened(part.contour->gridBox));
  };
  if (std::all_of(parts_.begin(), parts_.end(), reachesIn)) return true;
  GridBox box = kNoBox;
  ForEachArea(region_.first, [&](const Area* area) {
    if (std::find(areas_.begin(), areas_.end(), area) == areas_.end()) {
      GrowBox(box, area->contours->gridBox);
    }
  });
  for (const Outer& outer : outers_) GrowBox(box, outer.contour->gridBox);
  return Contains(box, kWholeGrid);
}

// Tells whether the region is settled again.
// @return whether the full operation would bend all edges alike
bool NearOperation::BendsAlike() {
  if (bent_.edges.empty()) return true;
  std::vector<const Contour*> parts;
  for (const Part& part : parts_) {
    parts.push_back(part.contour);
    if (part.stays) LookAt(part.contour);
  }
  std::sort(parts.begin(), parts.end(), std::less<>());
  bool alike = true;
  const auto look = [&](const Contour* contour) {
    if (std::binary_search(parts.begin(), parts.end(), contour, std::less<>())) return;
    LookAt(contour);
    alike = alike && !MeetAnyPixel(bent_, contour);
  };
  if (index_ != nullptr) {
    for (const Contour* contour : index_->Near(bent_.box)) look(contour);
  } else {
    ForEachContour(region_.first, look);
  }
  for (const Part& one : parts_) LookAtMade(one);
  LookAtMade(fromOperand_);
  return alike;
}

void NearOperation::LookAtMade(const Part& part) noexcept {
  for (const OwnedContour& one : part.made) LookAt(one.get());
}

void NearOperation::LookAt(const Contour* contour) noexcept {
  isSettled_ = isSettled_ && KeepSettled(bent_, contour);
}

}  // namespace zelvan
