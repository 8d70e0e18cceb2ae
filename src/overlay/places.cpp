// What happens at a place of the sweep: edges end, go through and start (sweep.h).
#include <algorithm>
#include <utility>

#include "overlay/layer_drawer.h"
#include "overlay/region_drawer.h"
#include "overlay/sweep.h"

namespace zelvan::overlay {

template <class Drawer>
void Sweep<Drawer>::StopAt(GridPoint p) {
  if (search_ == Search::kPixels) columns_.Enter(p.gx, status_, input_->edges);
  if (GoOn(p)) return;
  leaving_.clear();
  CollectStarts(p);
  CollectThrough(p);
  TakeOut(p);
  SortLeaving(p);
  if (draws_) {
    drawer_->Draw(p, below_ != Status::kEnd ? &status_[below_] : nullptr, arriving_, departing_);
  }
  if (search_ == Search::kPixels) NotePixel(p);
  PutIn();
}

// What starts at p: edges, and bundles that were gone.
template <class Drawer>
void Sweep<Drawer>::CollectStarts(GridPoint p) {
  below_ = kNone;
  unseen_.clear();
  for (; nextVertex_ < input_->vertices.size(); ++nextVertex_) {
    const Vertex& v = input_->vertices[nextVertex_];
    if (v.at != p) break;
    for (int i = 0; i < 2; ++i) {
      if (p < v.far[i]) {
        leaving_.push_back({v.far[i], input_->edges[v.edge[i]].step, v.edge[i], kNone});
      } else if (v.far[i] < p) {
        const Slot slot = slotOf_[v.edge[i]];
        if (slot < kGone) below_ = slot;
        if (slot == kNever) unseen_.push_back(v.far[i]);
      }
    }
  }
  while (events_.IsAt(p)) {
    const Event event = events_.Pop();
    if (event.second == Event::kStop) {
      if (slotOf_[event.first] < kGone) below_ = slotOf_[event.first];
      continue;
    }
    Windings gone;
    const std::uint32_t rest = bundles_.DropEnding(event.first, p, gone, *drawer_);
    if (rest != kNone) {
      leaving_.push_back({bundles_.NearestEnd(rest), gone, kNone, rest});  // all summed to none
    }
  }
}

// The active edges that end at p or go through, which are neighbours, and those next to them.
// One of them is in below_ where one is known.
template <class Drawer>
void Sweep<Drawer>::CollectThrough(GridPoint p) {
  // Pieces do not go through places.
  const auto isThrough = [&](Slot slot) {
    if (slot == Status::kEnd) return false;
    const ActiveEdge& e = status_[slot];
    return search_ == Search::kNothing ? e.high == p : SideOf(e, p) == 0;
  };
  through_.clear();
  Slot first = below_;
  if (first == kNone) {
    first = status_.FirstNot([p](const ActiveEdge& e) { return SideOf(e, p) > 0; });
  } else {
    while (isThrough(status_.Below(first))) first = status_.Below(first);
  }
  below_ = status_.Below(first);
  above_ = first;
  while (isThrough(above_)) {
    through_.push_back(above_);
    above_ = status_.Above(above_);
  }
}

// Their slots stay for what leaves p.
template <class Drawer>
void Sweep<Drawer>::TakeOut(GridPoint p) {
  arriving_.clear();
  for (const Slot slot : through_) arriving_.push_back(status_[slot]);
  for (const GridPoint low : unseen_) CutLineAlong(low, p);
  for (const ActiveEdge& e : arriving_) {
    slotOf_[e.line] = kGone;
    if (e.high != p) {
      const bool isCut = input_->edges[e.line].high == p;
      leaving_.push_back({e.high, e.step, isCut ? kNone : e.line, e.members});
    } else if (e.members != kNone) {
      Windings step = e.step;
      const std::uint32_t rest = bundles_.DropEnding(e.members, p, step, *drawer_);
      if (rest != kNone) leaving_.push_back({bundles_.NearestEnd(rest), step, kNone, rest});
    }
  }
}

// An edge from `low` that others cancelled ends at p, and cuts the line that runs on it.
template <class Drawer>
void Sweep<Drawer>::CutLineAlong(GridPoint low, GridPoint p) {
  const auto isBelow = [&](const ActiveEdge& e) { return overlay::SideOf(e.low, p, low) > 0; };
  const auto along = std::partition_point(arriving_.begin(), arriving_.end(), isBelow);
  if (along != arriving_.end() && overlay::SideOf(along->low, p, low) == 0) {
    CutLine(along->line, p);
  }
}

// By slope, what runs on each other as one.
template <class Drawer>
void Sweep<Drawer>::SortLeaving(GridPoint p) {
  departing_.clear();
  const auto isBelow = [p](const Leaving& a, const Leaving& b) {
    return overlay::SideOf(p, a.high, b.high) > 0;
  };
  if (leaving_.size() == 2) {
    if (isBelow(leaving_[1], leaving_[0])) std::swap(leaving_[0], leaving_[1]);
  } else if (leaving_.size() > 2) {
    std::sort(leaving_.begin(), leaving_.end(), isBelow);
  }
  for (auto begin = leaving_.begin(); begin != leaving_.end();) {
    auto end = begin + 1;
    while (end != leaving_.end() && overlay::SideOf(p, begin->high, end->high) == 0) ++end;
    Bundle(begin, end, p);
    begin = end;
  }
}

// Makes one active edge of those in a range, unless they cancel.
template <class Drawer>
void Sweep<Drawer>::Bundle(typename std::vector<Leaving>::iterator begin,
                           typename std::vector<Leaving>::iterator end, GridPoint p) {
  const auto add = [&](const Leaving& e, std::uint32_t line) {
    departing_.push_back({p, e.high, {}, e.step, line, e.members, kNone, kNone});
  };
  if (end - begin == 1 && begin->line != kNone) return add(*begin, begin->line);
  Leaving sum = *begin;
  bool endTogether = true;
  for (auto e = begin; e != end; ++e) {
    if (e->line != kNone && input_->edges[e->line].low < p) CutLine(e->line, p);
    if (e == begin) continue;
    sum.step = drawer_->Sum(sum.step, e->step);
    endTogether = endTogether && e->high == sum.high && e->members == kNone;
  }
  if (end - begin > 1 && (!endTogether || begin->members != kNone)) {
    sum.members = kNone;
    for (auto e = begin; e != end; ++e) {
      if (e->members == kNone) e->members = bundles_.Make(e->high, e->step);
      sum.members = bundles_.Join(sum.members, e->members);
    }
    sum.high = bundles_.NearestEnd(sum.members);
  }
  if (sum.members != kNone && bundles_.IsSingle(sum.members)) sum.members = kNone;
  if (sum.step != Windings{}) return add(sum, AddLine(p, sum.high, sum.step));
  if (sum.members != kNone) events_.Push({sum.high, 0, 0}, sum.members, Event::kReturns);
}

template <class Drawer>
void Sweep<Drawer>::CutLine(std::uint32_t line, GridPoint p) {
  input_->edges[line].high = p;
  cutLines_.push_back(line);
}

template <class Drawer>
std::uint32_t Sweep<Drawer>::AddLine(GridPoint low, GridPoint high, Windings step) {
  input_->edges.push_back({low, high, step});
  slotOf_.push_back(kNever);
  isCrossed_.push_back(false);
  return static_cast<std::uint32_t>(input_->edges.size() - 1);
}

// The place is a hot pixel unless one line alone goes through.
template <class Drawer>
void Sweep<Drawer>::NotePixel(GridPoint p) {
  const bool isOneLine =
      arriving_.size() == 1 && departing_.size() == 1 && arriving_[0].line == departing_[0].line;
  if (isOneLine || (arriving_.empty() && departing_.empty())) return;
  columns_.AddPixel(p.gy);
  for (const Slot slot : {below_, above_}) {
    if (slot == Status::kEnd) continue;
    const ActiveEdge& e = status_[slot];
    if (HotColumns::IsNear(e, SideOf(e, p))) columns_.MarkTight();
  }
  for (const ActiveEdge& e : arriving_) {
    columns_.AddLine(e.line);
    columns_.AddArm(e.low);
  }
  for (const ActiveEdge& e : departing_) {
    if (input_->edges[e.line].low < p) {
      columns_.AddPass(e.line, p);  // its line and arm are noted
    } else {
      columns_.AddLine(e.line);
      columns_.AddArm(e.high);
    }
  }
  columns_.CloseVertex(p);
}

template void Sweep<RegionDrawer>::StopAt(GridPoint p);
template void Sweep<LayerDrawer>::StopAt(GridPoint p);

}  // namespace zelvan::overlay
