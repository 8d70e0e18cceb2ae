// Containment on the grid (containment.h).
#include "polygon/containment.h"

#include <algorithm>
#include <cstdlib>

#include "polygon/contour.h"
#include "polygon/grid_predicates.h"

namespace zelvan {

namespace {

// The abscissa at which an edge meets a horizontal line, as whole part and
// fraction remainder / divisor, 0 <= remainder < divisor.
struct Abscissa {
  std::int64_t whole;
  std::int64_t remainder;
  std::int64_t divisor;

  friend bool operator<(const Abscissa& a, const Abscissa& b) noexcept {
    if (a.whole != b.whole) return a.whole < b.whole;
    return a.remainder * b.divisor < b.remainder * a.divisor;  // each below 2^22
  }
};

Abscissa AbscissaAbove(GridPoint q, GridPoint c, std::int32_t row) noexcept {
  if (q.gy > c.gy) std::swap(q, c);
  const std::int64_t divisor = 2 * std::int64_t{c.gy - q.gy};
  const std::int64_t product = (2 * std::int64_t{row - q.gy} + 1) * (c.gx - q.gx);
  std::int64_t whole = product / divisor;
  std::int64_t remainder = product % divisor;
  if (remainder < 0) {
    --whole;
    remainder += divisor;
  }
  return {q.gx + whole, remainder, divisor};
}

// Calls visit(abscissa) for each edge of the ring that meets the line half a step
// above `row`. No vertex lies on that line.
template <class Visit>
void ForEachAbscissa(const Contour* contour, std::int32_t row, Visit visit) {
  const VertexNode* v = contour->head;
  do {
    if (PassesAbove(row, v->prev->grid, v->grid)) {
      visit(AbscissaAbove(v->prev->grid, v->grid, row));
    }
    v = v->next;
  } while (v != contour->head);
}

// Tests against `outer` a point of the interior of `inner`: just right of the
// leftmost edge of `inner` half a step above its lowest vertex. Edges of `outer`
// that meet the line in the same place lie left of that point.
bool InteriorPointInside(const Contour* inner, const Contour* outer) noexcept {
  const std::int32_t row = inner->gridBox.min.gy;
  Abscissa leftmost{GRID_OFFSET, 0, 1};
  ForEachAbscissa(inner, row, [&](const Abscissa& x) { leftmost = std::min(leftmost, x); });
  bool inside = false;
  ForEachAbscissa(outer, row, [&](const Abscissa& x) { inside ^= !(leftmost < x); });
  return inside;
}

}  // namespace

Location Locate(GridPoint p, const Contour* contour) noexcept {
  bool inside = false;
  const VertexNode* v = contour->head;
  do {
    const GridPoint q = v->prev->grid;
    const GridPoint c = v->grid;
    if (Contains(BoxOfEdge(q, c), {p, p}) && Cross(q, c, p) == 0) return Location::kBoundary;
    const bool falls = c.gy <= p.gy && p.gy < q.gy;
    const bool rises = q.gy <= p.gy && p.gy < c.gy;
    if (falls || rises) {
      const std::int64_t offset = std::int64_t{q.gy - c.gy} * (p.gx - c.gx);
      const std::int64_t edge = std::int64_t{p.gy - c.gy} * (q.gx - c.gx);
      if (falls ? offset < edge : offset > edge) inside = !inside;
    }
    v = v->next;
  } while (v != contour->head);
  return inside ? Location::kInside : Location::kOutside;
}

bool PointInContour(GridPoint p, const Contour* contour) noexcept {
  return contour != nullptr && Contains(contour->gridBox, Widened({p, p})) &&
         Locate(p, contour) == Location::kInside;
}

bool ContourInside(const Contour* inner, const Contour* outer) noexcept {
  if (outer == nullptr || !Contains(outer->gridBox, inner->gridBox)) return false;
  const Location head = Locate(inner->head->grid, outer);
  if (head != Location::kBoundary) return head == Location::kInside;
  return std::abs(TwiceArea(inner->head)) <= std::abs(TwiceArea(outer->head)) &&
         InteriorPointInside(inner, outer);
}

}  // namespace zelvan
