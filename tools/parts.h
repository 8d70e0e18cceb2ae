// What a geometry holds once collections are walked.
#pragma once

#include <string>
#include <vector>

#include "geometry.h"

namespace tool {

struct Parts {
  std::vector<Polygon> polygons;     // none of them empty
  std::vector<std::string> refused;  // a reason for each part that is no usable polygon

  void RefuseEmpty(const std::string& type) { refused.push_back("a " + type + " that is empty"); }
  void RefuseType(const std::string& type) {
    const bool vowel = std::string("AEIOU").find(type.front()) != std::string::npos;
    refused.push_back((vowel ? "an " : "a ") + type + " is no polygon");
  }

  // Rings with their first point repeated at the end, outer contour first. Throws
  // std::runtime_error for a ring that is none.
  void AddPolygon(std::vector<Ring> closed);
};

// One geometry in well-known text (Open Geospatial Consortium), altitudes and measures left
// out. Throws std::runtime_error.
Parts ReadWktGeometry(const std::string& text);

}  // namespace tool
