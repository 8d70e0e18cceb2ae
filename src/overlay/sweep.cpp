// The sweep from stop to stop (sweep.h); what happens at a place is in places.cpp.
#include "overlay/sweep.h"

#include <utility>

#include "overlay/layer_drawer.h"
#include "overlay/region_drawer.h"

namespace zelvan::overlay {

template <class Drawer>
void Sweep<Drawer>::Run(EdgeSet& edges, Drawer& drawer, Search search) {
  Clear();
  input_ = &edges;
  drawer_ = &drawer;
  search_ = search;
  givenLines_ = edges.edges.size();
  slotOf_.assign(input_->edges.size(), kNever);
  isCrossed_.assign(input_->edges.size(), false);
  drawer.Clear(edges.edges.size());
  while (nextVertex_ < input_->vertices.size() || !events_.IsEmpty()) {
    ++stops_;
    const bool hasVertex = nextVertex_ < input_->vertices.size();
    if (hasVertex) {
      const GridPoint p = input_->vertices[nextVertex_].at;
      if (events_.IsEmpty() || !events_.Next().IsBefore(p)) {
        StopAt(p);
        continue;
      }
    }
    const GridPoint pixel = events_.Next().Pixel();
    if (events_.Next().second >= Event::kStop) {
      StopAt(pixel);
    } else {
      columns_.Enter(pixel.gx, status_, input_->edges);
      Cross(events_.Pop());
    }
  }
  columns_.Finish(status_, input_->edges);
}

template <class Drawer>
void Sweep<Drawer>::Clear() {
  nextVertex_ = 0;
  events_.Clear();
  status_.Clear();
  bundles_.Clear();
  draws_ = true;
  columns_.Clear();
  roundedCrossings_ = 0;
  cutLines_.clear();
  stops_ = 0;
}

// Where one edge ends, one starts and nothing else is, the second takes the place of the first.
// @return whether it was so; else nothing has changed
template <class Drawer>
bool Sweep<Drawer>::GoOn(GridPoint p) {
  if (nextVertex_ == input_->vertices.size() || events_.IsAt(p)) return false;
  const Vertex& v = input_->vertices[nextVertex_];
  if (v.at != p) return false;
  const std::size_t after = nextVertex_ + 1;
  if (after < input_->vertices.size() && input_->vertices[after].at == p) return false;
  const int out = v.far[0] < p ? 1 : 0;
  if (!(v.far[1 - out] < p && p < v.far[out])) return false;
  const std::uint32_t ending = v.edge[1 - out];
  const std::uint32_t starting = v.edge[out];
  const Slot slot = slotOf_[ending];
  if (slot >= kGone) return false;
  ActiveEdge& e = status_[slot];
  if (e.members != kNone) return false;
  const Slot below = status_.Below(slot);
  const Slot above = status_.Above(slot);
  if (search_ == Search::kPixels) {
    bool isNear = false;
    for (const Slot next : {below, above}) {
      if (next == Status::kEnd) continue;
      const std::int64_t side = SideOf(status_[next], p);
      if (side == 0) return false;
      isNear = isNear || HotColumns::IsNear(status_[next], side);
    }
    if (isNear) columns_.MarkTight();
    columns_.AddTurn(v);
  }
  const GridPoint far = v.far[out];
  if (draws_ && e.piece != kNone && overlay::SideOf(e.low, p, far) != 0) drawer_->Turn(e, p);
  e.low = p;
  e.high = far;
  e.line = starting;
  slotOf_[ending] = kGone;
  slotOf_[starting] = slot;
  nextVertex_ = after;
  if (search_ == Search::kNothing) return true;
  CheckPair(below, slot);
  CheckPair(slot, above);
  return true;
}

template <class Drawer>
void Sweep<Drawer>::PutIn() {
  Slot under = below_;
  for (std::size_t i = 0; i < departing_.size(); ++i) {
    const Slot slot = i < through_.size() ? through_[i] : status_.InsertAbove(under);
    status_[slot] = departing_[i];
    slotOf_[departing_[i].line] = slot;
    under = slot;
  }
  for (std::size_t i = departing_.size(); i < through_.size(); ++i) status_.Erase(through_[i]);
  if (search_ == Search::kNothing) return;
  if (departing_.empty()) {
    CheckPair(below_, above_);
  } else {
    CheckPair(below_, status_.Above(below_));
    CheckPair(under, above_);
  }
}

// Lines that cross off the grid change places. A pair that is not in this order any more has
// been dealt with.
template <class Drawer>
void Sweep<Drawer>::Cross(const Event& event) {
  const Slot below = slotOf_[event.first];
  const Slot above = slotOf_[event.second];
  if (below >= kGone || above >= kGone || status_.Above(below) != above) return;
  draws_ = false;
  const GridPoint pixel = event.Pixel();
  ++roundedCrossings_;
  isCrossed_[event.first] = true;
  isCrossed_[event.second] = true;
  columns_.MarkTight();
  columns_.AddPixel(pixel.gy);
  columns_.AddLine(event.first);
  columns_.AddLine(event.second);
  std::swap(status_[below], status_[above]);
  slotOf_[event.first] = above;
  slotOf_[event.second] = below;
  CheckPair(status_.Below(below), below);
  CheckPair(above, status_.Above(above));
}

// Queues the crossing of two neighbours where there is one to come. Of the two the one that
// ends first tells: its end lies beyond the other.
template <class Drawer>
void Sweep<Drawer>::CheckPair(Slot below, Slot above) {
  if (below == Status::kEnd || above == Status::kEnd) return;
  const ActiveEdge& a = status_[below];
  const ActiveEdge& b = status_[above];
  const bool cross = a.high < b.high ? SideOf(b, a.high) > 0 : SideOf(a, b.high) < 0;
  if (!cross) return;
  const Crossing at = CrossingOf(a.low, a.high, b.low, b.high);
  if (at.sideX == 0 && at.sideY == 0) {
    events_.Push(at, a.line, Event::kStop);
  } else {
    events_.Push(at, a.line, b.line);
  }
}

// Every drawer that there is.
template class Sweep<RegionDrawer>;
template class Sweep<LayerDrawer>;

}  // namespace zelvan::overlay
