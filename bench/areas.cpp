#include "areas.h"

#include <algorithm>
#include <cmath>

namespace bench {
namespace {

double Extent(const std::vector<Xyz>& contours, std::size_t axis) {
  double low = contours[0][axis], high = low;
  for (const Xyz& contour : contours) {
    for (std::size_t i = axis; i < contour.size(); i += 3) {
      low = std::min(low, contour[i]);
      high = std::max(high, contour[i]);
    }
  }
  return high - low;
}

}  // namespace

double TwiceArea(const Xyz& contour) {
  double sum = 0;
  for (std::size_t i = 0, j = contour.size() - 3; i < contour.size(); j = i, i += 3) {
    // About the first point: large coordinates cost no digits.
    sum += (contour[j] - contour[0]) * (contour[i + 1] - contour[1]) -
           (contour[i] - contour[0]) * (contour[j + 1] - contour[1]);
  }
  return sum;
}

double AreaOf(const std::vector<Polygon>& polygons) {
  double sum = 0;
  for (const Polygon& polygon : polygons) {
    sum += std::abs(TwiceArea(polygon.outer)) / 2;
    for (const Xyz& hole : polygon.holes) sum -= std::abs(TwiceArea(hole)) / 2;
  }
  return sum;
}

double GridTolerance(const std::vector<Xyz>& contours) {
  const double steps = 1048575;
  const double width = Extent(contours, 0);
  const double height = Extent(contours, 1);
  // A vertex that moves across the line between its neighbours changes the area by
  // half of the distance times their own. Alone, vertices add up as squares.
  double squares = 0;
  for (const Xyz& contour : contours) {
    const std::size_t n = VertexCount(contour);
    for (std::size_t i = 0; i < n; ++i) {
      const std::size_t next = 3 * ((i + 2) % n);
      squares += std::pow((contour[next] - contour[3 * i]) * height, 2) +
                 std::pow((contour[next + 1] - contour[3 * i + 1]) * width, 2);
    }
  }
  return (4 * std::sqrt(squares) + 8 * width * height) / steps;
}

}  // namespace bench
