// Areas by GEOS (geos_area.h).
#include "support/geos_area.h"

#include <geos_c.h>

#include <memory>
#include <stdexcept>

namespace support {

namespace {

class Geos {
 public:
  Geos() : handle_(GEOS_init_r()) {}
  ~Geos() { GEOS_finish_r(handle_); }
  Geos(const Geos&) = delete;
  Geos& operator=(const Geos&) = delete;

  struct Destroy {
    GEOSContextHandle_t handle;
    void operator()(GEOSGeometry* g) const { GEOSGeom_destroy_r(handle, g); }
  };
  using Geometry = std::unique_ptr<GEOSGeometry, Destroy>;

  Geometry Own(GEOSGeometry* g) const {
    if (g == nullptr) throw std::runtime_error("GEOS failed");
    return Geometry(g, Destroy{handle_});
  }

  GEOSGeometry* Ring(const WorldRing& ring) const {
    const auto n = static_cast<unsigned>(ring.size());
    GEOSCoordSequence* points = GEOSCoordSeq_create_r(handle_, n + 1, 2);
    for (unsigned i = 0; i <= n; ++i) {
      GEOSCoordSeq_setXY_r(handle_, points, i, ring[i % n].x, ring[i % n].y);
    }
    return GEOSGeom_createLinearRing_r(handle_, points);
  }

  GEOSGeometry* Polygon(const std::vector<WorldRing>& rings) const {
    std::vector<GEOSGeometry*> holes;
    for (std::size_t i = 1; i < rings.size(); ++i) holes.push_back(Ring(rings[i]));
    return GEOSGeom_createPolygon_r(handle_, Ring(rings[0]), holes.data(),
                                    static_cast<unsigned>(holes.size()));
  }

  Geometry Collection(int type, std::vector<GEOSGeometry*>& parts) const {
    return Own(GEOSGeom_createCollection_r(handle_, type, parts.data(),
                                           static_cast<unsigned>(parts.size())));
  }

  Geometry Region(const WorldAreas& areas) const {
    std::vector<GEOSGeometry*> polygons;
    for (const auto& rings : areas) {
      polygons.push_back(GEOSMakeValid_r(handle_, Own(Polygon(rings)).get()));
    }
    return Own(GEOSUnaryUnion_r(handle_, Collection(GEOS_GEOMETRYCOLLECTION, polygons).get()));
  }

  Geometry MultiPolygon(const WorldAreas& areas) const {
    std::vector<GEOSGeometry*> polygons;
    for (const auto& rings : areas) polygons.push_back(Polygon(rings));
    return Collection(GEOS_MULTIPOLYGON, polygons);
  }

  GeosRelation Relate(const WorldAreas& areasA, const WorldAreas& areasB) const {
    const Geometry a = MultiPolygon(areasA);
    const Geometry b = MultiPolygon(areasB);
    GeosRelation r{};
    r.intersects = GEOSIntersects_r(handle_, a.get(), b.get()) == 1;
    r.touches = GEOSTouches_r(handle_, a.get(), b.get()) == 1;
    r.covers = GEOSCovers_r(handle_, a.get(), b.get()) == 1;
    GEOSDistance_r(handle_, a.get(), b.get(), &r.distance);
    r.hullArea = Measure(GEOSArea_r, Own(GEOSConvexHull_r(handle_, a.get())));
    r.length = Measure(GEOSLength_r, a);
    const Geometry centroid = Own(GEOSGetCentroid_r(handle_, a.get()));
    GEOSGeomGetX_r(handle_, centroid.get(), &r.centroid.x);
    GEOSGeomGetY_r(handle_, centroid.get(), &r.centroid.y);
    return r;
  }

  std::string Invalidity(const WorldAreas& areas) const {
    const Geometry all = MultiPolygon(areas);
    if (GEOSisValid_r(handle_, all.get()) == 1) return "";
    char* const reason = GEOSisValidReason_r(handle_, all.get());
    const std::string text = reason;
    GEOSFree_r(handle_, reason);
    return text;
  }

  Geometry Combine(const Geometry& a, const Geometry& b, int op) const {
    constexpr decltype(&GEOSUnion_r) kOperations[] = {GEOSUnion_r, GEOSIntersection_r,
                                                      GEOSDifference_r, GEOSSymDifference_r};
    return Own(kOperations[op](handle_, a.get(), b.get()));
  }

  double Measure(decltype(&GEOSArea_r) measure, const Geometry& g) const {
    double number = 0;
    measure(handle_, g.get(), &number);
    return number;
  }

 private:
  GEOSContextHandle_t handle_;
};

}  // namespace

GeosMeasure MeasureByGeos(const WorldAreas& a, const WorldAreas& b, int op) {
  const Geos geos;
  const auto regionA = geos.Region(a);
  const auto regionB = geos.Region(b);
  const auto result = geos.Combine(regionA, regionB, op);
  return {geos.Measure(GEOSArea_r, result),
          geos.Measure(GEOSLength_r, regionA) + geos.Measure(GEOSLength_r, regionB)};
}

GeosRelation RelateByGeos(const WorldAreas& a, const WorldAreas& b) {
  return Geos().Relate(a, b);
}

std::string InvalidityByGeos(const WorldAreas& areas) {
  return Geos().Invalidity(areas);
}

}  // namespace support
