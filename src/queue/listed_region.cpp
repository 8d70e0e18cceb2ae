// The region of a queue (listed_region.h).
#include "queue/listed_region.h"

#include <algorithm>
#include <utility>

#include "polygon/grid_predicates.h"

namespace zelvan {

namespace {

// So many looks at all contours cost about what an index does.
constexpr int kMostLooksAtAll = 128;

bool AnyEdgeMeets(const Contour* contour, const GridBox& box) noexcept {
  if (!Overlap(contour->gridBox, box)) return false;
  const VertexNode* v = contour->head;
  do {
    if (EdgeMeetsBox(v->grid, v->next->grid, box)) return true;
    v = v->next;
  } while (v != contour->head);
  return false;
}

}  // namespace

ListedRegion::ListedRegion(OwnedRing& ring, std::size_t edgesToCome) : edgesToCome_(edgesToCome) {
  ForEachArea(ring.first, [&](const Area* area) {
    AreaList one(1);
    for (const Contour* c = area->contours; c != nullptr; c = c->next) {
      ContourList contour(1);
      contour.front().area = one.begin();
      ContourList& contours = one.front().contours;
      MoveRanked(contours, contours.end(), contour);
    }
    MoveRanked(areas_, areas_.end(), one);
  });
  auto listed = areas_.begin();
  ForEachArea(ring.first, [&](Area* area) {
    for (ListedContour& each : (listed++)->contours) {
      each.contour.reset(area->contours);
      area->contours = std::exchange(each.contour->next, nullptr);
    }
  });
  FreeAreas(ring.first);
}

OwnedRing ListedRegion::ToRing() {
  OwnedRing ring;
  for (std::size_t n = areas_.size(); n > 0; --n) AppendArea(ring.first, NewArea());
  Area* area = ring.first;
  for (ListedArea& listed : areas_) {
    Contour** end = &area->contours;
    for (ListedContour& each : listed.contours) {
      *end = each.contour.release();
      end = &(*end)->next;
    }
    area = area->next;
  }
  areas_.clear();
  return ring;
}

std::vector<ContourList::iterator> ListedRegion::Near(const GridBox& box) {
  std::vector<ContourList::iterator> near;
  if (!index_ && ++looksAtAll_ < kMostLooksAtAll) {
    LookAtAll(box, near);
    return near;
  }
  MakeIndex();
  index_->ForEachNear(box, [&](ContourList::iterator contour) { near.push_back(contour); });
  std::sort(near.begin(), near.end(), StandsBefore);
  DropRepeats(near);
  return near;
}

void ListedRegion::LookAtAll(const GridBox& box, std::vector<ContourList::iterator>& near) {
  for (ListedArea& area : areas_) {
    if (!Overlap(area.contours.front().contour->gridBox, box)) continue;
    for (auto each = area.contours.begin(); each != area.contours.end(); ++each) {
      if (AnyEdgeMeets(each->contour.get(), box)) near.push_back(each);
    }
  }
}

void ListedRegion::MakeIndex() {
  if (index_) return;
  std::vector<ContourList::iterator> contours;
  for (ListedArea& area : areas_) {
    for (auto each = area.contours.begin(); each != area.contours.end(); ++each) {
      contours.push_back(each);
    }
  }
  index_.emplace(contours, edgesToCome_);
}

AreaPlace ListedRegion::AreaAt(GridPoint p) {
  MakeIndex();
  const ContourList::iterator* const contour = index_->FaceAt(p);
  return contour != nullptr ? (*contour)->area : areas_.end();
}

void ListedRegion::Append(OwnedContour contour, AreaPlace area) {
  AreaList newArea(area == areas_.end() ? 1 : 0);
  ContourList one(1);
  one.front().area = newArea.empty() ? area : newArea.begin();
  one.front().contour = std::move(contour);
  UpdateIndex([&](EdgeIndex& index) { index.Add(one.begin(), *one.front().contour); });
  ContourList& contours = one.front().area->contours;
  MoveRanked(contours, contours.end(), one);
  MoveRanked(areas_, areas_.end(), newArea);
}

}  // namespace zelvan
