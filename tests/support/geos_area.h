// Areas of Boolean operations by GEOS, through its C interface: the second opinion
// on full grids.
#pragma once

#include <string>
#include <vector>

namespace support {

struct Xy {
  double x;
  double y;
};
using WorldRing = std::vector<Xy>;
using WorldAreas = std::vector<std::vector<WorldRing>>;  // outer boundary, then holes

struct GeosMeasure {
  double area;
  double length;  // of both operands' boundaries
};

/// 0 union, 1 intersection, 2 difference, 3 symmetric difference. Rings that touch
/// themselves are accepted.
GeosMeasure MeasureByGeos(const WorldAreas& a, const WorldAreas& b, int op);

/// What GEOS says of two regions of valid polygons, of which those of one region do not overlap.
struct GeosRelation {
  bool intersects;
  bool touches;
  bool covers;
  double distance;
  double hullArea;  // of the first one
  double length;    // the same
  Xy centroid;      // the same
};
GeosRelation RelateByGeos(const WorldAreas& a, const WorldAreas& b);

/// Why areas are no valid multipolygon, or nothing.
std::string InvalidityByGeos(const WorldAreas& areas);

}  // namespace support
