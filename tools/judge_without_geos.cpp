#include "judge.h"

namespace tool {

struct Judge::Context {};

Judge::Judge() = default;
Judge::~Judge() = default;

std::string Judge::WhyInvalid(const Polygon& /*polygon*/) {
  return "contours cross, or a hole lies outside or in another one";
}

}  // namespace tool
