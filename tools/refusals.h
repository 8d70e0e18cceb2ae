// What a command could not use: named as soon as it is known, with what is lost by it,
// and counted.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "geos.h"
#include "progress.h"

namespace tool {

class Refusals {
 public:
  explicit Refusals(Geos& geos) : geos_(geos) {}

  // The line of progress to take away first, while there is one.
  void Over(Progress* progress) { progress_ = progress; }

  // Whether a polygon is refused because of its overlapping contours.
  bool Overlapping(const Feature& feature, std::size_t number);

  // A polygon that failed, or a piece of it; what GEOS knows of the reason is added.
  void Failed(const Feature& feature, std::size_t number, const std::string& failure);
  void PieceFailed(const Feature& feature, std::size_t number, const std::string& failure,
                   const Ring& piece);

  // Holes that are left out, the polygon without them being used.
  void HolesVanished(const Feature& feature, std::size_t number,
                     const std::vector<std::size_t>& holes);

  std::size_t Count() const { return count_; }

 private:
  void Name(const Feature& feature, std::size_t number, const std::string& reason,
            const std::string& lost);

  Geos& geos_;
  Progress* progress_ = nullptr;
  std::size_t count_ = 0;
};

}  // namespace tool
