// The index of a region (region_index.h).
#include "boolean/region_index.h"

#include <algorithm>
#include <functional>

namespace zelvan {

namespace {

constexpr std::uint64_t kGap = std::uint64_t{1} << 32;  // between ranks, at first

}  // namespace

RegionIndex::RegionIndex(OwnedRing& region, std::size_t more)
    : region_(region), edges_(region.first, more) {
  ForEachArea(region_.first, [&](Area* area) { RankContours(area); });
  RankAreas();
}

std::vector<Contour*> RegionIndex::Near(const GridBox& box) const {
  struct Ranked {
    std::uint64_t area;
    std::uint64_t rank;
    Contour* contour;
  };
  std::vector<const Contour*> met;
  edges_.ForEachNear(box, [&](const Contour* contour) { met.push_back(contour); });
  std::sort(met.begin(), met.end(), std::less<const Contour*>());
  met.erase(std::unique(met.begin(), met.end()), met.end());
  std::vector<Ranked> ranked;
  ranked.reserve(met.size());
  for (const Contour* contour : met) {
    const Place& place = PlaceOf(contour);
    Contour* const own = place.before != nullptr ? place.before->next : place.area->contours;
    ranked.push_back({areas_.at(place.area).rank, place.rank, own});
  }
  std::sort(ranked.begin(), ranked.end(), [](const Ranked& a, const Ranked& b) {
    return a.area != b.area ? a.area < b.area : a.rank < b.rank;
  });
  std::vector<Contour*> contours;
  contours.reserve(ranked.size());
  for (const Ranked& one : ranked) contours.push_back(one.contour);
  return contours;
}

Area* RegionIndex::AreaAt(GridPoint p) const {
  const Contour* contour = edges_.FaceAt(p);
  return contour != nullptr ? PlaceOf(contour).area : nullptr;
}

void RegionIndex::Append(OwnedContour contour, Area* area) {
  edges_.Add(contour.get());
  if (area != nullptr) {
    Contour*& last = areas_.at(area).last;
    places_[contour.get()] = {area, last, PlaceOf(last).rank + kGap};
    last = last->next = contour.release();
    return;
  }
  OwnedRing one(NewArea());
  places_[contour.get()] = {one.first, nullptr, 0};
  areas_[one.first] = {contour.get(), areas_.at(region_.first->prev).rank + kGap};
  one.first->contours = contour.release();
  AppendArea(region_.first, one.release());
}

void RegionIndex::Exchange(const std::vector<Change>& changes) {
  for (const Change& change : changes) {
    if (change.contour != nullptr) {
      edges_.Exchange(change.contour, change.old.get());
    } else {
      edges_.Remove(change.old.get());
      places_.erase(change.old.get());
    }
  }
}

void RegionIndex::LinkedBehind(Contour* before, Contour* contour, Area* area) {
  const auto [at, isNew] = places_.insert({contour, {area, before, 0}});
  at->second.before = before;
  if (!isNew || before == nullptr) return;
  const Contour* next = contour->next;
  while (next != nullptr && !places_.contains(next)) next = next->next;
  const std::uint64_t low = PlaceOf(before).rank;
  const std::uint64_t high = next != nullptr ? PlaceOf(next).rank : low + 2 * kGap;
  at->second.rank = low + (high - low) / 2;
  if (high - low < 2) RankContours(area);
}

void RegionIndex::Relinked(Area* area) {
  RankContours(area);
  if (area != region_.first && areas_.at(area).rank == 0) RankArea(area);
}

// Between its neighbours, of which those before it have their ranks.
void RegionIndex::RankArea(const Area* area) {
  const Area* next = area->next;
  while (next != region_.first && !areas_.contains(next)) next = next->next;
  const std::uint64_t low = areas_.at(area->prev).rank;
  const std::uint64_t high = next != region_.first ? areas_.at(next).rank : low + 2 * kGap;
  areas_.at(area).rank = low + (high - low) / 2;
  if (high - low < 2) RankAreas();
}

void RegionIndex::RankAreas() {
  std::uint64_t rank = 0;
  ForEachArea(region_.first, [&](const Area* area) { areas_[area].rank = rank += kGap; });
}

void RegionIndex::RankContours(Area* area) {
  Contour* before = nullptr;
  std::uint64_t rank = 0;
  for (Contour* c = area->contours; c != nullptr; c = c->next, rank += kGap) {
    places_[c] = {area, before, rank};
    before = c;
  }
  areas_[area].last = before;
}

}  // namespace zelvan
