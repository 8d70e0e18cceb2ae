// Coordinate reference systems, which GDAL knows (more_formats.h).
#include <cpl_conv.h>
#include <ogr_srs_api.h>

#include <memory>

#include "more_formats.h"

namespace tool {
namespace {

struct CrsReleaser {
  void operator()(OGRSpatialReferenceH crs) const { OSRRelease(crs); }
};
using Crs = std::unique_ptr<void, CrsReleaser>;

// Null for what names none.
Crs CrsOf(const std::string& text) {
  Crs crs(OSRNewSpatialReference(nullptr));
  CPLPushErrorHandler(CPLQuietErrorHandler);
  const bool known = OSRSetFromUserInput(crs.get(), text.c_str()) == OGRERR_NONE;
  CPLPopErrorHandler();
  return known ? std::move(crs) : nullptr;
}

}  // namespace

bool IsSameCrs(const std::string& a, const std::string& b) {
  if (a == b) return true;
  const Crs first = CrsOf(a);
  const Crs second = CrsOf(b);
  constexpr const char* options[] = {"CRITERION=EQUIVALENT_EXCEPT_AXIS_ORDER_GEOGCRS",
                                     "IGNORE_DATA_AXIS_TO_SRS_AXIS_MAPPING=YES", nullptr};
  return first && second && OSRIsSameEx(first.get(), second.get(), options) != 0;
}

std::string CrsName(const std::string& text) {
  const Crs crs = CrsOf(text);
  if (!crs) return text;
  const char* authority = OSRGetAuthorityName(crs.get(), nullptr);
  const char* code = OSRGetAuthorityCode(crs.get(), nullptr);
  if (authority != nullptr && code != nullptr) return std::string(authority) + ':' + code;
  const char* name = OSRGetName(crs.get());
  return name != nullptr && *name != '\0' ? name : "a system without a name";
}

}  // namespace tool
