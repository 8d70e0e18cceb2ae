// One grid for many contours, and how a host keeps the library on it.
//
// The library computes on a grid over the box of what it combines, so a region
// that grows from call to call would move by up to half a step each time, and
// neighbours that share a border would come to miss each other by a step. Two
// small triangles, the anchors, in opposite corners outside of all input keep
// the box, and with it the grid, the same from the first call to the last; and
// contours are put on that grid before they are given. What is shared is then
// shared exactly, and borders between neighbours vanish without a trace.
//
// The step is a power of two on each axis and the grid holds its multiples, so
// that whole numbers, and halves and quarters, come out as they went in.
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
  Ring Scaled(const Ring& ring) const { return scale_.In(ring); }

  std::array<Ring, 2> Anchors() const;

  // What was read back, put on the grid to the last bit and less the anchors; in
  // the library's units.
  Mesh WithoutAnchors(const Mesh& mesh) const;

  // Back to input units.
  Mesh Unscaled(Mesh mesh) const;
  Ring Unscaled(Ring ring) const;

 private:
  struct Axis {
    double low = 0;
    double high = 0;
    double step = 1;

    double Snap(double v) const;
  };

  static Axis AxisOver(double low, double high);
  Point Snap(const Point& p) const { return {x_.Snap(p.x), y_.Snap(p.y)}; }

  Scale scale_;
  Box input_;  // in the library's units
  Axis x_;
  Axis y_;
};

}  // namespace tool
