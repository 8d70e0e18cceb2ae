// Geometries of GEOS that free themselves, made of contours.
#pragma once

#include <geos_c.h>

#include <memory>
#include <vector>

#include "contours.h"
#include "harness.h"

namespace bench {

inline GEOSContextHandle_t Geos() {
  static const GEOSContextHandle_t context = GEOS_init_r();
  return context;
}

struct DestroyGeometry {
  void operator()(GEOSGeometry* geometry) const { GEOSGeom_destroy_r(Geos(), geometry); }
};
using Geometry = std::unique_ptr<GEOSGeometry, DestroyGeometry>;

inline GEOSGeometry* Ring(const Xyz& contour) {
  const auto size = static_cast<unsigned>(contour.size() / 3);
  GEOSCoordSequence* points = GEOSCoordSeq_create_r(Geos(), size + 1, 2);
  for (unsigned i = 0; i <= size; ++i) {
    const std::size_t at = 3 * std::size_t{i % size};
    GEOSCoordSeq_setXY_r(Geos(), points, i, contour[at], contour[at + 1]);
  }
  return GEOSGeom_createLinearRing_r(Geos(), points);
}

inline Geometry GeometryOf(const Polygon& polygon) {
  std::vector<GEOSGeometry*> holes;
  for (std::size_t i = 1; i < polygon.size(); ++i) holes.push_back(Ring(polygon[i]));
  return Geometry(GEOSGeom_createPolygon_r(Geos(), Ring(polygon[0]), holes.data(),
                                           static_cast<unsigned>(holes.size())));
}

inline double Area(const Geometry& geometry) {
  double area = 0.0;
  Require(GEOSArea_r(Geos(), geometry.get(), &area) == 1, "GEOS cannot tell the area");
  return area;
}

}  // namespace bench
