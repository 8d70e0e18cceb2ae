// The places of what an operation near its operand has made (near_operation.h).
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "polygon/containment.h"
#include "queue/near_operation.h"

namespace zelvan {

namespace {

bool IsOuter(const Contour* contour) noexcept {
  return (contour->flags & CONTOUR_CCW) != 0;
}

}  // namespace

bool NearOperation::KeepsGrid() const {
  if (op_ == UNION && !bent_.Any()) return true;
  const auto isOffTheEnds = [](const Part& part) {
    return part.stays || Contains(kWholeGrid, Widened(part.listed->contour->gridBox));
  };
  if (std::all_of(parts_.begin(), parts_.end(), isOffTheEnds)) return true;
  GridBox box = kNoBox;
  const auto grow = [&](const Contour* contour) { GrowBox(box, contour->gridBox); };
  ForEachOutcome(grow);
  for (ListedArea& area : region_.Areas()) {
    const auto outer = area.contours.begin();
    if (!std::binary_search(near_.begin(), near_.end(), outer, StandsBefore)) {
      grow(outer->contour.get());
    }
  }
  return Contains(box, kWholeGrid);
}

// Does the operation meet one area, which stays one, with an outer boundary in the place of the
// old one? Then all of its holes that stay are its own.
bool NearOperation::IsInPlace() const {
  if (areas_.size() != 1) return false;
  int outers = 0;
  ForEachOutcome([&](const Contour* contour) { outers += IsOuter(contour) ? 1 : 0; });
  const bool outerTakesPart = !parts_.empty() && parts_[0].listed == areas_[0]->contours.begin();
  if (!outerTakesPart) return outers == 0;
  return outers == 1 && (parts_[0].stays || parts_[0].heir != nullptr);
}

// Lists the contours of the areas that take part, and those made of the operand, in the order of
// the result.
void NearOperation::ListContours() {
  const auto list = [this](const Contour* contour) {
    if (IsOuter(contour)) {
      outers_.push_back(contour);
    } else {
      holes_.push_back({contour});
    }
  };
  auto part = parts_.begin();
  for (const AreaPlace area : areas_) {
    for (auto each = area->contours.begin(); each != area->contours.end(); ++each) {
      const bool takesPart = part != parts_.end() && part->listed == each;
      if (!takesPart || part->stays) list(each->contour.get());
      if (!takesPart) continue;
      if (part->heir != nullptr) list(part->heir.get());
      for (const ListedContour& made : part->made) list(made.contour.get());
      ++part;
    }
  }
  for (const ListedContour& made : fromOperand_) list(made.contour.get());
}

// Finds the outer boundary around each hole. If the boxes leave one only, it is that one.
// @return false if there is none, or that is too much work
bool NearOperation::PlaceHoles() {
  std::size_t work = 0;
  for (const Contour* outer : outers_) work += 64 * std::size_t{outer->count};
  for (const Hole& hole : holes_) work += 64 * std::size_t{hole.contour->count};
  for (Hole& hole : holes_) {
    const auto mayContain = [&](const Contour* outer) {
      return Contains(outer->gridBox, hole.contour->gridBox);
    };
    const bool isClear = std::count_if(outers_.begin(), outers_.end(), mayContain) == 1;
    const Contour* innermost = nullptr;
    for (std::size_t i = 0; i < outers_.size(); ++i) {
      const Contour* outer = outers_[i];
      if (!mayContain(outer)) continue;
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

// Gets the memory that Commit needs.
void NearOperation::MakeRoom() {
  std::size_t made = fromOperand_.size();
  for (const Part& part : parts_) made += part.made.size();
  added_.reserve(made);
  newAreas_.resize(outers_.size());
  homes_.reserve(outers_.size());
}

void NearOperation::Commit() noexcept {
  for (Part& part : parts_) ReplacePart(part);
  if (isInPlace_) {
    MoveIn(areas_[0], areas_[0]->contours.end(), fromOperand_);
  } else {
    Distribute();
  }
  UpdateIndex();
}

void NearOperation::ReplacePart(Part& part) noexcept {
  if (part.stays) return;
  const AreaPlace area = part.listed->area;
  MoveIn(area, std::next(part.listed), part.made);
  if (part.heir != nullptr) {
    std::swap(part.listed->contour, part.heir);
  } else {
    gone_.splice(gone_.end(), area->contours, part.listed);
  }
}

void NearOperation::MoveIn(AreaPlace area, ContourList::iterator place,
                           ContourList& made) noexcept {
  for (auto each = made.begin(); each != made.end(); ++each) {
    each->area = area;
    added_.push_back(each);
  }
  MoveRanked(area->contours, place, made);
}

// Puts the contours of all areas that take part into new lists: outer boundaries with the area
// where they stand, the further ones with new areas behind it, and each hole where it belongs.
void NearOperation::Distribute() noexcept {
  AreaList& areas = region_.Areas();
  ContourList all;
  for (const AreaPlace area : areas_) all.splice(all.end(), area->contours);
  for (auto each = fromOperand_.begin(); each != fromOperand_.end(); ++each) added_.push_back(each);
  all.splice(all.end(), fromOperand_);
  const auto move = [&](ContourList::iterator contour, AreaPlace home) {
    contour->area = home;
    ContourList one;
    one.splice(one.end(), all, contour);
    MoveRanked(home->contours, home->contours.end(), one);
  };
  for (auto next = all.begin(); next != all.end();) {
    const auto outer = next++;
    if (!IsOuter(outer->contour.get())) continue;
    AreaPlace home = outer->area;
    if (home == areas.end() || !home->contours.empty()) {
      const AreaPlace place = home == areas.end() ? home : std::next(homes_.back());
      AreaList one;
      one.splice(one.end(), newAreas_, newAreas_.begin());
      home = one.begin();
      MoveRanked(areas, place, one);
    }
    move(outer, home);
    homes_.push_back(home);
  }
  for (const Hole& hole : holes_) move(all.begin(), homes_[hole.outer]);
  for (const AreaPlace area : areas_) {
    if (area->contours.empty()) areas.erase(area);
  }
}

void NearOperation::UpdateIndex() noexcept {
  if (!isSnapStable_) return;
  region_.UpdateIndex([this](EdgeIndex& index) {
    for (const Part& part : parts_) {
      if (part.stays) continue;
      if (part.heir != nullptr) {
        index.Exchange(part.listed, *part.heir, *part.listed->contour);
      } else {
        index.Remove(part.listed, *part.listed->contour);
      }
    }
    for (const ContourList::iterator added : added_) index.Add(added, *added->contour);
  });
}

}  // namespace zelvan
