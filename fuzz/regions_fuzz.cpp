// Any bytes, read as operations on four regions. Every region that comes out has its meshes
// judged, is read and made again, and holds the points that rule and operations say.
#include <zelvan/region.h>

#include <array>
#include <bitset>

#include "bytes.h"
#include "support/mesh_checker.h"

namespace {

using zelvan::FillRule;
using zelvan::Point;
using zelvan::Region;
using zelvan::Ring;
using zelvan::Side;

// Lines through points of the lattice of 8 by 8 keep away from the places that are asked for by
// 1 / 2525 at least: 50 steps of the grid, of which an operation moves an edge by a half.
constexpr std::size_t kPlaces = 49;
using Places = std::bitset<kPlaces>;

Point Place(std::size_t i) {
  return {static_cast<double>(i % 7) + 1.0 / 15, static_cast<double>(i / 7) + 1.0 / 255};
}

struct Subject {
  Region region;
  Places holds;
  bool known = true;  // do the places say all there is to say?
};

// Rings of points of the lattice, one byte each, so that everything touches; of steps of a large
// grid; or of raw doubles.
std::vector<Ring> ReadRings(fuzz::Bytes& bytes, bool& lattice) {
  std::vector<Ring> rings(1 + bytes.Byte() % 4);
  for (Ring& ring : rings) {
    const std::uint8_t header = bytes.Byte();
    lattice = lattice && header >> 5 < 6;
    for (int n = header & 31; n > 0 && !bytes.Empty(); --n) {
      const std::uint8_t first = bytes.Byte();
      if (header >> 5 == 7) {
        ring.push_back({bytes.Double(), bytes.Double()});
      } else if (header >> 5 == 6) {
        const double x = 256.0 * first + bytes.Byte() / 8.0;
        ring.push_back({x, 256.0 * bytes.Byte() + bytes.Byte() / 4.0});
      } else {
        ring.push_back({1.0 * (first & 7), 1.0 * (first >> 4 & 7)});
      }
    }
  }
  return rings;
}

bool Holds(const std::vector<Ring>& rings, FillRule rule, Point p) {
  int winding = 0;
  for (const Ring& ring : rings) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const Point a = ring[i], b = ring[(i + 1) % ring.size()];
      const double side = (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
      winding += a.y <= p.y && b.y > p.y && side > 0 ? 1 : 0;
      winding -= b.y <= p.y && a.y > p.y && side < 0 ? 1 : 0;
    }
  }
  const bool holds[] = {winding % 2 != 0, winding != 0, winding > 0, winding < 0};
  return holds[static_cast<int>(rule)];
}

Subject FromBytes(fuzz::Bytes& bytes) {
  const FillRule rule = FillRule(bytes.Byte() % 4);
  const std::uint8_t way = bytes.Byte() % 4;
  Subject subject;
  const std::vector<Ring> rings = ReadRings(bytes, subject.known);
  const zelvan::Grid grid({-4096, -2048}, way == 1 ? 1 : 0.5);
  subject.region = way == 0   ? Region(rings, rule)
                   : way == 3 ? zelvan::Unite(rings, grid)
                              : Region(rings, rule, grid);
  subject.known = subject.known && way == 0;
  for (std::size_t i = 0; i < kPlaces; ++i) subject.holds[i] = Holds(rings, rule, Place(i));
  return subject;
}

Subject Combined(const Subject& a, const Subject& b, int operation) {
  const bool known = a.known && b.known;
  if (operation == 0) return {a.region | b.region, a.holds | b.holds, known};
  if (operation == 1) return {a.region & b.region, a.holds & b.holds, known};
  if (operation == 2) return {a.region - b.region, a.holds & ~b.holds, known};
  if (operation == 3) return {a.region ^ b.region, a.holds ^ b.holds, known};
  return {zelvan::Unite(std::vector<Region>{a.region, b.region, a.region}), a.holds | b.holds,
          known};
}

std::string FaultsOf(const Subject& subject) {
  std::vector<Ring> rings;
  for (const zelvan::Polygon& polygon : subject.region.Polygons()) {
    rings.push_back(polygon.outer);
    rings.insert(rings.end(), polygon.holes.begin(), polygon.holes.end());
    if (subject.region.Contains(polygon.outer.front()) != Side::Boundary) return "no boundary";
  }
  static_cast<void>(Region(rings, FillRule::NonZero, subject.region.Grid()));  // never refused
  for (std::size_t i = 0; subject.known && i < kPlaces; ++i) {
    const Side wanted = subject.holds[i] ? Side::Inside : Side::Outside;
    if (subject.region.Contains(Place(i)) != wanted) return "a point on the wrong side";
  }
  return zelvan::test::CheckMeshes(subject.region);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Bytes bytes(data, size);
  std::array<Subject, 4> subjects;
  while (!bytes.Empty()) {
    const std::uint8_t what = bytes.Byte(), from = bytes.Byte();
    Subject& to = subjects[what >> 6];
    try {
      to = what % 2 == 0 ? FromBytes(bytes) : Combined(to, subjects[from % 4], from / 4 % 5);
    } catch (const std::logic_error&) {  // not finite; no grid holds, or keeps, both
      to = {};
    }
    fuzz::Expect(FaultsOf(to));
  }
  return 0;
}
