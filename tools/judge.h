// Whether a polygon is valid, and if not, why. By GEOS; a program that is built without it
// knows only that the polygon's area is not that of its outer contour less its holes
// (judge_without_geos.cpp).
#pragma once

#include <memory>
#include <string>

#include "geometry.h"

namespace tool {

class Judge {
 public:
  Judge();
  ~Judge();

  // What is wrong with a polygon of finite points, or nothing.
  // @param differs  does its area on the grid differ from what its contours say, by more
  //                 than rounding does?
  std::string WhyInvalid(const Polygon& polygon, bool differs);

 private:
  struct Context;
  std::unique_ptr<Context> context_;
};

}  // namespace tool
