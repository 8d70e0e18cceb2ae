// Why a polygon is not valid, in GEOS's words; a program that is built without GEOS has one
// sentence for all (judge_without_geos.cpp).
#pragma once

#include <memory>
#include <string>

#include "geometry.h"

namespace tool {

class Judge {
 public:
  Judge();
  ~Judge();

  // What is wrong with a polygon of finite points whose contours overlap.
  std::string WhyInvalid(const Polygon& polygon);

 private:
  struct Context;
  std::unique_ptr<Context> context_;
};

}  // namespace tool
