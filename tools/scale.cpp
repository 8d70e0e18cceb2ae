#include "scale.h"

#include <algorithm>
#include <cmath>

namespace tool {

// Halves are subtracted, so that the extent of the largest doubles is finite.
Scale Scale::For(const Box& box) {
  Scale scale;
  const double half = std::max(box.high.x / 2 - box.low.x / 2, box.high.y / 2 - box.low.y / 2);
  if (!box.Empty() && std::isfinite(half) && half > 0) scale.exponent_ = 18 - std::ilogb(half);
  return scale;
}

Point Scale::In(const Point& p) const {
  return {std::ldexp(p.x, exponent_), std::ldexp(p.y, exponent_)};
}

Ring Scale::In(const Ring& ring) const {
  Ring scaled;
  for (const Point& p : ring) scaled.push_back(In(p));
  return scaled;
}

Point Scale::Out(const Point& p) const {
  return {std::ldexp(p.x, -exponent_), std::ldexp(p.y, -exponent_)};
}

}  // namespace tool
