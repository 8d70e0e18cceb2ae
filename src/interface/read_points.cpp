// Coordinates to polygon (read_points.h).
#include "interface/read_points.h"

#include <zelvan/error.h>

#include <cstddef>

#include "boolean/snapped_contour.h"
#include "polygon/build_shape.h"
#include "polygon/input_predicates.h"

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

// Does the edge that validation leaves out cross another one, by the test that
// validation holds the others to? Takes the points as given.
bool ClosingEdgeCrosses(PointList list) {
  RemoveCollinear(list);
  for (std::size_t i = 1; i + 2 < list.size(); ++i) {
    if (SegmentsCross(list[i], list[i + 1], list.back(), list.front())) return true;
  }
  return false;
}

}  // namespace

std::unique_ptr<Shape> ReadPoints(int count, const double* xyz) noexcept {
  if (xyz == nullptr || count < 0) return nullptr;
  try {
    bool apart = false;
    std::unique_ptr<Shape> shape = BuildShape(PointsOf(count, xyz), &apart);
    if (shape != nullptr && shape->areas != nullptr && !IsSoundContour(shape->areas, apart) &&
        !ClosingEdgeCrosses(PointsOf(count, xyz))) {
      ReplaceByRegion(*shape);
    }
    return shape;
  } catch (...) {
    ERR::Clear();
    return nullptr;
  }
}

}  // namespace zelvan
