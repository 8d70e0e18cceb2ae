// Well-known binary (region_wkb.h).
#include "interface/region_wkb.h"

#include <cstring>
#include <limits>

#include "interface/region_refusal.h"

namespace zelvan {

namespace {

// std::bit_cast is not in every library yet.
double DoubleOfBits(std::uint64_t bits) noexcept {
  double value = 0;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

std::uint64_t BitsOf(double value) noexcept {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

constexpr int kDeepest = 100;

enum Kind : std::uint32_t {
  kPoint = 1,
  kLineString = 2,
  kPolygon = 3,
  kMultiPoint = 4,
  kMultiLineString = 5,
  kMultiPolygon = 6,
  kCollection = 7
};

struct Header {
  std::uint32_t kind;
  std::uint32_t dimensions;  // numbers of a point
};

constexpr std::uint32_t kHasZ = 0x80000000U;
constexpr std::uint32_t kHasM = 0x40000000U;
constexpr std::uint32_t kHasSrid = 0x20000000U;

}  // namespace

class WkbPolygons::Reader {
 public:
  Reader(WkbPolygons& to, std::span<const std::uint8_t> bytes) : to_(to), rest_(bytes) {}

  void Geometry(int depth) {
    Require(depth < kDeepest);
    const Header header = ReadHeader();
    switch (header.kind) {
      case kPolygon:
        return Polygon(header.dimensions);
      case kMultiPolygon:
      case kCollection:
        for (std::uint32_t left = Number(); left > 0; --left) Geometry(depth + 1);
        return;
      case kPoint:
        ++to_.leftOut_;
        return Skip(1, header.dimensions);
      case kLineString:
        ++to_.leftOut_;
        return Skip(Number(), header.dimensions);
      case kMultiPoint:
      case kMultiLineString:
        ++to_.leftOut_;
        for (std::uint32_t left = Number(); left > 0; --left) Part();
        return;
      default:
        Require(false);
    }
  }

 private:
  // A point or a line within another geometry.
  void Part() {
    const Header header = ReadHeader();
    Require(header.kind == kPoint || header.kind == kLineString);
    Skip(header.kind == kPoint ? 1 : Number(), header.dimensions);
  }

  Header ReadHeader() {
    Require(!rest_.empty() && rest_.front() <= 1);
    little_ = rest_.front() == 1;
    rest_ = rest_.subspan(1);
    const std::uint32_t type = Number();
    if ((type & kHasSrid) != 0) Number();
    const std::uint32_t code = type & ~(kHasZ | kHasM | kHasSrid);
    const std::uint32_t flags = code / 1000;  // 1 with heights, 2 with measures, 3 with both
    Require(flags <= 3);
    const bool hasZ = (type & kHasZ) != 0 || flags == 1 || flags == 3;
    const bool hasM = (type & kHasM) != 0 || flags >= 2;
    return {code % 1000, 2U + (hasZ ? 1U : 0U) + (hasM ? 1U : 0U)};
  }

  void Polygon(std::uint32_t dimensions) {
    for (std::uint32_t left = Number(); left > 0; --left) {
      const std::uint32_t points = Number();
      Require(points <= rest_.size() / 8 / dimensions);
      const std::size_t all = to_.xy_.size() / 2 + points;
      Require(all <= std::numeric_limits<std::int32_t>::max(), ZELVAN_TOO_LARGE);
      for (std::uint32_t i = 0; i < points; ++i) {
        to_.xy_.push_back(Double(0));
        to_.xy_.push_back(Double(8));
        rest_ = rest_.subspan(8 * std::size_t{dimensions});
      }
      to_.rings_.push_back(static_cast<std::uint32_t>(all));
    }
    to_.polygons_.push_back(static_cast<std::uint32_t>(to_.rings_.size() - 1));
  }

  void Skip(std::uint32_t points, std::uint32_t dimensions) {
    Require(points <= rest_.size() / 8 / dimensions);
    rest_ = rest_.subspan(8 * std::size_t{dimensions} * points);
  }

  std::uint32_t Number() {
    Require(rest_.size() >= 4);
    const auto number = static_cast<std::uint32_t>(Bits(0, 4));
    rest_ = rest_.subspan(4);
    return number;
  }

  double Double(std::size_t at) const { return DoubleOfBits(Bits(at, 8)); }

  std::uint64_t Bits(std::size_t at, std::size_t size) const {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < size; ++i) {
      bits = bits << 8 | rest_[at + (little_ ? size - 1 - i : i)];
    }
    return bits;
  }

  WkbPolygons& to_;
  std::span<const std::uint8_t> rest_;
  bool little_ = true;
};

void WkbPolygons::Add(std::span<const std::uint8_t> record) {
  if (!record.empty()) Reader(*this, record).Geometry(0);
  regions_.push_back(static_cast<std::uint32_t>(polygons_.size() - 1));
}

namespace {

constexpr std::uint64_t kHeaderBytes = 9;  // the order of bytes, the kind and a count

template <class Bits>
void Put(Bits bits, std::uint8_t*& to) noexcept {
  for (std::size_t i = 0; i < sizeof(Bits); ++i) *to++ = static_cast<std::uint8_t>(bits >> 8 * i);
}

void PutHeader(Kind kind, std::size_t count, std::uint8_t*& to) noexcept {
  *to++ = 1;
  Put(std::uint32_t{kind}, to);
  Put(static_cast<std::uint32_t>(count), to);
}

void PutPoint(WorldPoint p, std::uint8_t*& to) noexcept {
  Put(BitsOf(p.x), to);
  Put(BitsOf(p.y), to);
}

}  // namespace

std::uint64_t WkbSize(const zelvan_region* region) noexcept {
  if (IsEmpty(region)) return kHeaderBytes;
  const FlatRegion& flat = region->flat;
  const std::uint64_t several = flat.Polygons() > 1 ? kHeaderBytes : 0;
  return several + kHeaderBytes * flat.Polygons() + 20 * std::uint64_t{flat.Rings()} +
         16 * std::uint64_t{flat.points.size()};
}

std::uint8_t* WriteWkb(const zelvan_region* region, std::uint8_t* to) noexcept {
  if (IsEmpty(region)) {
    PutHeader(kMultiPolygon, 0, to);
    return to;
  }
  const FlatRegion& flat = region->flat;
  if (flat.Polygons() > 1) PutHeader(kMultiPolygon, flat.Polygons(), to);
  for (std::size_t p = 0; p < flat.Polygons(); ++p) {
    const std::uint32_t end = flat.polygonOffsets[p + 1];
    PutHeader(kPolygon, end - flat.polygonOffsets[p], to);
    for (std::uint32_t r = flat.polygonOffsets[p]; r < end; ++r) {
      const std::span<const GridPoint> ring = flat.Ring(r);
      Put(static_cast<std::uint32_t>(ring.size() + 1), to);
      for (const GridPoint point : ring) PutPoint(region->grid.PlaceOf(point), to);
      PutPoint(region->grid.PlaceOf(ring.front()), to);
    }
  }
  return to;
}

}  // namespace zelvan
