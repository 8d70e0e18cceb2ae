// Operations near the operand (near_operation.h).
#include "queue/near_operation.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "boolean/assembly.h"
#include "boolean/boolean.h"
#include "boolean/op_rules.h"
#include "boolean/operand.h"
#include "polygon/contour.h"

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

// Adds what an operation takes of one contour, in the order in which it is met: outer
// boundaries, then holes.
void Collect(Contour* contour, BoolOp op, AreaPlace area, ContourList& made) {
  OwnedRing areas;
  PendingHoles holes;
  CollectContour(contour, areas, holes, op);
  ForEachArea(areas.first, [&](Area* one) {
    made.push_back({OwnedContour(std::exchange(one->contours, nullptr)), area});
  });
  for (OwnedContour& hole : holes) made.push_back({std::move(hole), area});
}

}  // namespace

NearOperation::NearOperation(ListedRegion& region, std::vector<ContourList::iterator> near,
                             const GridBox& box, BoolOp op)
    : region_(region), op_(op), box_(box), near_(std::move(near)) {
  for (const ContourList::iterator listed : near_) {
    parts_.push_back({listed});
    if (areas_.empty() || areas_.back() != listed->area) areas_.push_back(listed->area);
  }
  if (!parts_.empty()) return;
  const AreaPlace area = region_.AreaAt(box_.min);
  if (area != region_.Areas().end()) areas_.push_back(area);
}

// Do contours that do not take part have the region inside, around all that takes part? No
// contour that takes part is around the one that reaches farthest to the left, except one that
// reaches as far. So the face to the left of that contour decides.
bool NearOperation::IsOperandInside() const noexcept {
  if (parts_.empty()) return !areas_.empty();
  const auto size = [](const Part& part) {
    return std::abs(TwiceArea(part.listed->contour->head));
  };
  const auto isFarther = [&](const Part& a, const Part& b) {
    const GridBox& boxA = a.listed->contour->gridBox;
    const GridBox& boxB = b.listed->contour->gridBox;
    if (boxA.min.gx != boxB.min.gx) return boxA.min.gx < boxB.min.gx;
    if (!Contains(boxA, boxB)) return false;
    return !Contains(boxB, boxA) || size(a) > size(b);
  };
  const auto farthest = std::min_element(parts_.begin(), parts_.end(), isFarther);
  return (farthest->listed->contour->flags & CONTOUR_CCW) == 0;
}

bool NearOperation::Prepare(OwnedRing& operand) {
  std::swap(operand_.first, operand.first);
  const OwnedRing copies(NewArea());
  if (!CopyParts(copies.first)) return false;
  bent_.Note(copies.first, operand_.first);
  LabelCopies(copies.first, operand_.first, records_);
  bent_.Find(copies.first, operand_.first, op_);
  Assemble(copies.first);
  if (!BendsAlike() || !KeepsGrid()) return false;
  isInPlace_ = IsInPlace();
  if (!isInPlace_) ListContours();
  if (!PlaceHoles()) return false;
  MakeRoom();
  return true;
}

// Copies the contours that take part. A frame around them and the operand stands for the
// contours around all of that, if their number is odd; it comes behind all others.
// @return whether there is room for the frame
bool NearOperation::CopyParts(Area* copies) const {
  GridBox frame = box_;
  Contour** end = &copies->contours;
  for (const ContourList::iterator listed : near_) {
    *end = CopyContour(listed->contour.get()).release();
    end = &(*end)->next;
    GrowBox(frame, listed->contour->gridBox);
  }
  if (!IsOperandInside()) return true;
  frame = Widened(frame);
  if (!Contains(kWholeGrid, frame)) return false;
  const GridPoint corners[] = {
      frame.min, {frame.max.gx, frame.min.gy}, frame.max, {frame.min.gx, frame.max.gy}};
  *end = NewContour(corners).release();
  return true;
}

// Finds what becomes of each contour that takes part. Those of the region that meet nothing,
// and those that come out as they were, stay.
void NearOperation::Assemble(const Area* copies) {
  Contour* copy = copies->contours;
  for (Part& part : parts_) {
    if (LabelOf(copy) != CONTOUR_CROSSED) {
      part.stays = ContourRule(op_, copy).has_value();
    } else {
      const Contour* const old = part.listed->contour.get();
      ContourList& made = part.made;
      Collect(copy, op_, part.listed->area, made);
      part.stays = made.size() == 1 && AreSame(old, made.front().contour.get());
      if (part.stays) made.clear();
      const auto heir = std::find_if(made.begin(), made.end(), [&](const ListedContour& one) {
        return one.contour->flags == old->flags;
      });
      if (heir != made.end()) {
        part.heir = std::move(heir->contour);
        made.erase(heir);
      }
    }
    copy = copy->next;
  }
  ForEachContour(operand_.first, [&](Contour* contour) {
    Collect(contour, op_, region_.Areas().end(), fromOperand_);
  });
}

// Tells whether the region is snap-stable again.
// @return whether the operation on the whole region would bend all edges alike
bool NearOperation::BendsAlike() {
  if (!bent_.Any()) return true;
  const auto look = [&](const Contour* contour) {
    isSnapStable_ = isSnapStable_ && bent_.KeepSnapStable(contour);
  };
  ForEachOutcome(look);
  bool alike = true;
  for (const ContourList::iterator listed : region_.Near(bent_.Box())) {
    if (std::binary_search(near_.begin(), near_.end(), listed, StandsBefore)) continue;
    look(listed->contour.get());
    alike = alike && !bent_.MeetAnyPixel(listed->contour.get());
  }
  return alike;
}

}  // namespace zelvan
