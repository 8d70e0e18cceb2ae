// What is read: polygons as they stand in files, and where they come from. Rings are open:
// the last point does not repeat the first.
#pragma once

#include <zelvan/region.h>

#include <cstddef>
#include <string>
#include <vector>

#include "attributes.h"

namespace tool {

using zelvan::Point;
using zelvan::Polygon;
using zelvan::Region;
using zelvan::Ring;

// One feature of a file: its polygons with the place they came from.
struct Feature {
  std::string file;
  std::size_t number = 0;         // within its file, from 1
  std::string name;               // may be empty
  std::vector<Polygon> polygons;  // one without points was refused when it was read
  Attributes attributes;

  std::string Label() const;  // "feature 12 (Sudan)"
};

// The outer contour, then the holes.
std::vector<Ring> RingsOf(const Polygon& polygon);

// Positive when the ring runs counter-clockwise. Exact for rings on one grid.
double SignedArea(const Ring& ring);

// Outer contour less holes, whatever their directions: of a finite polygon whose contours do
// not overlap.
double Area(const Polygon& polygon);

std::size_t CountPoints(const Polygon& polygon);

// Are all its points finite, and near enough for a grid that reaches over all such points?
bool IsFinite(const Polygon& polygon);

}  // namespace tool
