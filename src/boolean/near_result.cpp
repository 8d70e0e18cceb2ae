// The places of what an operation near its operand has made (near_operation.h).
#include <algorithm>
#include <cstddef>
#include <utility>

#include "boolean/grid_box.h"
#include "boolean/near_operation.h"
#include "polygon/containment.h"

namespace zelvan {

namespace {

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

// But for their places in a list.
void SwapRings(Contour& a, Contour& b) noexcept {
  std::swap(a.head, b.head);
  std::swap(a.count, b.count);
  std::swap(a.flags, b.flags);
  std::swap(a.gridBox, b.gridBox);
  std::swap(a.block, b.block);
}

}  // namespace

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
    removed_.push_back(area);
    delete TakeOut(region_, area);
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
