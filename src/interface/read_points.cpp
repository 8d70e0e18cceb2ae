// Coordinates to polygon (read_points.h).
#include "interface/read_points.h"

#include <zelvan/error.h>

#include <cstddef>

#include "polygon/build_shape.h"

namespace zelvan {

std::unique_ptr<Shape> ReadPoints(int count, const double* xyz) noexcept {
  if (xyz == nullptr || count < 0) return nullptr;
  try {
    const std::size_t n = static_cast<std::size_t>(count) / 3;
    PointList points(n);
    for (std::size_t i = 0; i < n; ++i) points[i] = {xyz[3 * i], xyz[3 * i + 1], xyz[3 * i + 2]};
    return BuildShape(n, points.data());
  } catch (...) {
    ERR::Clear();
    return nullptr;
  }
}

}  // namespace zelvan
