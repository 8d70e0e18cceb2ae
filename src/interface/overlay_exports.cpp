// The exported functions on overlays: arguments are checked here, failures become statuses, and
// no exception leaves.
#include <zelvan/overlay_c.h>

#include <algorithm>

#include "interface/region_arguments.h"
#include "interface/region_overlay.h"

namespace {

using namespace zelvan;

zelvan_part_counts CountsOf(const zelvan_overlay* overlay) noexcept {
  if (overlay == nullptr) return {};
  return {static_cast<std::uint32_t>(overlay->inputs.Size()),
          static_cast<std::uint32_t>(overlay->inputs.numbers.size())};
}

void RequireRoom(const zelvan_overlay* overlay, const zelvan_part_counts* room) {
  const zelvan_part_counts counts = CountsOf(overlay);
  Require(room != nullptr && room->parts == counts.parts && room->inputs == counts.inputs);
}

template <class T>
void CopyTo(T* to, const std::vector<T>& from) {
  if (to != nullptr) std::copy(from.begin(), from.end(), to);
}

}  // namespace

zelvan_status ZELVAN_CALL zelvan_overlay_create(const zelvan_region* const* regions, uint32_t count,
                                                const zelvan_overlay** overlay) {
  return Guarded(nullptr, [&] {
    Require(overlay != nullptr && (regions != nullptr || count == 0));
    *overlay = OverlayRegions({regions, count}).release();
  });
}

zelvan_status ZELVAN_CALL zelvan_coverage_check(const zelvan_region* const* regions, uint32_t count,
                                                double gap_width, double sliver_width,
                                                const zelvan_overlay** faults) {
  return Guarded(nullptr, [&] {
    Require(faults != nullptr && (regions != nullptr || count == 0));
    Require(gap_width >= 0.0 && sliver_width >= 0.0);
    *faults = CheckCoverage({regions, count}, gap_width, sliver_width).release();
  });
}

const zelvan_overlay* ZELVAN_CALL zelvan_overlay_retain(const zelvan_overlay* overlay) {
  if (overlay != nullptr) overlay->handles.fetch_add(1, std::memory_order_relaxed);
  return overlay;
}

void ZELVAN_CALL zelvan_overlay_release(const zelvan_overlay* overlay) {
  if (overlay != nullptr && overlay->handles.fetch_sub(1, std::memory_order_acq_rel) == 1) {
    delete overlay;
  }
}

void ZELVAN_CALL zelvan_overlay_counts(const zelvan_overlay* overlay, zelvan_part_counts* counts) {
  if (counts != nullptr) *counts = CountsOf(overlay);
}

zelvan_status ZELVAN_CALL zelvan_overlay_read(const zelvan_overlay* overlay,
                                              const zelvan_part_counts* room, uint32_t* offsets,
                                              uint32_t* inputs) {
  return Guarded(nullptr, [&] {
    RequireRoom(overlay, room);
    if (overlay != nullptr) {
      CopyTo(offsets, overlay->inputs.offsets);
      CopyTo(inputs, overlay->inputs.numbers);
    } else if (offsets != nullptr) {
      *offsets = 0;
    }
  });
}

zelvan_status ZELVAN_CALL zelvan_overlay_region(const zelvan_overlay* overlay, uint32_t part,
                                                const zelvan_region** region) {
  return Guarded(nullptr, [&] {
    Require(region != nullptr && part < CountsOf(overlay).parts);
    *region = Share(overlay->regions[part].get()).release();
  });
}

zelvan_status ZELVAN_CALL zelvan_coverage_read(const zelvan_overlay* faults,
                                               const zelvan_part_counts* room, int32_t* kinds,
                                               double* widths) {
  return Guarded(nullptr, [&] {
    RequireRoom(faults, room);
    Require(faults != nullptr && faults->isCheck);
    CopyTo(kinds, faults->kinds);
    CopyTo(widths, faults->widths);
  });
}
