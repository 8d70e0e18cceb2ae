// The sweep over places (sweep.h).
#include "overlay/sweep.h"

#include <algorithm>
#include <utility>

namespace zelvan::overlay {

namespace {

// A coordinate with its side in 34 bits.
std::uint64_t KeyOf(std::int32_t value, std::int32_t side) noexcept {
  const auto v = static_cast<std::uint64_t>(value + budget::kCoordinate);
  return v << 2 | static_cast<std::uint64_t>(side + 1);
}

std::int32_t ValueOf(std::uint64_t key) noexcept {
  return static_cast<std::int32_t>(static_cast<std::int64_t>(key >> 2) - budget::kCoordinate);
}

std::int64_t SideOf(const ActiveEdge& e, GridPoint p) noexcept {
  return overlay::SideOf(e.low, e.high, p);
}

}  // namespace

bool Sweep::IsLater(const Event& a, const Event& b) noexcept {
  return a.column != b.column ? a.column > b.column : a.row > b.row;
}

void Sweep::Push(const Crossing& at, std::uint32_t first, std::uint32_t second) {
  events_.push_back({KeyOf(at.pixel.gx, at.sideX), KeyOf(at.pixel.gy, at.sideY), first, second});
  std::push_heap(events_.begin(), events_.end(), IsLater);
}

Sweep::Event Sweep::PopEvent() {
  std::pop_heap(events_.begin(), events_.end(), IsLater);
  const Event event = events_.back();
  events_.pop_back();
  return event;
}

bool Sweep::EventComesFirst() const noexcept {
  if (events_.empty()) return false;
  if (nextVertex_ == input_->vertices.size()) return true;
  const Event& e = events_.front();
  const GridPoint p = input_->vertices[nextVertex_].at;
  const std::uint64_t column = KeyOf(p.gx, 0);
  return e.column != column ? e.column < column : e.row < KeyOf(p.gy, 0);
}

bool Sweep::EventIsAt(GridPoint p) const noexcept {
  return !events_.empty() && events_.front().column == KeyOf(p.gx, 0) &&
         events_.front().row == KeyOf(p.gy, 0);
}

void Sweep::Clear() {
  nextVertex_ = 0;
  events_.clear();
  status_.Clear();
  bundles_.Clear();
  boundary_.Clear();
  draws_ = true;
  columns_.Clear();
  crossed_.clear();
  cutLines_.clear();
  stops_ = 0;
}

std::size_t Sweep::Bytes() const noexcept {
  return BytesOf(events_) + status_.Bytes() + bundles_.Bytes() + BytesOf(slotOf_) +
         boundary_.Bytes() + columns_.Bytes() + BytesOf(crossed_);
}

void Sweep::Run(EdgeSet& edges, const Selection& selection, Search search) {
  Clear();
  input_ = &edges;
  selection_ = selection;
  search_ = search;
  givenLines_ = edges.edges.size();
  slotOf_.assign(input_->edges.size(), kNever);
  boundary_.Reserve(input_->edges.size());
  while (nextVertex_ < input_->vertices.size() || !events_.empty()) {
    ++stops_;
    if (!EventComesFirst()) {
      StopAt(input_->vertices[nextVertex_].at);
      continue;
    }
    const Event& event = events_.front();
    const GridPoint p{ValueOf(event.column), ValueOf(event.row)};
    if (event.second >= kStop) {
      StopAt(p);
    } else {
      columns_.Enter(p.gx, status_, input_->edges);
      Cross(PopEvent());
    }
  }
  columns_.Finish(status_, input_->edges);
}

void Sweep::StopAt(GridPoint p) {
  if (search_ == Search::kPixels) columns_.Enter(p.gx, status_, input_->edges);
  if (GoOn(p)) return;
  leaving_.clear();
  CollectStarts(p);
  CollectThrough(p);
  TakeOut(p);
  SortLeaving(p);
  if (draws_) DrawBoundary(p);
  if (search_ == Search::kPixels) NotePixel(p);
  PutIn();
}

// Where one edge ends, one starts and nothing else is, the second takes the place of the first.
// @return whether it was so; else nothing has changed
bool Sweep::GoOn(GridPoint p) {
  if (nextVertex_ == input_->vertices.size() || EventIsAt(p)) return false;
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
  if (draws_ && e.piece != kNone && overlay::SideOf(e.low, p, far) != 0) {
    e.piece = boundary_.GoOn(e.piece, p);
  }
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

// What starts at p: edges, and bundles that were gone.
void Sweep::CollectStarts(GridPoint p) {
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
  while (EventIsAt(p)) {
    const Event event = PopEvent();
    if (event.second == kStop) {
      if (slotOf_[event.first] < kGone) below_ = slotOf_[event.first];
      continue;
    }
    Windings gone;
    const std::uint32_t rest = bundles_.DropEnding(event.first, p, gone);
    if (rest != kNone) {
      leaving_.push_back({bundles_.NearestEnd(rest), gone, kNone, rest});  // all summed to 0
    }
  }
}

// The active edges that end at p or go through, which are neighbours, and those next to them.
// One of them is in below_ where one is known.
void Sweep::CollectThrough(GridPoint p) {
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
void Sweep::TakeOut(GridPoint p) {
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
      const std::uint32_t rest = bundles_.DropEnding(e.members, p, step);
      if (rest != kNone) leaving_.push_back({bundles_.NearestEnd(rest), step, kNone, rest});
    }
  }
}

// An edge from `low` that others cancelled ends at p, and cuts the line that runs on it.
void Sweep::CutLineAlong(GridPoint low, GridPoint p) {
  const auto isBelow = [&](const ActiveEdge& e) { return overlay::SideOf(e.low, p, low) > 0; };
  const auto along = std::partition_point(arriving_.begin(), arriving_.end(), isBelow);
  if (along != arriving_.end() && overlay::SideOf(along->low, p, low) == 0) {
    CutLine(along->line, p);
  }
}

// By slope, what runs on each other as one.
void Sweep::SortLeaving(GridPoint p) {
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
void Sweep::Bundle(std::vector<Leaving>::iterator begin, std::vector<Leaving>::iterator end,
                   GridPoint p) {
  const auto add = [&](const Leaving& e, std::uint32_t line) {
    departing_.push_back({p, e.high, {}, e.step, line, e.members, kNone, kNone});
  };
  if (end - begin == 1 && begin->line != kNone) return add(*begin, begin->line);
  Leaving sum = *begin;
  bool endTogether = true;
  for (auto e = begin; e != end; ++e) {
    if (e->line != kNone && input_->edges[e->line].low < p) CutLine(e->line, p);
    if (e == begin) continue;
    sum.step += e->step;
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
  if (sum.members != kNone) Push({sum.high, 0, 0}, sum.members, kReturns);
}

void Sweep::CutLine(std::uint32_t line, GridPoint p) {
  input_->edges[line].high = p;
  cutLines_.push_back(line);
}

std::uint32_t Sweep::AddLine(GridPoint low, GridPoint high, Windings step) {
  input_->edges.push_back({low, high, step});
  slotOf_.push_back(kNever);
  return static_cast<std::uint32_t>(input_->edges.size() - 1);
}

// Gives what leaves p its winding numbers, and pieces where it bounds the region.
void Sweep::DrawBoundary(GridPoint p) {
  Windings winding;
  std::uint32_t face = kNone;
  if (below_ != Status::kEnd) {
    const ActiveEdge& e = status_[below_];
    winding = e.below + e.step;
    face = e.face;
  }
  const bool insideBelow = selection_.Holds(winding);
  const std::uint32_t faceAbove = arriving_.empty() ? face : arriving_.back().face;
  leftPieces_.clear();
  rightPieces_.clear();
  const ActiveEdge* bound = nullptr;  // the last that bounds the region, left of p
  for (const ActiveEdge& e : arriving_) {
    if (e.piece == kNone) continue;
    bound = &e;
    leftPieces_.push_back(e.piece);
  }
  std::size_t bounds = 0;  // edges that do so right of p
  bool inside = insideBelow;
  ActiveEdge* last = nullptr;
  for (ActiveEdge& e : departing_) {
    e.below = winding;
    winding += e.step;
    const bool above = selection_.Holds(winding);
    if (above != inside) {
      ++bounds;
      last = &e;
      e.piece = 0;
    }
    inside = above;
  }
  const bool goesStraightOn =
      bounds == 1 && leftPieces_.size() == 1 && overlay::SideOf(bound->low, p, last->high) == 0;
  inside = insideBelow;
  for (ActiveEdge& e : departing_) {
    if (e.piece != kNone) {
      inside = !inside;
      if (goesStraightOn) {
        e.piece = bound->piece;
        if (inside) face = bound->face;
      } else {
        e.piece = boundary_.Add(inside);
        rightPieces_.push_back(e.piece);
        if (inside) face = e.piece;
      }
    }
    e.face = face;
  }
  if (inside && face != faceAbove) boundary_.Unite(face, faceAbove);
  if (!goesStraightOn) boundary_.Connect(p, leftPieces_, rightPieces_, insideBelow);
}

// The place is a hot pixel unless one line alone goes through.
void Sweep::NotePixel(GridPoint p) {
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

void Sweep::PutIn() {
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
void Sweep::Cross(const Event& event) {
  const Slot below = slotOf_[event.first];
  const Slot above = slotOf_[event.second];
  if (below >= kGone || above >= kGone || status_.Above(below) != above) return;
  draws_ = false;
  const GridPoint pixel{ValueOf(event.column), ValueOf(event.row)};
  crossed_.push_back({event.first, event.second, pixel});
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
void Sweep::CheckPair(Slot below, Slot above) {
  if (below == Status::kEnd || above == Status::kEnd) return;
  const ActiveEdge& a = status_[below];
  const ActiveEdge& b = status_[above];
  const bool cross = a.high < b.high ? SideOf(b, a.high) > 0 : SideOf(a, b.high) < 0;
  if (!cross) return;
  const Crossing at = CrossingOf(a.low, a.high, b.low, b.high);
  if (at.sideX == 0 && at.sideY == 0) {
    Push(at, a.line, kStop);
  } else {
    Push(at, a.line, b.line);
  }
}

}  // namespace zelvan::overlay
