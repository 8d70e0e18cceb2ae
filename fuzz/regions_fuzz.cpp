// Any bytes, read as operations on four regions and offsets. Every region that comes out has its
// meshes judged and is the same made again of its rings; small ones are the arrangement oracle's.
#include <zelvan/overlay.h>
#include <zelvan/region.h>

#include <algorithm>
#include <array>

#include "bytes.h"
#include "interface/region.h"
#include "overlay/ring_cases.h"
#include "support/mesh_checker.h"

namespace {

using zelvan::FillRule;
using zelvan::Region;
using zelvan::Ring;
using zelvan::Side;
using zelvan::test::Rings;

// Rings of points of the lattice, one byte each, so that everything touches; of steps of a large
// grid; or of raw doubles.
std::vector<Ring> ReadRings(fuzz::Bytes& bytes) {
  std::vector<Ring> rings(1 + bytes.Byte() % 4);
  for (Ring& ring : rings) {
    const std::uint8_t header = bytes.Byte();
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

Region FromBytes(fuzz::Bytes& bytes) {
  const FillRule rule = FillRule(bytes.Byte() % 4);
  const std::uint8_t way = bytes.Byte() % 4;
  const std::vector<Ring> rings = ReadRings(bytes);
  const zelvan::Grid grid({-4096, -2048}, way == 1 ? 1 : 0.5);
  if (way == 0) return Region(rings, rule);
  return way == 3 ? zelvan::Unite(rings, grid) : Region(rings, rule, grid);
}

Rings RingsOf(const Region& region) {
  return region.IsEmpty() ? Rings{} : zelvan::test::RingsOf(region.Handle()->flat);
}

// The oracle's region where both are on one grid, and small.
Region Combined(const Region& a, const Region& b, int operation) {
  if (operation == 4) return zelvan::Unite(std::vector<Region>{a, b, a});
  const Region result = Combine(zelvan::Operation{operation}, a, b);
  if (a.VertexCount() + b.VertexCount() < 60 && a.Grid() == b.Grid()) {
    const auto snapped = oracle::Snap(RingsOf(a), RingsOf(b), oracle::Bends::kNeeded);
    const auto right = oracle::RegionOf(oracle::BoundaryOf(snapped, operation));
    if (RingsOf(result) != zelvan::test::RingsOf(right)) fuzz::Expect("not the oracle's region");
  }
  return result;
}

// A part of what four regions have together, where they have any.
Region PartOf(const std::array<Region, 4>& regions, std::size_t number) {
  const std::vector<zelvan::Part> parts = zelvan::Overlay(regions);
  return parts.empty() ? Region() : parts[number % parts.size()].region;
}

// Answers that must agree, whatever the regions are.
std::string Contradiction(const Region& a, const Region& b) {
  const bool meet = Intersects(a, b), touch = Touches(a, b), cover = Covers(a, b);
  const auto distance = zelvan::Distance(a, b);
  if (meet != (distance.distance == 0) || (touch && (!meet || cover))) return "another distance";
  if (meet != Intersects(b, a) || touch != Touches(b, a)) return "another order, another answer";
  if (!Covers(a.Hull(), a) || a.Hull().Hull() != a.Hull()) return "not the hull";
  if (a.Grid() == b.Grid() && cover && b - a != Region()) return "covered, but not all";
  const auto nearest = a.NearestOnBoundary(distance.second);
  if (!meet && !(nearest.distance <= distance.distance)) return "another one is nearer";
  if (!a.IsEmpty() && a.Part(0).Transformed({1, 0, 0, 0, 1, 0}) != a.Part(0)) return "moved";
  return "";
}

// Of a small one by any numbers. What was grown by some steps is held whole, and so are vertices
// that were there before shrinking.
Region Offsetted(const Region& region, fuzz::Bytes& bytes) {
  if (region.VertexCount() > 60) return region;
  const zelvan::OffsetOptions options{zelvan::Join(bytes.Byte() % 3), bytes.Byte() / 64.0,
                                      bytes.Byte() / 16.0};
  const double distance = bytes.Byte() % 4 == 0 ? bytes.Double() : bytes.Byte() - 128;
  const Region result = Offset(region, distance, options);
  if (region.Grid() != result.Grid()) return result;
  const double slack = 2 * region.Grid().Step() + std::max(options.tolerance, distance / 500);
  for (const zelvan::Point p : region.Vertices()) {
    const Side side = result.Contains(p);
    if (distance > slack && side == Side::Outside) fuzz::Expect("grown, and not held");
    if (distance < -2 * slack && side == Side::Inside) fuzz::Expect("shrunk, and held");
  }
  return result;
}

std::string FaultsOf(const Region& region) {
  std::vector<Ring> rings;
  for (const zelvan::Polygon& polygon : region.Polygons()) {
    rings.push_back(polygon.outer);
    rings.insert(rings.end(), polygon.holes.begin(), polygon.holes.end());
    if (region.Contains(polygon.outer.front()) != Side::Boundary) return "no boundary";
  }
  if (Region(rings, FillRule::NonZero, region.Grid()) != region) return "another one made again";
  return zelvan::test::CheckMeshes(region);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Bytes bytes(data, size);
  std::array<Region, 4> regions;
  while (!bytes.Empty()) {
    const std::uint8_t what = bytes.Byte(), from = bytes.Byte();
    Region& to = regions[what >> 6];
    try {
      const int operation = from / 4 % 7;
      to = what % 2 == 0    ? FromBytes(bytes)
           : operation == 5 ? PartOf(regions, from / 24)
           : operation == 6 ? Offsetted(to, bytes)
                            : Combined(to, regions[from % 4], operation);
    } catch (const std::logic_error&) {  // not finite; no limit; no grid holds, or keeps, both
      to = {};
    }
    fuzz::Expect(FaultsOf(to));
    try {
      fuzz::Expect(Contradiction(to, regions[from % 4]));
    } catch (const std::domain_error&) {  // steps too far apart
    }
  }
  return 0;
}
