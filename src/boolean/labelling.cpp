// Labelling (labelling.h).
#include "boolean/labelling.h"

#include <cstdint>

#include "polygon/area.h"
#include "polygon/grid_predicates.h"

namespace zelvan {

namespace {

// Of two edges that leave a place rightwards or straight up or down: does a lie
// below b? Equal edges do not.
bool IsLower(GridPoint a, GridPoint b) noexcept {
  const std::int64_t turn = Cross(a, b);
  return turn > 0 || (turn == 0 && a.gy < b.gy);
}

// The label of an edge of operand `own` from the operands that contain its sides.
std::uint32_t EdgeBits(OperandSet own, OperandSet left, OperandSet right) noexcept {
  const OperandSet bounds = left ^ right;
  if ((bounds & own) == 0) return LABEL_DROPPED;
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
  Winding step;         // the change from clockwise to counter-clockwise of it
  CrossEntry* kept[2];  // the copy of A and of B that is not dropped
};

// The change from clockwise to counter-clockwise of one copy.
Winding StepOverEntry(const CrossEntry* e) noexcept {
  const Winding step = StepOverEdgeOf(OperandOf(e));
  return IsTowardPrev(e) ? Winding{} - step : step;
}

Bundle BundleFrom(CrossEntry* first) noexcept {
  Bundle b{first, first, {}, {nullptr, nullptr}};
  CrossEntry* e = first;
  do {
    b.last = e;
    b.step += StepOverEntry(e);
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
  explicit Flood(WindingRule rule) noexcept : rule_(rule) {}

  void From(const Seed& seed) {
    VertexNode* v = seed.vertex;
    if (v->crossNext == nullptr) {
      if (LabelOf(v) == LABEL_UNKNOWN) FromPlain(v, seed.winding);
    } else if ((v->crossNext->flags & FLOODED) == 0) {
      Enter(HighestOf(v->crossNext), seed.winding);
    }
    while (!open_.empty()) {
      wave_.swap(open_);
      for (const Arrival& a : wave_) {
        if ((a.entry->flags & FLOODED) == 0) Enter(a);
      }
      wave_.clear();
    }
  }

 private:
  // An entry that is reached along its edge, with the winding numbers left of it.
  struct Arrival {
    CrossEntry* entry;
    Winding left;
  };

  // No edge at a seed goes left: that sector lies counter-clockwise of the highest.
  static CrossEntry* HighestOf(CrossEntry* start) noexcept {
    CrossEntry* highest = start;
    for (CrossEntry* e = start->next; e != start; e = e->next) {
      if (IsLower({highest->dx, highest->dy}, {e->dx, e->dy})) highest = e;
    }
    return highest;
  }

  void Enter(const Arrival& a) {
    if ((a.entry->flags & HAS_COPIES) == 0) {
      PixelWithoutCopies(a.entry, IsTowardPrev(a.entry) ? a.left + StepOverEntry(a.entry) : a.left);
      return;
    }
    const Bundle b = BundleFrom(FirstCopy(a.entry));
    Pixel(b, IsTowardPrev(a.entry) ? a.left + b.step : a.left);
  }

  // `after` as for Pixel.
  void Enter(CrossEntry* start, Winding after) {
    if ((start->flags & HAS_COPIES) == 0) return PixelWithoutCopies(start, after);
    Pixel(BundleFrom(FirstCopy(start)), after);
  }

  // A contour that may meet others further on, from its first point on.
  void FromPlain(VertexNode* v, Winding outside) {
    const bool nextIsLower =
        IsLower(Difference(v->next->grid, v->grid), Difference(v->prev->grid, v->grid));
    const Winding step = StepOverEdgeOf(OperandOf(v));
    const Winding left = nextIsLower ? outside + step : outside;
    const std::uint32_t bits =
        EdgeBits(OperandOf(v), OperandsAround(left, rule_), OperandsAround(left - step, rule_));
    Forward(v, bits, left);
    Backward(v, bits, left);
  }

  // A sector of a pixel: its winding numbers, and the operands that contain it.
  struct Sector {
    Winding winding;
    OperandSet inside;
  };

  // What Pixel does, where each edge is a bundle of its own.
  void PixelWithoutCopies(CrossEntry* start, Winding after) {
    CrossEntry* e = start;
    Sector sector{after, OperandsAround(after, rule_)};
    do {
      e = e->next;
      const Sector clockwise = sector;
      sector.winding += StepOverEntry(e);
      sector.inside = OperandsAround(sector.winding, rule_);
      LabelEdge(e, clockwise, sector);
      e->flags |= FLOODED;
    } while (e != start);
  }

  // `after`: the winding numbers in the sector counter-clockwise of `start`. Goes once
  // around the pixel, from the bundle after it.
  void Pixel(const Bundle& start, Winding after) {
    CrossEntry* const begin = start.last->next;
    CrossEntry* e = begin;
    Sector sector{after, OperandsAround(after, rule_)};
    do {
      const Bundle b = BundleFrom(e);
      const Sector clockwise = sector;
      sector.winding += b.step;
      sector.inside = OperandsAround(sector.winding, rule_);
      LabelBundle(b, clockwise, sector);
      e = b.last->next;
    } while (e != begin);
    do {
      e->flags |= FLOODED;
      e = e->next;
    } while (e != begin);
  }

  // An edge that has its label already has it from its other end.
  void LabelEdge(CrossEntry* e, const Sector& clockwise, const Sector& counterClockwise) {
    if (LabelOf(HolderOf(e)) != LABEL_UNKNOWN) return;
    const bool toward = IsTowardPrev(e);
    const Sector& left = toward ? clockwise : counterClockwise;
    const Sector& right = toward ? counterClockwise : clockwise;
    Follow(e, EdgeBits(OperandOf(e), left.inside, right.inside), left.winding);
  }

  void LabelBundle(const Bundle& b, const Sector& clockwise, const Sector& counterClockwise) {
    for (CrossEntry* e : b.kept) {
      if (e != nullptr) LabelEdge(e, clockwise, counterClockwise);
    }
    if ((clockwise.inside ^ counterClockwise.inside) == (OPERAND_A | OPERAND_B)) {
      VertexNode* u = HolderOf(b.kept[0]);
      VertexNode* w = HolderOf(b.kept[1]);
      u->crossNext->partner = w;
      w->crossNext->partner = u;
    }
  }

  void Follow(CrossEntry* e, std::uint32_t bits, Winding left) {
    if (IsTowardPrev(e)) {
      SetEdgeBits(e->vertex->prev, bits);
      Backward(e->vertex->prev, bits, left);
    } else {
      Forward(e->vertex, bits, left);
    }
  }

  // Labels the chain of edges from v on up to the next vertex that has entries.
  void Forward(VertexNode* v, std::uint32_t bits, Winding left) {
    VertexNode* const start = v;
    do {
      SetEdgeBits(v, bits);
      v = v->next;
    } while (v->crossPrev == nullptr && v != start);
    if (v->crossPrev != nullptr) open_.push_back({v->crossPrev, left});
  }

  // Labels the chain of edges that ends at v.
  void Backward(VertexNode* v, std::uint32_t bits, Winding left) {
    VertexNode* const start = v;
    while (v->crossNext == nullptr && v->prev != start) {
      v = v->prev;
      SetEdgeBits(v, bits);
    }
    if (v->crossNext != nullptr) open_.push_back({v->crossNext, left});
  }

  WindingRule rule_;
  // Wave by wave, so that all arrivals at a pixel find it still at hand.
  std::vector<Arrival> wave_;
  std::vector<Arrival> open_;  // the next wave
};

}  // namespace

void LabelEdges(const std::vector<Seed>& seeds, WindingRule rule) {
  Flood flood(rule);
  for (const Seed& seed : seeds) flood.From(seed);
}

void LabelContours(Area* ring) noexcept {
  ForEachContour(ring, [](Contour* contour) {
    const VertexNode* v = contour->head;
    while (v->crossNext == nullptr && v->next != contour->head) v = v->next;
    if (v->crossNext != nullptr) {
      SetLabel(contour, CONTOUR_CROSSED);
    } else if (LabelOf(contour->head) != LABEL_DROPPED) {
      SetLabel(contour, LabelOf(contour->head) == LABEL_INSIDE ? CONTOUR_INSIDE : CONTOUR_OUTSIDE);
    }
  });
}

}  // namespace zelvan
