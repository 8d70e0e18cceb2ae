// Coordinates to polygon (read_points.h).
#include "interface/read_points.h"

#include <zelvan/error.h>

#include <cstddef>

#include "boolean/snapped_contour.h"
#include "polygon/build_shape.h"
#include "polygon/closing_edge.h"

namespace zelvan {

namespace {

PointList PointsOf(int count, const double* xyz) {
  PointList points(static_cast<std::size_t>(count) / 3);
  for (InputPoint& p : points) {
    p = {xyz[0], xyz[1], xyz[2]};
    xyz += 3;
  }
  return points;
}

}  // namespace

std::unique_ptr<Shape> ReadPoints(int count, const double* xyz) noexcept {
  if (xyz == nullptr || count < 0) return nullptr;
  try {
    const ValidatedContour contour(PointsOf(count, xyz));
    std::unique_ptr<Shape> shape = BuildShape(contour);
    if (shape->areas != nullptr && !IsSoundContour(shape->areas, contour.ChainStaysApart()) &&
        !ClosingEdgeCrosses(contour.Points())) {
      ReplaceByRegion(*shape);
    }
    return shape;
  } catch (...) {
    ERR::Clear();
    return nullptr;
  }
}

}  // namespace zelvan
