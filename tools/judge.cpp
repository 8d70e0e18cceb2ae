#include "judge.h"

#include <geos_c.h>

#include <stdexcept>
#include <utility>

namespace tool {

struct Judge::Context {
  GEOSContextHandle_t geos = GEOS_init_r();
  std::string error;
};

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

GEOSGeometry* RingGeometry(GEOSContextHandle_t geos, const Ring& ring) {
  Ring closed = ring;
  if (!ring.empty()) closed.push_back(ring.front());
  GEOSCoordSequence* points =
      GEOSCoordSeq_copyFromBuffer_r(geos, closed.empty() ? nullptr : &closed.front().x,
                                    static_cast<unsigned>(closed.size()), 0, 0);
  return points == nullptr ? nullptr : GEOSGeom_createLinearRing_r(geos, points);
}

// Null where a ring is none.
GEOSGeometry* PolygonGeometry(GEOSContextHandle_t geos, const Polygon& polygon) {
  GEOSGeometry* outer = RingGeometry(geos, polygon.outer);
  std::vector<GEOSGeometry*> holes;
  bool all = outer != nullptr;
  for (const Ring& hole : polygon.holes) {
    holes.push_back(RingGeometry(geos, hole));
    all = all && holes.back() != nullptr;
  }
  if (all) {
    return GEOSGeom_createPolygon_r(geos, outer, holes.data(), static_cast<unsigned>(holes.size()));
  }
  holes.push_back(outer);
  for (GEOSGeometry* ring : holes) GEOSGeom_destroy_r(geos, ring);
  return nullptr;
}

}  // namespace

Judge::Judge() : context_(std::make_unique<Context>()) {
  if (context_->geos == nullptr) throw std::runtime_error("GEOS could not be started");
  GEOSContext_setErrorMessageHandler_r(context_->geos, KeepMessage, &context_->error);
}

Judge::~Judge() {
  GEOS_finish_r(context_->geos);
}

std::string Judge::WhyInvalid(const Polygon& polygon) {
  const GEOSContextHandle_t geos = context_->geos;
  GEOSGeometry* geometry = PolygonGeometry(geos, polygon);
  char* reason = geometry == nullptr ? nullptr : GEOSisValidReason_r(geos, geometry);
  const std::string text = reason == nullptr ? std::exchange(context_->error, {}) : reason;
  GEOSFree_r(geos, reason);
  GEOSGeom_destroy_r(geos, geometry);
  return text == "Valid Geometry" ? "contours cross on the grid" : WithSpace(text);
}

}  // namespace tool
