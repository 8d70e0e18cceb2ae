// Any bytes, read as operations on four regions. Every region that comes out has its meshes
// judged, and is read and made again.
#include <zelvan/region.h>

#include <array>

#include "bytes.h"
#include "support/mesh_checker.h"

namespace {

using zelvan::FillRule;
using zelvan::Region;

// Rings of points of a lattice of 16 by 16, one byte each, so that everything touches; of steps
// of a large grid; or of raw doubles.
std::vector<zelvan::Ring> ReadRings(fuzz::Bytes& bytes) {
  std::vector<zelvan::Ring> rings(1 + bytes.Byte() % 4);
  for (zelvan::Ring& ring : rings) {
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

Region FromBytes(fuzz::Bytes& bytes) {
  const FillRule rule = FillRule(bytes.Byte() % 4);
  const std::uint8_t grid = bytes.Byte();
  const std::vector<zelvan::Ring> rings = ReadRings(bytes);
  try {
    if (grid % 4 == 0) return Region(rings, rule);
    const double step = grid % 4 == 1 ? 1 : 0.5;
    if (grid % 4 == 3) return zelvan::Unite(rings, zelvan::Grid({-4096 * step, 0}, step));
    return Region(rings, rule, zelvan::Grid({-4096, -2048}, step));
  } catch (const std::invalid_argument&) {
    return {};
  }
}

Region Combined(const Region& a, const Region& b, std::uint8_t operation) {
  try {
    switch (operation % 5) {
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
  } catch (const std::invalid_argument&) {  // no grid holds both
    return {};
  }
}

std::string FaultsOf(const Region& region) {
  std::vector<zelvan::Ring> rings;
  for (const zelvan::Polygon& polygon : region.Polygons()) {
    rings.push_back(polygon.outer);
    rings.insert(rings.end(), polygon.holes.begin(), polygon.holes.end());
    if (region.Contains(polygon.outer.front()) != zelvan::Side::Boundary) return "no boundary";
  }
  static_cast<void>(Region(rings, FillRule::NonZero, region.Grid()));  // never refused
  return zelvan::test::CheckMeshes(region);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Bytes bytes(data, size);
  std::array<Region, 4> regions;
  while (!bytes.Empty()) {
    const std::uint8_t what = bytes.Byte();
    Region& to = regions[what >> 6];
    const std::uint8_t from = bytes.Byte();
    to = what % 2 == 0 ? FromBytes(bytes) : Combined(to, regions[from % 4], from / 4);
    fuzz::Expect(FaultsOf(to));
  }
  return 0;
}
