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

void LinkBehind(Area* place, Area* area) noexcept {
  area->prev = place;
  area->next = place->next;
  place->next->prev = area;
  place->next = area;
}

Area* TakeOut(OwnedRing& ring, Area* area) noexcept {
  if (ring.first == area) ring.first = area->next != area ? area->next : nullptr;
  area->prev->next = area->next;
  area->next->prev = area->prev;
  area->next = area->prev = area;
  return area;
}

std::int64_t SizeOf(const Contour* contour) noexcept {
  return std::abs(TwiceArea(contour->head));
}

// But for their places in a list.
void SwapRings(Contour& a, Contour& b) noexcept {
  std::swap(a.head, b.head);
  std::swap(a.count, b.count);
  std::swap(a.flags, b.flags);
  std::swap(a.gridBox, b.gridBox);
  std::swap(a.block, b.block);
  std::swap(a.blockSize, b.blockSize);
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
    *end = CopyContour(part.contour, false);
    end = &(*end)->next;
    GrowBox(frame, part.contour->gridBox);
  }
  if (!isAround_) return true;
  frame = Widened(frame);
  if (!Contains(kWholeGrid, frame)) return false;
  Contour* contour = *end = NewContourInBlock(4);
  if (contour == nullptr) ERR::Raise(ERR::NOMEM);
  contour->block[0].grid = frame.min;
  contour->block[1].grid = {frame.max.gx, frame.min.gy};
  contour->block[2].grid = frame.max;
  contour->block[3].grid = {frame.min.gx, frame.max.gy};
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

// Does the region keep one area that the operation meets as one? Then all of its holes that
// stay are its own.
bool NearOperation::IsInPlace() const noexcept {
  if (areas_.size() != 1) return false;
  const auto isOuter = [](const OwnedContour& c) { return (c->flags & CONTOUR_CCW) != 0; };
  const bool outerStays =
      parts_.empty() || parts_[0].contour != areas_[0]->contours || parts_[0].stays;
  if (std::any_of(fromOperand_.made.begin(), fromOperand_.made.end(), isOuter)) return false;
  std::ptrdiff_t outers = 0;
  for (const Part& part : parts_) {
    outers += std::count_if(part.made.begin(), part.made.end(), isOuter);
  }
  return outers + (outerStays ? 1 : 0) == 1;
}

// The contours of the areas that take part, and the operand's, in the order of the result.
// In place nothing but what is new, and the outer boundary.
void NearOperation::ListContours() {
  isInPlace_ = IsInPlace();
  auto part = parts_.begin();
  for (Area* area : areas_) {
    for (Contour* c = area->contours; c != nullptr; c = isInPlace_ ? nullptr : c->next) {
      const bool takesPart = part != parts_.end() && part->contour == c;
      if (!takesPart || part->stays) List({c, nullptr, area, false});
      if (takesPart) ListMade(*part++);
    }
  }
  for (; part != parts_.end(); ++part) ListMade(*part);
  ListMade(fromOperand_);
}

void NearOperation::ListMade(Part& part) {
  for (std::size_t i = 0; i < part.made.size(); ++i) {
    Contour* const one = part.made[i].get();
    const bool inherits =
        part.contour != nullptr && part.heir == kNone && part.contour->flags == one->flags;
    if (inherits) part.heir = i;
    List({one, inherits ? part.contour : nullptr, part.area, !inherits});
  }
}

void NearOperation::List(const Listed& contour) {
  if ((contour.contour->flags & CONTOUR_CCW) != 0) {
    outers_.push_back({contour});
  } else {
    holes_.push_back({contour});
  }
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

// Where boxes leave one area only, it is the one.
bool NearOperation::PlaceHoles() {
  if (isInPlace_) return true;
  std::size_t work = 0;
  for (const Outer& outer : outers_) work += 64 * std::size_t{outer.contour->count};
  for (const Hole& hole : holes_) work += 64 * std::size_t{hole.contour->count};
  for (Hole& hole : holes_) {
    const auto mayContain = [&](const Outer& outer) {
      return Contains(outer.contour->gridBox, hole.contour->gridBox);
    };
    const bool isClear = std::count_if(outers_.begin(), outers_.end(), mayContain) == 1;
    const Contour* innermost = nullptr;
    for (std::size_t i = 0; i < outers_.size(); ++i) {
      const Contour* outer = outers_[i].contour;
      if (!mayContain(outers_[i])) continue;
      if (!isClear) {
        if (work < outer->count) return false;
        work -= outer->count;
        if (!ContourInside(hole.contour, outer)) continue;
        if (innermost != nullptr && !ContourInside(outer, innermost)) continue;
      }
      innermost = outer;
      hole.outer = i;
    }
    if (innermost == nullptr) return false;
  }
  return true;
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

// An area for each new outer boundary but the first one in the place of an area, and room
// for what Commit notes.
void NearOperation::MakeRoom() {
  const Area* place = nullptr;
  for (const Outer& outer : outers_) {
    if (outer.place == nullptr || outer.place == place) AppendArea(newAreas_.first, NewArea());
    place = outer.place;
  }
  changes_.reserve(parts_.size());
  links_.reserve(outers_.size() + holes_.size() + 2 * parts_.size());
  removed_.reserve(areas_.size());
}

void NearOperation::Commit() noexcept {
  for (Part& part : parts_) {
    if (part.heir != kNone) SwapRings(*part.contour, *part.made[part.heir]);
  }
  for (Outer& outer : outers_) UseRecord(outer);
  for (Hole& hole : holes_) UseRecord(hole);
  if (isInPlace_) {
    ChangeInPlace();
  } else {
    LinkAreas();
    LinkHoles();
  }
  for (Part& part : parts_) HandOver(part);
  HandOver(fromOperand_);
}

// The region owns what it has got, and this what it has lost.
void NearOperation::HandOver(Part& part) noexcept {
  for (std::size_t i = 0; i < part.made.size(); ++i) {
    if (i == part.heir) {
      changes_.push_back({part.contour, std::move(part.made[i])});
    } else {
      static_cast<void>(part.made[i].release());
    }
  }
  if (part.contour != nullptr && !part.stays && part.heir == kNone) {
    changes_.push_back({nullptr, OwnedContour(part.contour)});
  }
}

// Puts what each contour has become between its neighbours.
void NearOperation::ChangeInPlace() noexcept {
  Outer& outer = outers_.front();
  outer.area = areas_.front();
  Contour* tail = nullptr;  // of what stands before the next place
  const auto link = [&](Contour* contour) {
    (tail == nullptr ? outer.area->contours : tail->next) = contour;
    links_.push_back({tail, contour});
    tail = contour;
  };
  const auto linkMade = [&](const Part& part) {
    for (std::size_t i = 0; i < part.made.size(); ++i) {
      Contour* const contour = i == part.heir ? part.contour : part.made[i].get();
      if (contour != outer.contour) link(contour);
    }
  };
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    const Part& part = parts_[i];
    Contour* const rest = part.contour->next;
    if (i == 0 || parts_[i - 1].contour != part.before) tail = part.before;
    if (part.stays) {
      tail = part.contour;
      continue;
    }
    if (tail == nullptr) link(outer.contour);
    linkMade(part);
    tail->next = rest;
    if (rest == nullptr) {
      last_ = tail;
    } else if (i + 1 == parts_.size() || parts_[i + 1].contour != rest || parts_[i + 1].stays) {
      links_.push_back({tail, rest});
    }
  }
  tail = last_;
  linkMade(fromOperand_);
  tail->next = nullptr;
  outer.last = tail;
}

void NearOperation::Tell(RegionIndex& index) const {
  index.Exchange(changes_);
  for (const Area* area : removed_) index.Forget(area);
  for (const Outer& outer : outers_) {
    if (outer.isNew) index.Add(outer.contour);
    if (!isInPlace_) index.Relinked(outer.area);
  }
  for (const Hole& hole : holes_) {
    if (hole.isNew) index.Add(hole.contour);
  }
  if (!isInPlace_) return;
  const Outer& outer = outers_.front();
  for (const Link& link : links_) index.LinkedBehind(link.before, link.contour, outer.area);
  index.EndsWith(outer.area, outer.last);
}

void NearOperation::LinkAreas() noexcept {
  for (Area* area : areas_) area->contours = nullptr;
  Area* last = nullptr;  // of those in one place
  const Area* place = nullptr;
  for (Outer& outer : outers_) {
    if (outer.place != nullptr && outer.place != place) {
      outer.area = outer.place;
    } else {
      outer.area = TakeOut(newAreas_, newAreas_.first);
      if (outer.place != nullptr) {
        LinkBehind(last, outer.area);
      } else {
        AppendArea(region_.first, outer.area);
      }
    }
    place = outer.place;
    last = outer.area;
    outer.last = outer.area->contours = outer.contour;
  }
  for (Area* area : areas_) {
    if (area->contours != nullptr) continue;
    FreeArea(TakeOut(region_, area));
    removed_.push_back(area);
  }
}

void NearOperation::LinkHoles() noexcept {
  for (const Hole& hole : holes_) {
    Contour*& end = outers_[hole.outer].last;
    end = end->next = hole.contour;
  }
  for (const Outer& outer : outers_) outer.last->next = nullptr;
}

}  // namespace zelvan
