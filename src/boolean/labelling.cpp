// Labelling (labelling.h).
#include "boolean/labelling.h"

#include <cstdint>

#include "polygon/area.h"

namespace zelvan {

namespace {

std::int64_t Turn(GridPoint from, GridPoint to) noexcept {
  return std::int64_t{from.gx} * to.gy - std::int64_t{from.gy} * to.gx;
}

// Of two edges that leave a place rightwards or straight up or down: does a lie
// below b? Equal edges do not.
bool IsLower(GridPoint a, GridPoint b) noexcept {
  const std::int64_t turn = Turn(a, b);
  return turn > 0 || (turn == 0 && a.gy < b.gy);
}

GridPoint Difference(GridPoint a, GridPoint b) noexcept {
  return {a.gx - b.gx, a.gy - b.gy};
}

// The label of a kept edge of operand `own` from the memberships to its left and
// from the operands whose boundary it is.
std::uint32_t EdgeBits(OperandSet own, OperandSet left, OperandSet bounds) noexcept {
  const OperandSet other = (OPERAND_A | OPERAND_B) ^ own;
  const std::uint32_t turned = (left & own) != 0 ? 0 : TURNED;
  if ((bounds & other) != 0) {
    const bool sameSide = ((left & own) != 0) == ((left & other) != 0);
    return (sameSide ? LABEL_SHARED : LABEL_SHARED_REVERSED) | turned;
  }
  return ((left & other) != 0 ? LABEL_INSIDE : LABEL_OUTSIDE) | turned;
}

void SetEdgeBits(VertexNode* holder, std::uint32_t bits) noexcept {
  holder->flags = (holder->flags & ~(EDGE_LABEL_MASK | TURNED)) | bits;
}

// The copies of one grid edge at a pixel: entries first to last, along `next`.
struct Bundle {
  CrossEntry* first;
  CrossEntry* last;
  OperandSet bounds;    // operands with an odd number of copies
  CrossEntry* kept[2];  // the copy of A and of B that is not dropped
};

Bundle BundleFrom(CrossEntry* first) noexcept {
  Bundle b{first, first, 0, {nullptr, nullptr}};
  CrossEntry* e = first;
  do {
    b.last = e;
    b.bounds ^= OperandOf(e);
    if (LabelOf(HolderOf(e)) != LABEL_DROPPED) b.kept[OperandOf(e) - OPERAND_A] = e;
    e = e->next;
  } while (e != first && SameEdge(e, first));
  return b;
}

CrossEntry* FirstCopy(CrossEntry* e) noexcept {
  CrossEntry* first = e;
  while (first->prev != e && SameEdge(first->prev, e)) first = first->prev;
  return first;
}

class Flood {
 public:
  void From(const Seed& seed) {
    VertexNode* v = seed.vertex;
    if (v->crossNext == nullptr) {
      if (LabelOf(v) == LABEL_UNKNOWN) FromPlain(v, seed.inside);
    } else if ((v->crossNext->flags & FLOODED) == 0) {
      Pixel(HighestOf(v->crossNext), seed.inside);
    }
    while (!open_.empty()) {
      const Arrival a = open_.back();
      open_.pop_back();
      if ((a.entry->flags & FLOODED) != 0) continue;
      const Bundle b = BundleFrom(FirstCopy(a.entry));
      Pixel(b.first, IsTowardPrev(a.entry) ? a.left ^ b.bounds : a.left);
    }
  }

 private:
  // An entry that is reached along its edge, with the memberships left of it.
  struct Arrival {
    CrossEntry* entry;
    OperandSet left;
  };

  // No edge at a seed goes left: that sector lies counter-clockwise of the highest.
  static CrossEntry* HighestOf(CrossEntry* start) noexcept {
    CrossEntry* highest = start;
    for (CrossEntry* e = start->next; e != start; e = e->next) {
      if (IsLower({highest->dx, highest->dy}, {e->dx, e->dy})) highest = e;
    }
    return FirstCopy(highest);
  }

  // A contour that may meet others further on, from its first point on.
  void FromPlain(VertexNode* v, OperandSet inside) {
    const bool nextIsLower =
        IsLower(Difference(v->next->grid, v->grid), Difference(v->prev->grid, v->grid));
    const OperandSet left = nextIsLower ? inside ^ OperandOf(v) : inside;
    const std::uint32_t bits = EdgeBits(OperandOf(v), left, OperandOf(v));
    Forward(v, bits, left);
    Backward(v, bits, left);
  }

  // `after`: the memberships in the sector counter-clockwise of the bundle that
  // starts with `start`. Goes once around the pixel, from the bundle after it.
  void Pixel(CrossEntry* start, OperandSet after) {
    CrossEntry* const begin = BundleFrom(start).last->next;
    CrossEntry* e = begin;
    OperandSet sector = after;
    do {
      const Bundle b = BundleFrom(e);
      const OperandSet clockwise = sector;
      sector ^= b.bounds;
      LabelBundle(b, clockwise, sector);
      e = b.last->next;
    } while (e != begin);
    do {
      e->flags |= FLOODED;
      e = e->next;
    } while (e != begin);
  }

  void LabelBundle(const Bundle& b, OperandSet clockwise, OperandSet counterClockwise) {
    const auto leftOf = [&](const CrossEntry* e) {
      return IsTowardPrev(e) ? clockwise : counterClockwise;
    };
    for (CrossEntry* e : b.kept) {
      if (e != nullptr) Follow(e, EdgeBits(OperandOf(e), leftOf(e), b.bounds), leftOf(e));
    }
    if (b.kept[0] != nullptr && b.kept[1] != nullptr) {
      VertexNode* u = HolderOf(b.kept[0]);
      VertexNode* w = HolderOf(b.kept[1]);
      u->crossNext->partner = w;
      w->crossNext->partner = u;
    }
    // All copies cancelled: the edge still leads to the next pixel.
    if (b.kept[0] == nullptr && b.kept[1] == nullptr) Reach(b.first, leftOf(b.first));
  }

  void Follow(CrossEntry* e, std::uint32_t bits, OperandSet left) {
    if (IsTowardPrev(e)) {
      SetEdgeBits(e->vertex->prev, bits);
      Backward(e->vertex->prev, bits, left);
    } else {
      Forward(e->vertex, bits, left);
    }
  }

  // Labels the chain of edges from v on up to the next vertex that has entries.
  void Forward(VertexNode* v, std::uint32_t bits, OperandSet left) {
    VertexNode* const start = v;
    do {
      SetEdgeBits(v, bits);
      v = v->next;
    } while (v->crossPrev == nullptr && v != start);
    if (v->crossPrev != nullptr) open_.push_back({v->crossPrev, left});
  }

  // Labels the chain of edges that ends at v.
  void Backward(VertexNode* v, std::uint32_t bits, OperandSet left) {
    VertexNode* const start = v;
    while (v->crossNext == nullptr && v->prev != start) {
      v = v->prev;
      SetEdgeBits(v, bits);
    }
    if (v->crossNext != nullptr) open_.push_back({v->crossNext, left});
  }

  void Reach(CrossEntry* e, OperandSet left) {
    VertexNode* v = e->vertex;
    open_.push_back({IsTowardPrev(e) ? v->prev->crossNext : v->next->crossPrev, left});
  }

  std::vector<Arrival> open_;
};

}  // namespace

void LabelEdges(const std::vector<Seed>& seeds) {
  Flood flood;
  for (const Seed& seed : seeds) flood.From(seed);
}

void LabelContours(Area* ring) noexcept {
  ForEachContour(ring, [](Contour* contour) {
    bool crossed = false;
    ForEachVertex(contour, [&](const VertexNode* v) { crossed |= v->crossNext != nullptr; });
    if (crossed) {
      SetLabel(contour, CONTOUR_CROSSED);
    } else {
      SetLabel(contour, LabelOf(contour->head) == LABEL_INSIDE ? CONTOUR_INSIDE : CONTOUR_OUTSIDE);
    }
  });
}

}  // namespace zelvan
