// Segments (segment.h).
#include "boolean/segment.h"

#include "polygon/area.h"

namespace zelvan {

void FillSegments(SegmentTable& table, const Area* ring) {
  ForEachContour(ring, [&](const Contour* contour) { FillSegments(table, contour); });
}

void FillSegments(SegmentTable& table, const Contour* contour) {
  const std::size_t first = table.size();
  ForEachVertex(contour, [&](VertexNode* v) {
    const bool forward = v->grid < v->next->grid;
    Segment s{};
    s.lower = forward ? v : v->next;
    s.upper = forward ? v->next : v;
    s.low = s.lower->grid;
    s.high = s.upper->grid;
    s.forward = forward ? 1 : 0;
    s.before = static_cast<std::uint32_t>(table.size() - 1);
    table.push_back(s);
  });
  table[first].before = static_cast<std::uint32_t>(table.size() - 1);
}

bool IsAbove(const Segment* s, const Segment* t) noexcept {
  const GridPoint a = t->low;
  const GridPoint b = t->high;
  const GridPoint p = s->low;
  if (a.gx == b.gx) return p.gy >= b.gy;
  const std::int64_t side = Cross(a, b, p);
  if (side != 0) return side > 0;
  return Cross(a, b, s->high) > 0;
}

}  // namespace zelvan
