#include "refusals.h"

#include "input.h"
#include "report.h"
#include "session.h"

namespace tool {

bool Refusals::Overlapping(const Feature& feature, std::size_t number) {
  const Polygon& polygon = feature.polygons[number];
  const std::string why = geos_.WhyOverlapping(polygon);
  if (why.empty()) return false;
  Name(feature, number, std::string(kNotUsable) + ": " + why, Lost("polygon", polygon));
  return true;
}

void Refusals::Failed(const Feature& feature, std::size_t number, const std::string& failure) {
  const Polygon& polygon = feature.polygons[number];
  const bool clear = failure == kNoArea || failure == kNothingLeft;
  const std::string why = clear ? "" : geos_.WhyInvalid(polygon);
  Name(feature, number, why.empty() ? failure : failure + ": " + why, Lost("polygon", polygon));
}

void Refusals::PieceFailed(const Feature& feature, std::size_t number, const std::string& failure,
                           const Ring& piece) {
  Name(feature, number, "a piece of it " + failure, Lost("piece", {piece, {}}));
}

void Refusals::HolesVanished(const Feature& feature, std::size_t number,
                             const std::vector<std::size_t>& holes) {
  for (const std::size_t i : holes) {
    Name(feature, number, "hole " + std::to_string(i + 1) + " left out: " + kNoArea,
         Lost("hole", {feature.polygons[number].holes[i], {}}));
  }
}

void Refusals::Name(const Feature& feature, std::size_t number, const std::string& reason,
                    const std::string& lost) {
  if (progress_ != nullptr) progress_->Clear();
  PrintRefusal({feature.file, PlaceOf(feature, number), reason, lost});
  ++count_;
}

}  // namespace tool
