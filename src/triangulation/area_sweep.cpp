// The sweep over the contours of an area (area_sweep.h).
#include "triangulation/area_sweep.h"

#include <cstddef>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "triangulation/chains.h"
#include "triangulation/plane_sweep.h"
#include "triangulation/sweep_records.h"
#include "triangulation/triangle_writer.h"

namespace VORNEX {

namespace {

// The vertices of an area, contour by contour.
struct FlatArea {
  std::vector<VertexNode*> nodes;
  std::vector<SweepVertex> vertices;
  std::uint32_t contours = 0;
};

// @return false when a ring is not as long as its contour says, or shorter than 3
bool Flatten(const zelvan::Area& area, FlatArea& flat) {
  std::size_t n = 0;
  for (const zelvan::Contour* c = area.contours; c != nullptr; c = c->next) n += c->count;
  flat.nodes.reserve(n);
  flat.vertices.reserve(n);
  for (const zelvan::Contour* c = area.contours; c != nullptr; c = c->next) {
    const auto first = static_cast<std::uint32_t>(flat.nodes.size());
    VertexNode* v = c->head;
    for (std::uint32_t i = first; i - first < c->count && (i == first || v != c->head); ++i) {
      flat.nodes.push_back(v);
      flat.vertices.push_back({v->grid, i - 1, i + 1, kNone});
      v = v->next;
    }
    const auto end = static_cast<std::uint32_t>(flat.nodes.size());
    if (c->count < 3 || v != c->head || end - first != c->count) return false;
    flat.vertices[first].prev = end - 1;
    flat.vertices[end - 1].next = first;
    ++flat.contours;
  }
  return n > 0;
}

zelvan::KeyOrder OrderOf(std::span<const SweepVertex> vertices) {
  return zelvan::SortByKey(static_cast<std::uint32_t>(vertices.size()), [=](std::uint32_t v) {
    return zelvan::KeyFromTheTop(vertices[v].point);
  });
}

}  // namespace

bool TriangulateBySweep(zelvan::Area& area, const SweepSettings& settings) {
  area.triangles.reset();
  area.triangleCount = 0;
  FlatArea flat;
  if (!Flatten(area, flat)) return false;
  const auto n = static_cast<std::uint32_t>(flat.vertices.size());
  const std::uint32_t count = n + 2 * flat.contours - 4;
  // Not by std::make_unique_for_overwrite, which older standard libraries lack.
  std::unique_ptr<zelvan::Triangle[]> triangles(new zelvan::Triangle[count]);
  TriangleWriter writer({triangles.get(), count}, flat.nodes, settings.mesh, settings.numbering);
  Chains<TriangleWriter> chains(writer);
  PlaneSweep<Chains<TriangleWriter>, true> sweep(chains);
  chains.Begin();
  sweep.Begin(flat.vertices);
  const bool isKnown = settings.order != nullptr && settings.order->positions.size() == n;
  zelvan::KeyOrder order = isKnown ? *settings.order : OrderOf(flat.vertices);
  for (const zelvan::KeyOrder::Run& run : order.equal) {
    sweep.ArrangeShared(std::span(order.positions).subspan(run.begin, run.end - run.begin));
  }
  const bool found = sweep.Run(order.positions) && writer.IsComplete();
  if (settings.counts != nullptr) *settings.counts = {sweep.steps(), chains.steps()};
  if (!found) return false;
  area.triangles = std::move(triangles);
  area.triangleCount = count;
  return true;
}

}  // namespace VORNEX
