// Coordinates to polygon (read_points.h).
#include "interface/read_points.h"

#include <zelvan/error.h>

#include <cstddef>
#include <utility>

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

// Does the contour of these points cross itself as given, through its closing edge?
bool CrossesAsGiven(PointList list) {
  RemoveCollinear(list);
  return ClosingEdgeCrosses(std::move(list));
}

}  // namespace

std::unique_ptr<Shape> ReadPoints(int count, const double* xyz) noexcept {
  if (xyz == nullptr || count < 0) return nullptr;
  try {
    bool apart = false;
    std::unique_ptr<Shape> shape = BuildShape(PointsOf(count, xyz), &apart);
    if (shape != nullptr && shape->areas != nullptr && !IsSoundContour(shape->areas, apart) &&
        !CrossesAsGiven(PointsOf(count, xyz))) {
      ReplaceByRegion(*shape);
    }
    return shape;
  } catch (...) {
    ERR::Clear();
    return nullptr;
  }
}

}  // namespace zelvan
