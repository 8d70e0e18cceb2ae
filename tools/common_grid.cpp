#include "common_grid.h"

#include <algorithm>
#include <cmath>

namespace tool {
namespace {

constexpr double kSteps = 1048575;          // across the library's grid
constexpr double kMarginShare = 1.0 / 128;  // of the input's extent, on each side

double SnapAxis(double v, double low, double high) {
  return low + std::floor((v - low) / (high - low) * kSteps + 0.5) * ((high - low) / kSteps);
}

}  // namespace

CommonGrid::CommonGrid(const Box& box, bool scaled) {
  if (scaled) scale_ = Scale::For(box);
  input_ = {scale_.In(box.low), scale_.In(box.high)};
  const double x = (input_.high.x - input_.low.x) * kMarginShare;
  const double y = (input_.high.y - input_.low.y) * kMarginShare;
  grid_ = {{input_.low.x - x, input_.low.y - y}, {input_.high.x + x, input_.high.y + y}};
}

Ring CommonGrid::Snap(const Ring& ring) const {
  Ring snapped;
  for (const Point& p : Scaled(ring)) {
    const Point q{SnapAxis(p.x, grid_.low.x, grid_.high.x),
                  SnapAxis(p.y, grid_.low.y, grid_.high.y)};
    if (snapped.empty() || !(q == snapped.back())) snapped.push_back(q);
  }
  while (snapped.size() > 1 && snapped.front() == snapped.back()) snapped.pop_back();
  return snapped;
}

Ring CommonGrid::Scaled(const Ring& ring) const {
  Ring scaled;
  for (const Point& p : ring) scaled.push_back(scale_.In(p));
  return scaled;
}

// Half the margin wide: half of it stays free between anchor and input.
std::array<Ring, 2> CommonGrid::Anchors() const {
  const auto& [low, high] = grid_;
  const double x = (input_.low.x - low.x) / 2;
  const double y = (input_.low.y - low.y) / 2;
  return {Ring{low, {low.x + x, low.y}, {low.x, low.y + y}},
          Ring{high, {high.x - x, high.y}, {high.x, high.y - y}}};
}

Mesh CommonGrid::WithoutAnchors(const Mesh& mesh) const {
  const double gap = (input_.low.x - grid_.low.x) / 4;
  Mesh rest;
  for (const Mesh& area : SplitAreas(mesh)) {
    Box box;
    box.Add(area.vertices);
    const bool anchor = box.high.x < input_.low.x - gap || box.low.x > input_.high.x + gap;
    if (!anchor) Append(rest, area);
  }
  return rest;
}

Mesh CommonGrid::Unscaled(Mesh mesh) const {
  for (Point& p : mesh.vertices) p = scale_.Out(p);
  return mesh;
}

}  // namespace tool
