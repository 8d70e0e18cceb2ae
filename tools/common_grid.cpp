#include "common_grid.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tool {
namespace {

constexpr double kMarginShare = 1.0 / 64;  // of the input's extent, at least

}  // namespace

double CommonGrid::Axis::Snap(double v) const {
  return std::floor(v / step + 0.5) * step;
}

// The smallest step that leaves a margin, the input in the middle.
CommonGrid::Axis CommonGrid::AxisOver(double low, double high) {
  const double extent = std::max(high - low, std::numeric_limits<double>::min());
  Axis axis;
  axis.step = std::ldexp(1.0, std::ilogb(extent) - 20);
  while (kGridSteps * axis.step < extent * (1 + kMarginShare)) axis.step *= 2;
  const double width = kGridSteps * axis.step;
  axis.low = axis.Snap(low - (width - extent) / 2);
  axis.high = axis.low + width;
  return axis;
}

CommonGrid::CommonGrid(const Box& box, bool scaled) {
  if (scaled) scale_ = Scale::For(box);
  input_ = {scale_.In(box.low), scale_.In(box.high)};
  x_ = AxisOver(input_.low.x, input_.high.x);
  y_ = AxisOver(input_.low.y, input_.high.y);
}

Ring CommonGrid::Snap(const Ring& ring) const {
  Ring snapped;
  for (const Point& p : scale_.In(ring)) {
    const Point q = Snap(p);
    if (snapped.empty() || !(q == snapped.back())) snapped.push_back(q);
  }
  while (snapped.size() > 1 && snapped.front() == snapped.back()) snapped.pop_back();
  return snapped;
}

// Half the margin wide: half of it stays free between anchor and input.
std::array<Ring, 2> CommonGrid::Anchors() const {
  const double x = (input_.low.x - x_.low) / 2;
  const double y = (input_.low.y - y_.low) / 2;
  return {Ring{{x_.low, y_.low}, {x_.low + x, y_.low}, {x_.low, y_.low + y}},
          Ring{{x_.high, y_.high}, {x_.high - x, y_.high}, {x_.high, y_.high - y}}};
}

Mesh CommonGrid::WithoutAnchors(const Mesh& mesh) const {
  const double gap = (input_.low.x - x_.low) / 4;
  Mesh rest = Without(mesh, [&](const Ring& ring) {
    Box box;
    box.Add(ring);
    return box.high.x < input_.low.x - gap || box.low.x > input_.high.x + gap;
  });
  for (Point& p : rest.vertices) p = Snap(p);
  return rest;
}

Mesh CommonGrid::Unscaled(Mesh mesh) const {
  mesh.vertices = Unscaled(std::move(mesh.vertices));
  return mesh;
}

Ring CommonGrid::Unscaled(Ring ring) const {
  for (Point& p : ring) p = scale_.Out(p);
  return ring;
}

}  // namespace tool
