// The one door to GEOS: reading text into polygons, mending them, and saying
// what is wrong with them. Failures are exceptions with GEOS's own words. A program
// built without GEOS has the same door with less behind it (without_geos.cpp).
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "geometry.h"

typedef struct GEOSContextHandle_HS* GEOSContextHandle_t;
typedef struct GEOSGeom_t GEOSGeometry;

namespace tool {

// What a geometry holds once collections are walked.
struct Parts {
  std::vector<Polygon> polygons;     // none of them empty
  std::vector<std::string> refused;  // a reason for each part that is no usable polygon
};

class Geos {
 public:
  Geos();
  ~Geos();
  Geos(const Geos&) = delete;
  Geos& operator=(const Geos&) = delete;

  // Both throw std::runtime_error when the text is no geometry.
  Parts ReadGeoJson(const std::string& text);
  Parts ReadWkt(const std::string& text);

  // What is wrong with a polygon by the rules of simple features, or nothing.
  std::string WhyInvalid(const Polygon& polygon);

  // What is wrong with a polygon whose area is not that of its outer contour less its
  // holes: contours cross, or a hole lies outside or in another. Nothing where contours
  // only touch, and where they have no area.
  std::string WhyOverlapping(const Polygon& polygon);

  // Whether this program was built with GEOS, which Repair needs.
  static bool CanRepair();

  // The valid polygons of the region that an invalid one covers by the even-odd rule,
  // possibly none: each contour by GEOS's MakeValid, then what an odd number of them
  // holds. Throws std::runtime_error.
  std::vector<Polygon> Repair(const Polygon& polygon);

  // The pairs of contours that have a point in common, or of which that cannot
  // be told. A contour that is no ring at all is in no pair.
  std::vector<std::pair<std::size_t, std::size_t>> Contacts(const std::vector<Ring>& contours);

 private:
  struct Release {
    GEOSContextHandle_t context;
    void operator()(GEOSGeometry* geometry) const;
  };
  using Geometry = std::unique_ptr<GEOSGeometry, Release>;

  Geometry Own(GEOSGeometry* geometry);  // throws the last error for null
  Geometry RingGeometry(const Ring& ring);
  Geometry Valid(const Ring& ring);
  Geometry Build(const Polygon& polygon);
  Ring Read(const GEOSGeometry* ring) const;
  void Collect(const GEOSGeometry* geometry, Parts& parts) const;

  GEOSContextHandle_t context_;
  std::string error_;
};

}  // namespace tool
