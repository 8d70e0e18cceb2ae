// Coordinates to polygon (read_points.h).
#include "interface/read_points.h"

#include <zelvan/error.h>

#include <cstddef>
#include <utility>

#include "boolean/snapped_contour.h"
#include "polygon/build_shape.h"
#include "polygon/input_predicates.h"

namespace zelvan {

namespace {

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
    const std::size_t n = static_cast<std::size_t>(count) / 3;
    PointList points(n);
    for (std::size_t i = 0; i < n; ++i) points[i] = {xyz[3 * i], xyz[3 * i + 1], xyz[3 * i + 2]};
    std::unique_ptr<Shape> shape = BuildShape(n, points.data());
    if (shape != nullptr && shape->areas != nullptr && !IsSoundContour(shape->areas) &&
        !ClosingEdgeCrosses(std::move(points))) {
      ReplaceByRegion(*shape);
    }
    return shape;
  } catch (...) {
    ERR::Clear();
    return nullptr;
  }
}

}  // namespace zelvan
