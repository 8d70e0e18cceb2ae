/// @file
/// Layers: whose is what, and what is wrong with regions that ought to tile.
///
///     using namespace zelvan;
///     const Region land({{{0, 0}, {4, 0}, {4, 4}, {0, 4}}});
///     const Region flood({{{2, 1}, {6, 1}, {6, 3}, {2, 3}}});
///     const std::vector<Part> parts = Overlay(std::vector<Region>{land, flood});
///     // {0}: the land that stays dry, {0, 1}: the flooded land, {1}: the rest of the flood
///     const double flooded = parts[1].region.Area();
///
/// A thin header over the plain C functions of zelvan/overlay_c.h, as zelvan/region.h is over
/// those of regions; what is guaranteed there holds here. Regions go first to one grid, as for
/// Unite, and all failures are those of Unite.
#ifndef ZELVAN_OVERLAY_H
#define ZELVAN_OVERLAY_H

#include <zelvan/overlay_c.h>
#include <zelvan/region.h>

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <vector>

namespace zelvan {

/// Some ground, and the numbers of the regions that cover it: just these, ascending.
struct Part {
  Region region;                      ///< the ground
  std::vector<std::uint32_t> inputs;  ///< the numbers
};

/// What is wrong with a place of a coverage.
enum class FaultKind : std::int32_t {
  Overlap = ZELVAN_OVERLAP,  ///< two regions or more cover it
  Gap = ZELVAN_GAP,          ///< no region covers it, and it is bounded
  Sliver = ZELVAN_SLIVER     ///< a polygon of a region is too narrow
};

/// One polygon of a coverage at which something is wrong.
struct CoverageFault {
  FaultKind kind;                     ///< what is wrong
  Region region;                      ///< the polygon
  std::vector<std::uint32_t> inputs;  ///< its owners; those next to a gap; ascending
  double width;                       ///< 2 area / perimeter: of a long strip its width
};

/// What counts as a fault besides overlaps.
struct CoverageLimits {
  double gapWidth = std::numeric_limits<double>::infinity();  ///< wider gaps do not; 0: none does
  double sliverWidth = 0.0;                                   ///< narrower polygons do
};

namespace detail {

struct OverlayReleaser {
  void operator()(const zelvan_overlay* overlay) const noexcept { zelvan_overlay_release(overlay); }
};
using OverlayHandle = std::unique_ptr<const zelvan_overlay, OverlayReleaser>;

// By one of the functions that make overlays.
template <class Make>
OverlayHandle MakeOverlay(const Handles& handles, Make make) {
  if (handles.size() > (std::numeric_limits<std::int32_t>::max)()) Check(ZELVAN_TOO_LARGE);
  const zelvan_overlay* overlay = nullptr;
  CheckOperation(make(handles.data(), static_cast<std::uint32_t>(handles.size()), &overlay),
                 handles.data(), handles.size());
  return OverlayHandle(overlay);
}

inline zelvan_part_counts CountsOf(const OverlayHandle& overlay) noexcept {
  zelvan_part_counts counts{};
  zelvan_overlay_counts(overlay.get(), &counts);
  return counts;
}

inline std::vector<Part> PartsOf(const OverlayHandle& overlay) {
  const zelvan_part_counts counts = CountsOf(overlay);
  std::vector<std::uint32_t> offsets(std::size_t{counts.parts} + 1);
  std::vector<std::uint32_t> inputs(counts.inputs);
  Check(zelvan_overlay_read(overlay.get(), &counts, offsets.data(), inputs.data()));
  std::vector<Part> parts(counts.parts);
  for (std::uint32_t i = 0; i < counts.parts; ++i) {
    const zelvan_region* region = nullptr;
    Check(zelvan_overlay_region(overlay.get(), i, &region));
    parts[i].region = Region::Adopt(region);
    parts[i].inputs.assign(inputs.data() + offsets[i], inputs.data() + offsets[i + 1]);
  }
  return parts;
}

}  // namespace detail

/// For each set of regions, of a range, that covers some ground, the region that just these cover,
/// in one sweep. Parts come in the order of their inputs, as sequences of ascending numbers.
///
/// Parts fit: what two of them share are edges, end for end. So a part has vertices wherever three
/// edges or more of the overlay meet, on straight edges, too, which count for no comparison and no
/// operation.
template <class Regions, class = detail::IfRegions<Regions>>
std::vector<Part> Overlay(const Regions& regions) {
  return detail::PartsOf(detail::MakeOverlay(
      detail::HandlesOf(regions),
      [](auto list, auto count, auto made) { return zelvan_overlay_create(list, count, made); }));
}

/// The union of the regions of each key: one key a region, in the same order. Throws
/// std::invalid_argument where there are more of the one than of the other.
template <class Regions, class Keys, class = detail::IfRegions<Regions>>
auto Dissolve(const Regions& regions, const Keys& keys) {
  std::map<std::decay_t<decltype(*std::begin(keys))>, std::vector<Region>> groups;
  auto key = std::begin(keys);
  for (const Region& region : regions) {
    if (key == std::end(keys)) throw std::invalid_argument("there are fewer keys than regions");
    groups[*key].push_back(region);
    ++key;
  }
  if (key != std::end(keys)) throw std::invalid_argument("there are more keys than regions");
  std::map<std::decay_t<decltype(*std::begin(keys))>, Region> united;
  for (const auto& group : groups) united.emplace(group.first, Unite(group.second));
  return united;
}

/// What is wrong with regions that ought to tile: every overlap with its owners, every gap with its
/// neighbours, every sliver. Overlaps come first, in the order of their owners, then gaps, then
/// slivers in the order of the regions. A gap is a bounded polygon that no region covers: a
/// lake is one, too, unless it is wider than limits say; what is open to the outside is none.
template <class Regions, class = detail::IfRegions<Regions>>
std::vector<CoverageFault> CheckCoverage(const Regions& regions,
                                         const CoverageLimits& limits = {}) {
  const detail::OverlayHandle check =
      detail::MakeOverlay(detail::HandlesOf(regions), [&limits](auto list, auto count, auto made) {
        return zelvan_coverage_check(list, count, limits.gapWidth, limits.sliverWidth, made);
      });
  std::vector<Part> parts = detail::PartsOf(check);
  const zelvan_part_counts counts = detail::CountsOf(check);
  std::vector<std::int32_t> kinds(parts.size());
  std::vector<double> widths(parts.size());
  detail::Check(zelvan_coverage_read(check.get(), &counts, kinds.data(), widths.data()));
  std::vector<CoverageFault> faults;
  faults.reserve(parts.size());
  for (std::size_t i = 0; i < parts.size(); ++i) {
    faults.push_back({static_cast<FaultKind>(kinds[i]), std::move(parts[i].region),
                      std::move(parts[i].inputs), widths[i]});
  }
  return faults;
}

}  // namespace zelvan

#endif
