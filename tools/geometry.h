// Plain planar geometry of the host program: what is read, fed and written.
// Rings are open: the last point does not repeat the first.
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace tool {

struct Point {
  double x = 0;
  double y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

using Ring = std::vector<Point>;

struct Polygon {
  Ring outer;
  std::vector<Ring> holes;
};

struct Box {
  Point low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
  Point high{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

  void Add(const Point& p);
  void Add(const Ring& ring);
  bool Empty() const { return !(low.x <= high.x && low.y <= high.y); }
};

// One feature of a file: its polygons with the place they came from.
struct Feature {
  std::string file;
  std::size_t number = 0;  // within its file, from 1
  std::string name;        // may be empty
  std::vector<Polygon> polygons;

  std::string Label() const;  // "feature 12 (Sudan)"
};

// Positive when the ring runs counter-clockwise.
double SignedArea(const Ring& ring);

// Outer contour less holes, whatever their directions.
double Area(const Polygon& polygon);

std::size_t CountPoints(const Polygon& polygon);

bool IsFinite(const Polygon& polygon);

}  // namespace tool
