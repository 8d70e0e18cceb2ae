// The index of edges (edge_index.h).
#include "queue/edge_index.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "polygon/area.h"
#include "queue/listed_region.h"

namespace zelvan {

namespace {

std::int64_t FloorDiv(std::int64_t a, std::int64_t b) noexcept {
  const std::int64_t q = a / b;
  return q - (a % b != 0 && (a < 0) != (b < 0) ? 1 : 0);
}

// Sign of the place of the point half a step above p with respect to an edge that
// passes its height: positive to the right, in x, of it.
std::int64_t RightOf(GridPoint p, GridPoint from, GridPoint to) noexcept {
  const std::int64_t side = std::int64_t{to.gx - from.gx} * (2 * (p.gy - from.gy) + 1) -
                            2 * std::int64_t{p.gx - from.gx} * (to.gy - from.gy);
  return to.gy > from.gy ? -side : side;
}

// Of two edges that pass one height and do not cross: does a pass right of b?
bool IsRightOf(GridPoint a0, GridPoint a1, GridPoint b0, GridPoint b1) noexcept {
  if (a0.gy > a1.gy) std::swap(a0, a1);
  if (b0.gy > b1.gy) std::swap(b0, b1);
  std::int64_t right = a0.gy >= b0.gy ? -Cross(b0, b1, a0) : Cross(a0, a1, b0);
  if (right == 0) right = a1.gy <= b1.gy ? -Cross(b0, b1, a1) : Cross(a0, a1, b1);
  return right > 0;
}

}  // namespace

EdgeIndex::EdgeIndex(std::span<const Owner> contours, std::size_t more) {
  std::size_t edges = more;
  double length = 0;  // of all edges, along both axes, in widths of the grid
  for (const Owner owner : contours) {
    ForEachVertex(owner->contour.get(), [&](const VertexNode* v) {
      const GridPoint edge = Difference(v->next->grid, v->grid);
      length += static_cast<double>(std::abs(edge.gx) + std::abs(edge.gy)) / GRID_MAX;
      ++edges;
    });
  }
  const auto expected = static_cast<double>(edges);
  while (side_ < 1024 && 4.0 * side_ * side_ <= expected && 2 * side_ * length <= 4 * expected) {
    side_ *= 2;
    --shift_;
  }
  first_.assign(static_cast<std::size_t>(side_) * static_cast<std::size_t>(side_), kNone);
  entries_.reserve(edges);
  for (const Owner owner : contours) Add(owner, *owner->contour);
}

void EdgeIndex::Add(Owner owner, const Contour& ring) {
  ForEachVertex(&ring, [&](const VertexNode* v) { AddEdge(v, owner); });
}

void EdgeIndex::Remove(Owner owner, const Contour& ring) noexcept {
  ForEachVertex(&ring, [&](const VertexNode* v) { RemoveEdge(v, owner); });
}

// What the rings have in common around their heads stays.
void EdgeIndex::Exchange(Owner owner, const Contour& old, const Contour& ring) {
  const VertexNode* v = ring.head;
  const VertexNode* w = old.head;
  const VertexNode* vEnd = v;
  const VertexNode* wEnd = w;
  if (v->grid == w->grid) {
    const auto isLast = [&] { return v->next == ring.head || w->next == old.head; };
    for (; !isLast() && v->next->grid == w->next->grid; w = w->next) v = v->next;
    while (vEnd->prev != v && wEnd->prev != w && vEnd->prev->grid == wEnd->prev->grid) {
      vEnd = vEnd->prev;
      wEnd = wEnd->prev;
    }
  }
  do {
    RemoveEdge(w, owner);
    w = w->next;
  } while (w != wEnd);
  do {
    AddEdge(v, owner);
    v = v->next;
  } while (v != vEnd);
}

// Goes left, bucket by bucket, to the nearest edge; p lies on the side of the edge's region or
// on the other one. An edge that is found before its own bucket waits until that is reached.
const EdgeIndex::Owner* EdgeIndex::FaceAt(GridPoint p) const noexcept {
  const Entry* nearest = nullptr;
  const std::int32_t row = BucketOf(p.gy);
  for (std::int32_t column = BucketOf(p.gx); column >= 0; --column) {
    for (std::uint32_t i = first_[At(column, row)]; i != kNone; i = entries_[i].next) {
      const Entry& e = entries_[i];
      if (PassesAbove(p.gy, e.from, e.to) && RightOf(p, e.from, e.to) > 0 &&
          (nearest == nullptr || IsRightOf(e.from, e.to, nearest->from, nearest->to))) {
        nearest = &e;
      }
    }
    const GridPoint border{(column << shift_) - GRID_OFFSET, p.gy};
    if (nearest != nullptr && RightOf(border, nearest->from, nearest->to) <= 0) break;
  }
  const bool inside = nearest != nullptr && nearest->to.gy < nearest->from.gy;
  return inside ? &nearest->owner : nullptr;
}

// A box may reach beyond the grid by a step.
std::int32_t EdgeIndex::BucketOf(std::int64_t coordinate) const noexcept {
  const auto bucket = static_cast<std::int32_t>((coordinate + GRID_OFFSET) >> shift_);
  return std::clamp(bucket, 0, side_ - 1);
}

std::size_t EdgeIndex::At(std::int32_t column, std::int32_t row) const noexcept {
  return static_cast<std::size_t>(row) * static_cast<std::size_t>(side_) +
         static_cast<std::size_t>(column);
}

// Column by column, the rows that the edge takes between the column's borders.
template <class Visit>
void EdgeIndex::ForEachBucket(GridPoint a, GridPoint b, Visit visit) {
  if (a.gx > b.gx) std::swap(a, b);
  const std::int32_t last = BucketOf(b.gx);
  const std::int64_t dx = b.gx - a.gx;
  const std::int64_t dy = b.gy - a.gy;
  std::int64_t enter = a.gy;
  for (std::int32_t column = BucketOf(a.gx); column <= last; ++column) {
    const std::int64_t border = (std::int64_t{column + 1} << shift_) - GRID_OFFSET;
    const std::int64_t leave = column == last ? b.gy : a.gy + FloorDiv(dy * (border - a.gx), dx);
    const std::int32_t top = BucketOf(std::max(enter, leave) + 1);
    for (std::int32_t row = BucketOf(std::min(enter, leave)); row <= top; ++row) {
      visit(first_[At(column, row)]);
    }
    enter = leave;
  }
}

void EdgeIndex::AddEdge(const VertexNode* v, Owner owner) {
  const Entry entry{v->grid, v->next->grid, owner, kNone};
  ForEachBucket(entry.from, entry.to, [&](std::uint32_t& bucket) {
    std::uint32_t place = free_;
    if (place != kNone) {
      free_ = entries_[place].next;
      entries_[place] = entry;
    } else {
      place = static_cast<std::uint32_t>(entries_.size());
      entries_.push_back(entry);
    }
    entries_[place].next = std::exchange(bucket, place);
  });
}

void EdgeIndex::RemoveEdge(const VertexNode* v, Owner owner) noexcept {
  ForEachBucket(v->grid, v->next->grid, [&](std::uint32_t& bucket) {
    for (std::uint32_t* link = &bucket; *link != kNone; link = &entries_[*link].next) {
      Entry& e = entries_[*link];
      if (e.owner == owner && e.from == v->grid && e.to == v->next->grid) {
        e.next = std::exchange(free_, std::exchange(*link, e.next));
        return;
      }
    }
  });
}

}  // namespace zelvan
