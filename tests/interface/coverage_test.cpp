// Faults planted in a cadastre of parcels with jagged borders: all are found, and no other.
// ZELVAN_CADASTRE is the number of parcels along a side.
#include <gtest/gtest.h>
#include <zelvan/overlay.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <tuple>

#include "support/random.h"

namespace {

using zelvan::FaultKind;
using zelvan::Point;
using zelvan::Region;
using zelvan::Ring;

using Fault = std::tuple<FaultKind, std::vector<std::uint32_t>, double>;  // the last: area

// Squares of 100 by 100 steps; each border between two corners has two points beside the straight
// line, which both parcels have.
class Cadastre {
 public:
  Cadastre(std::uint64_t seed, std::int32_t side) : random_(seed), side_(side) {
    const auto borders = static_cast<std::size_t>(side + 1) * static_cast<std::size_t>(side + 1);
    for (auto& axis : offsets_) {
      for (std::size_t i = 0; i < borders; ++i) {
        axis.push_back({random_.Between(-20, 20), random_.Between(-20, 20)});
      }
    }
    for (std::int32_t y = 0; y < side; ++y) {
      for (std::int32_t x = 0; x < side; ++x) rings_.push_back(Parcel(x, y));
    }
  }

  // Gives the parcel left of an upright border a point of its own there, or a parcel more.
  void Plant(std::int32_t x, std::int32_t y) {
    Ring& ring = rings_[Number(x - 1, y)];
    const Point a = Between(1, x, y, 0), b = Between(1, x, y, 1);
    const int kind = random_.Below(3);
    const double aside = kind == 0 ? 8 : -8;
    const Point m{std::floor((a.x + b.x) / 2) + aside, std::floor((a.y + b.y) / 2)};
    ring.insert(std::find(ring.begin(), ring.end(), b), m);
    std::vector<std::uint32_t> inputs{Number(x - 1, y), Number(x, y)};
    if (kind == 2) {
      inputs = {static_cast<std::uint32_t>(rings_.size())};
      rings_.push_back({a, b, m});
    }
    const double area = std::abs((b.x - a.x) * (m.y - a.y) - (b.y - a.y) * (m.x - a.x)) / 2;
    planted_.emplace_back(FaultKind{kind}, inputs, area);
  }

  void PlantSome() {
    for (std::int32_t y = 0; y < side_; ++y) {
      for (std::int32_t x = 1; x < side_; ++x) {
        if (random_.Below(20) == 0) Plant(x, y);
      }
    }
    std::sort(planted_.begin(), planted_.end());
  }

  [[nodiscard]] std::vector<Region> Regions() const {
    std::vector<Region> regions;
    for (const Ring& ring : rings_) {
      regions.push_back(Region({ring}, zelvan::FillRule::NonZero, zelvan::Grid()));
    }
    return regions;
  }
  [[nodiscard]] const std::vector<Fault>& Planted() const { return planted_; }

 private:
  [[nodiscard]] std::uint32_t Number(std::int32_t x, std::int32_t y) const {
    return static_cast<std::uint32_t>(y * side_ + x);
  }
  [[nodiscard]] static Point Corner(std::int32_t x, std::int32_t y) {
    return {100.0 * x, 100.0 * y};
  }
  // One of the two points of the border that goes from a corner to the right, or up (axis 1).
  [[nodiscard]] Point Between(std::size_t axis, std::int32_t x, std::int32_t y, int which) const {
    const std::array<int, 2>& offset =
        offsets_[axis][static_cast<std::size_t>(y * (side_ + 1) + x)];
    const Point corner = Corner(x, y);
    const double along = which == 0 ? 33 : 67;
    const double aside = offset[static_cast<std::size_t>(which)];
    return axis == 0 ? Point{corner.x + along, corner.y + aside}
                     : Point{corner.x + aside, corner.y + along};
  }
  [[nodiscard]] Ring Parcel(std::int32_t x, std::int32_t y) const {
    return {Corner(x, y),         Between(0, x, y, 0),     Between(0, x, y, 1),
            Corner(x + 1, y),     Between(1, x + 1, y, 0), Between(1, x + 1, y, 1),
            Corner(x + 1, y + 1), Between(0, x, y + 1, 1), Between(0, x, y + 1, 0),
            Corner(x, y + 1),     Between(1, x, y, 1),     Between(1, x, y, 0)};
  }

  zelvan::test::Random random_;
  std::int32_t side_;
  std::array<std::vector<std::array<int, 2>>, 2> offsets_;
  std::vector<Ring> rings_;
  std::vector<Fault> planted_;
};

TEST(Coverage, PlantedFaultsAreFoundAndNoOther) {
  const char* text = std::getenv("ZELVAN_CADASTRE");
  const std::int32_t side = text != nullptr ? std::atoi(text) : 30;
  for (std::uint64_t seed = 0; seed < (text != nullptr ? 1 : 10); ++seed) {
    Cadastre cadastre(seed, side);
    cadastre.PlantSome();
    const std::vector<Region> regions = cadastre.Regions();
    std::vector<Fault> found;
    for (const auto& fault : zelvan::CheckCoverage(regions, {20, 10})) {
      found.emplace_back(fault.kind, fault.inputs, fault.region.Area());
    }
    std::sort(found.begin(), found.end());
    ASSERT_EQ(found, cadastre.Planted()) << "seed " << seed;
  }
}

}  // namespace
