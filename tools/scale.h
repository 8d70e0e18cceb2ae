// Scaling by a power of two, which doubles do without rounding. It brings small
// units (degrees, metres of a chip) to where the library's absolute tolerance
// is less than one part in 10^16 of the squared extent, and is undone on the way out.
#pragma once

#include "geometry.h"

namespace tool {

class Scale {
 public:
  Scale() = default;  // leaves numbers alone

  // The power of two that brings the larger extent of the box to [2^19, 2^20).
  static Scale For(const Box& box);

  Point In(const Point& p) const;
  Ring In(const Ring& ring) const;
  Point Out(const Point& p) const;

 private:
  int exponent_ = 0;
};

}  // namespace tool
