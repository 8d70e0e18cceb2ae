#include "geos.h"

#include <geos_c.h>

#include <cmath>
#include <stdexcept>
#include <utility>

namespace tool {
namespace {

void KeepMessage(const char* message, void* error) {
  *static_cast<std::string*>(error) = message;
}

// Reasons come as "Self-intersection[1 2]".
std::string WithSpace(std::string reason) {
  if (const auto bracket = reason.find('['); bracket != std::string::npos && bracket > 0) {
    reason.replace(bracket, 1, " at (");
    if (reason.back() == ']') reason.back() = ')';
  }
  return reason;
}

std::string Article(const std::string& type) {
  return (std::string("AEIOU").find(type.front()) == std::string::npos ? "a " : "an ") + type;
}

}  // namespace

Geos::Geos() : context_(GEOS_init_r()) {
  if (context_ == nullptr) throw std::runtime_error("GEOS could not be started");
  GEOSContext_setErrorMessageHandler_r(context_, KeepMessage, &error_);
}

Geos::~Geos() {
  GEOS_finish_r(context_);
}

void Geos::Release::operator()(GEOSGeometry* geometry) const {
  GEOSGeom_destroy_r(context, geometry);
}

Geos::Geometry Geos::Own(GEOSGeometry* geometry) {
  if (geometry == nullptr) {
    throw std::runtime_error(error_.empty() ? "GEOS failed without a reason"
                                            : std::exchange(error_, {}));
  }
  return Geometry(geometry, Release{context_});
}

Parts Geos::ReadGeoJson(const std::string& text) {
  Parts parts;
  GEOSGeoJSONReader* reader = GEOSGeoJSONReader_create_r(context_);
  GEOSGeometry* geometry = GEOSGeoJSONReader_readGeometry_r(context_, reader, text.c_str());
  GEOSGeoJSONReader_destroy_r(context_, reader);
  Collect(Own(geometry).get(), parts);
  return parts;
}

Parts Geos::ReadWkt(const std::string& text) {
  Parts parts;
  GEOSWKTReader* reader = GEOSWKTReader_create_r(context_);
  GEOSGeometry* geometry = GEOSWKTReader_read_r(context_, reader, text.c_str());
  GEOSWKTReader_destroy_r(context_, reader);
  Collect(Own(geometry).get(), parts);
  return parts;
}

std::string Geos::WhyInvalid(const Polygon& polygon) {
  if (!IsFinite(polygon)) return "a coordinate is not finite";
  try {
    const Geometry geometry = Build(polygon);
    char* reason = GEOSisValidReason_r(context_, geometry.get());
    if (reason == nullptr) return std::exchange(error_, {});
    std::string text = WithSpace(reason);
    GEOSFree_r(context_, reason);
    return text == "Valid Geometry" ? "" : text;
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

std::string Geos::WhyOverlapping(const Polygon& polygon) {
  std::string invalid = WhyInvalid(polygon);
  if (invalid.empty() || !IsFinite(polygon)) return invalid;
  double contours = std::abs(SignedArea(polygon.outer));
  for (const Ring& hole : polygon.holes) contours += std::abs(SignedArea(hole));
  double difference = Area(polygon);
  try {
    for (const Polygon& part : Repair(polygon)) difference -= Area(part);
  } catch (const std::runtime_error&) {
    return invalid;
  }
  constexpr double kRounding = 1e-9;  // of sums of many products
  return std::abs(difference) > kRounding * contours ? invalid : "";
}

bool Geos::CanRepair() {
  return true;
}

// The area of one ring; a repeated or folded one has none, and leaves no lines behind.
Geos::Geometry Geos::Valid(const Ring& ring) {
  Parts parts;
  Collect(Own(GEOSMakeValid_r(context_, Build({ring, {}}).get())).get(), parts);
  std::vector<Geometry> polygons;
  for (const Polygon& polygon : parts.polygons) polygons.push_back(Build(polygon));
  std::vector<GEOSGeometry*> given;  // the collection takes them over
  for (Geometry& polygon : polygons) given.push_back(polygon.release());
  return Own(GEOSGeom_createCollection_r(context_, GEOS_MULTIPOLYGON, given.data(),
                                         static_cast<unsigned>(given.size())));
}

std::vector<Polygon> Geos::Repair(const Polygon& polygon) {
  std::vector<Geometry> rings;
  for (const Ring& hole : polygon.holes) rings.push_back(Valid(hole));
  rings.push_back(Valid(polygon.outer));
  while (rings.size() > 1) {  // pairs of pairs, so that none is met by all others
    std::vector<Geometry> pairs;
    for (std::size_t i = 0; i + 1 < rings.size(); i += 2) {
      pairs.push_back(Own(GEOSSymDifference_r(context_, rings[i].get(), rings[i + 1].get())));
    }
    if (rings.size() % 2 == 1) pairs.push_back(std::move(rings.back()));
    rings = std::move(pairs);
  }
  Parts parts;
  Collect(rings.front().get(), parts);
  return std::move(parts.polygons);
}

std::vector<std::pair<std::size_t, std::size_t>> Geos::Contacts(const std::vector<Ring>& contours) {
  std::vector<Geometry> shapes;
  for (const Ring& contour : contours) {
    const Polygon polygon{contour, {}};
    const bool ring = contour.size() > 2 && IsFinite(polygon);
    shapes.push_back(ring ? Build(polygon) : Geometry(nullptr, Release{context_}));
  }
  std::vector<std::size_t> numbers(shapes.size());
  GEOSSTRtree* tree = GEOSSTRtree_create_r(context_, 10);
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    numbers[i] = i;
    if (shapes[i]) GEOSSTRtree_insert_r(context_, tree, shapes[i].get(), &numbers[i]);
  }
  std::vector<std::pair<std::size_t, std::size_t>> contacts;
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    if (!shapes[i]) continue;
    std::vector<std::size_t> near;
    const auto keep = [](void* item, void* list) {
      static_cast<std::vector<std::size_t>*>(list)->push_back(*static_cast<std::size_t*>(item));
    };
    GEOSSTRtree_query_r(context_, tree, shapes[i].get(), keep, &near);
    const GEOSPreparedGeometry* prepared = GEOSPrepare_r(context_, shapes[i].get());
    for (const std::size_t k : near) {
      if (k > i && GEOSPreparedIntersects_r(context_, prepared, shapes[k].get()) != 0) {
        contacts.emplace_back(i, k);
      }
    }
    GEOSPreparedGeom_destroy_r(context_, prepared);
  }
  GEOSSTRtree_destroy_r(context_, tree);
  return contacts;
}

Geos::Geometry Geos::RingGeometry(const Ring& ring) {
  Ring closed = ring;
  if (!ring.empty()) closed.push_back(ring.front());
  static_assert(sizeof(Point) == 2 * sizeof(double));
  GEOSCoordSequence* points =
      GEOSCoordSeq_copyFromBuffer_r(context_, closed.empty() ? nullptr : &closed.front().x,
                                    static_cast<unsigned>(closed.size()), 0, 0);
  return Own(points == nullptr ? nullptr : GEOSGeom_createLinearRing_r(context_, points));
}

Geos::Geometry Geos::Build(const Polygon& polygon) {
  Geometry outer = RingGeometry(polygon.outer);
  std::vector<Geometry> holes;
  for (const Ring& hole : polygon.holes) holes.push_back(RingGeometry(hole));
  std::vector<GEOSGeometry*> given;  // the polygon takes them over
  for (Geometry& hole : holes) given.push_back(hole.release());
  return Own(GEOSGeom_createPolygon_r(context_, outer.release(), given.data(),
                                      static_cast<unsigned>(given.size())));
}

Ring Geos::Read(const GEOSGeometry* ring) const {
  const GEOSCoordSequence* points = GEOSGeom_getCoordSeq_r(context_, ring);
  unsigned size = 0;
  if (points == nullptr || GEOSCoordSeq_getSize_r(context_, points, &size) == 0) return {};
  Ring result(size);
  if (size == 0) return result;
  GEOSCoordSeq_copyToBuffer_r(context_, points, &result.front().x, 0, 0);
  if (size > 1 && result.front() == result.back()) result.pop_back();
  return result;
}

void Geos::Collect(const GEOSGeometry* geometry, Parts& parts) const {
  const auto type_name = [&] {
    char* text = GEOSGeomType_r(context_, geometry);
    std::string name = text == nullptr ? "geometry" : text;
    GEOSFree_r(context_, text);
    return name;
  };
  if (GEOSisEmpty_r(context_, geometry) == 1) {
    parts.refused.push_back(Article(type_name()) + " that is empty");
    return;
  }
  switch (GEOSGeomTypeId_r(context_, geometry)) {
    case GEOS_POLYGON: {
      Polygon polygon;
      polygon.outer = Read(GEOSGetExteriorRing_r(context_, geometry));
      const int holes = GEOSGetNumInteriorRings_r(context_, geometry);
      for (int i = 0; i < holes; ++i) {
        Ring hole = Read(GEOSGetInteriorRingN_r(context_, geometry, i));
        if (!hole.empty()) polygon.holes.push_back(std::move(hole));
      }
      parts.polygons.push_back(std::move(polygon));
      return;
    }
    case GEOS_MULTIPOLYGON:
    case GEOS_GEOMETRYCOLLECTION: {
      const int count = GEOSGetNumGeometries_r(context_, geometry);
      for (int i = 0; i < count; ++i) Collect(GEOSGetGeometryN_r(context_, geometry, i), parts);
      return;
    }
    default:
      parts.refused.push_back(Article(type_name()) + " is no polygon");
  }
}

}  // namespace tool
