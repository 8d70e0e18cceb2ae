// Any bytes, read as operations on four regions. Every region that comes out has its meshes
// judged, is read and made again, and holds the points that the rule or the operation says.
#include <zelvan/region.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "bytes.h"
#include "support/mesh_of_region.h"

namespace {

using zelvan::FillRule;
using zelvan::Point;
using zelvan::Region;
using zelvan::Ring;

// Rings of points of a lattice of 16 by 16, one byte each, so that everything touches; of steps
// of a large grid; or of raw doubles.
std::vector<Ring> ReadRings(fuzz::Bytes& bytes) {
  std::vector<Ring> rings(1 + bytes.Byte() % 4);
  for (Ring& ring : rings) {
    const std::uint8_t header = bytes.Byte();
    for (int n = header & 31; n > 0 && !bytes.Empty(); --n) {
      const std::uint8_t first = bytes.Byte();
      if (header >> 5 == 7) {
        const double x = bytes.Double();
        ring.push_back({x, bytes.Double()});
      } else if (header >> 5 == 6) {
        const std::uint8_t second = bytes.Byte();
        ring.push_back({256.0 * first + bytes.Byte() / 8.0, 256.0 * second + bytes.Byte() / 4.0});
      } else {
        ring.push_back({1.0 * (first & 15), 1.0 * (first >> 4)});
      }
    }
  }
  return rings;
}

std::vector<Ring> RingsOf(const Region& region) {
  std::vector<Ring> rings;
  for (const zelvan::Polygon& polygon : region.Polygons()) {
    rings.push_back(polygon.outer);
    rings.insert(rings.end(), polygon.holes.begin(), polygon.holes.end());
  }
  return rings;
}

bool IsNear(Point p, Point a, Point b, double margin) {
  const double dx = b.x - a.x, dy = b.y - a.y, square = dx * dx + dy * dy;
  const double along = square > 0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / square : 0;
  const double t = std::clamp(along, 0.0, 1.0);
  return !(std::hypot(a.x + t * dx - p.x, a.y + t * dy - p.y) > margin);
}

// Calls use(a, b) for each edge.
template <class Use>
void ForEdges(const std::vector<Ring>& rings, Use use) {
  for (const Ring& ring : rings) {
    for (std::size_t i = 0; i < ring.size(); ++i) use(ring[i], ring[(i + 1) % ring.size()]);
  }
}

bool Holds(const std::vector<Ring>& rings, FillRule rule, Point p) {
  int winding = 0;
  ForEdges(rings, [&](Point a, Point b) {
    const double side = (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
    if (a.y <= p.y && b.y > p.y && side > 0) ++winding;
    if (b.y <= p.y && a.y > p.y && side < 0) --winding;
  });
  if (rule == FillRule::EvenOdd) return winding % 2 != 0;
  if (rule == FillRule::NonZero) return winding != 0;
  return rule == FillRule::Positive ? winding > 0 : winding < 0;
}

// Asks for points between corners of the operands that rounding does not reach: each grid moves
// corners and crossings by half a step along each axis, so edges by less than two in all.
template <class Says>
void JudgePoints(const Region& region, const std::vector<Ring>& rings, double step, Says says) {
  const double margin = 2 * std::max({step, zelvan::Grid::Covering(rings).Step()});
  if (margin < 0x1p-200) return;  // the squares are no doubles
  int asked = 0;
  for (const Ring& ring : rings) {
    for (std::size_t i = 2; i < ring.size() && asked < 100; ++i, ++asked) {
      const Point p{ring[i - 2].x / 3 + ring[i - 1].x / 3 + ring[i].x / 3,
                    ring[i - 2].y / 3 + ring[i - 1].y / 3 + ring[i].y / 3};
      bool near = false;
      ForEdges(rings, [&](Point a, Point b) { near = near || IsNear(p, a, b, margin); });
      if (!near && (region.Contains(p) != zelvan::Side::Outside) != says(p)) {
        fuzz::Expect("a point is on the wrong side");
      }
    }
  }
}

Region FromBytes(fuzz::Bytes& bytes) {
  const FillRule rule = FillRule(bytes.Byte() % 4);
  const std::uint8_t grid = bytes.Byte();
  const std::vector<Ring> rings = ReadRings(bytes);
  try {
    const double step = grid % 4 == 1 ? 1 : 0.5;
    if (grid % 4 == 3) return zelvan::Unite(rings, zelvan::Grid({-4096 * step, 0}, step));
    const Region region = grid % 4 == 0 ? Region(rings, rule)
                                        : Region(rings, rule, zelvan::Grid({-4096, -2048}, step));
    JudgePoints(region, rings, grid % 4 == 0 ? 0 : step,
                [&](Point p) { return Holds(rings, rule, p); });
    return region;
  } catch (const std::invalid_argument&) {
    return {};
  }
}

Region Combine(const Region& a, const Region& b, int operation) {
  switch (operation) {
    case 0:
      return a | b;
    case 1:
      return a & b;
    case 2:
      return a - b;
    case 3:
      return a ^ b;
    default:
      return zelvan::Unite(std::vector<Region>{a, b, a});
  }
}

Region Combined(const Region& a, const Region& b, int operation) {
  try {
    const Region region = Combine(a, b, operation);
    std::vector<Ring> rings = RingsOf(a), more = RingsOf(b);
    rings.insert(rings.end(), more.begin(), more.end());
    const auto step = [](const Region& r) { return r.IsEmpty() ? 0.0 : r.Grid().Step(); };
    JudgePoints(region, rings, std::max({step(a), step(b), step(region)}), [&](Point p) {
      const bool in = a.Contains(p) == zelvan::Side::Inside;
      const bool other = b.Contains(p) == zelvan::Side::Inside;
      const bool answers[] = {in || other, in && other, in && !other, in != other, in || other};
      return answers[operation];
    });
    return region;
  } catch (const std::invalid_argument&) {  // no grid holds both
    return {};
  }
}

std::string FaultsOf(const Region& region) {
  const std::vector<Ring> rings = RingsOf(region);
  for (const Ring& ring : rings) {
    if (region.Contains(ring.front()) != zelvan::Side::Boundary) return "no boundary";
  }
  static_cast<void>(Region(rings, FillRule::NonZero, region.Grid()));  // never refused
  return support::FaultsOfMesh(region);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Bytes bytes(data, size);
  std::array<Region, 4> regions;
  while (!bytes.Empty()) {
    const std::uint8_t what = bytes.Byte();
    Region& to = regions[what >> 6];
    const std::uint8_t from = bytes.Byte();
    to = what % 2 == 0 ? FromBytes(bytes) : Combined(to, regions[from % 4], from / 4 % 5);
    fuzz::Expect(FaultsOf(to));
  }
  return 0;
}
