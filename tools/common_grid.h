// One grid for many contours, and how a host keeps the library on it.
//
// The library computes on a grid over the box of what it combines, so a region
// that grows from call to call would move by up to half a step each time, and
// neighbours that share a border would come to miss each other by a step. Two
// small triangles, the anchors, in opposite corners outside of all input keep
// the box, and with it the grid, the same from the first call to the last; and
// contours are put on that grid before they are given. What is shared is then
// shared exactly, and borders between neighbours vanish without a trace.
#pragma once

#include <array>

#include "geometry.h"
#include "mesh.h"
#include "scale.h"

namespace tool {

class CommonGrid {
 public:
  // `box` holds all input; with `scaled`, the grid lies in scaled units.
  CommonGrid(const Box& box, bool scaled);

  // From input units to the nearest point of the grid; points that come to
  // repeat their neighbour are left out.
  Ring Snap(const Ring& ring) const;

  // From input units to the library's, the grid aside.
  Ring Scaled(const Ring& ring) const;

  std::array<Ring, 2> Anchors() const;

  // What was read back, less the anchors; in the library's units.
  Mesh WithoutAnchors(const Mesh& mesh) const;

  // Back to input units.
  Mesh Unscaled(Mesh mesh) const;

 private:
  Scale scale_;
  Box input_;
  Box grid_;
};

}  // namespace tool
