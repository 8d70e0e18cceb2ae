// Polygons as GEOS geometries, and who destroys them.
#pragma once

#include <geos_c.h>

#include <memory>
#include <stdexcept>
#include <vector>

#include "../job.h"

namespace bench {

/// One context for the process, which is an entry's own.
inline GEOSContextHandle_t Geos() {
  static const GEOSContextHandle_t context = GEOS_init_r();
  return context;
}

struct GeosDestroy {
  void operator()(GEOSGeometry* geometry) const { GEOSGeom_destroy_r(Geos(), geometry); }
};
using GeosGeometry = std::unique_ptr<GEOSGeometry, GeosDestroy>;

/// What GEOS answers with null is an exception on its side.
inline GeosGeometry Checked(GEOSGeometry* geometry) {
  if (geometry == nullptr) throw std::runtime_error("GEOS reports an error");
  return GeosGeometry(geometry);
}

inline GEOSGeometry* GeosRing(const Xyz& contour) {
  const std::size_t n = VertexCount(contour);
  GEOSCoordSequence* points = GEOSCoordSeq_create_r(Geos(), static_cast<unsigned>(n + 1), 2);
  for (std::size_t i = 0; i <= n; ++i) {
    const double* point = contour.data() + 3 * (i % n);
    GEOSCoordSeq_setXY_r(Geos(), points, static_cast<unsigned>(i), point[0], point[1]);
  }
  return GEOSGeom_createLinearRing_r(Geos(), points);
}

inline GeosGeometry GeosPolygon(const Polygon& polygon) {
  std::vector<GEOSGeometry*> holes;
  for (const Xyz& hole : polygon.holes) holes.push_back(GeosRing(hole));
  return Checked(GEOSGeom_createPolygon_r(Geos(), GeosRing(polygon.outer), holes.data(),
                                          static_cast<unsigned>(holes.size())));
}

inline double GeosAreaOf(const GeosGeometry& geometry) {
  double area = 0;
  GEOSArea_r(Geos(), geometry.get(), &area);
  return area;
}

}  // namespace bench
