// Regions for tests (regions.h).
#include "support/regions.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "polygon/area.h"
#include "polygon/contour.h"
#include "polygon/tables.h"

namespace zelvan::test {

std::int64_t TwiceSigned(const Ring& ring) {
  std::int64_t sum = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const GridPoint p = ring[i];
    const GridPoint q = ring[(i + 1) % ring.size()];
    sum += std::int64_t{p.gx} * q.gy - std::int64_t{q.gx} * p.gy;
  }
  return sum;
}

std::int64_t TwiceSigned(const Region& region) {
  std::int64_t sum = 0;
  for (const Ring& ring : region) sum += TwiceSigned(ring);
  return sum;
}

Region Symmetric(const Region& region, int k) {
  Region result = region;
  const bool mirrored = (((k >> 2) ^ (k >> 1) ^ k) & 1) != 0;
  for (Ring& ring : result) {
    for (GridPoint& p : ring) {
      if ((k & 1) != 0) p.gx = -1 - p.gx;
      if ((k & 2) != 0) p.gy = -1 - p.gy;
      if ((k & 4) != 0) std::swap(p.gx, p.gy);
    }
    if (mirrored) std::reverse(ring.begin(), ring.end());
  }
  return result;
}

Region Turned(const Region& region, std::int32_t a, std::int32_t b) {
  Region result = region;
  for (Ring& ring : result) {
    for (GridPoint& p : ring) p = {a * p.gx - b * p.gy, b * p.gx + a * p.gy};
  }
  return result;
}

std::string Describe(const Region& region) {
  std::ostringstream out;
  for (const Ring& ring : region) {
    out << "[";
    for (const GridPoint p : ring) out << " " << p.gx << "," << p.gy;
    out << " ]";
  }
  return out.str();
}

std::unique_ptr<Shape> MakeShape(const std::vector<Region>& regions) {
  auto shape = std::make_unique<Shape>();
  for (const Region& region : regions) {
    Area* area = NewArea();
    AppendArea(shape->areas, area);
    Contour** link = &area->contours;
    for (const Ring& ring : region) {
      for (const GridPoint p : ring) AppendVertex(*link, p);
      if (area->contours == *link) (*link)->flags |= CONTOUR_CCW;
      link = &(*link)->next;
    }
  }
  RebuildTables(*shape);
  return shape;
}

std::vector<Region> ReadRegions(const Shape& shape) {
  std::vector<Region> regions;
  ForEachArea(static_cast<const Area*>(shape.areas), [&](const Area* area) {
    Region& region = regions.emplace_back();
    for (const Contour* contour = area->contours; contour != nullptr; contour = contour->next) {
      Ring& ring = region.emplace_back();
      ForEachVertex(contour, [&](const VertexNode* v) { ring.push_back(v->grid); });
    }
  });
  return regions;
}

}  // namespace zelvan::test
