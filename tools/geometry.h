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

// Outer contour less holes, whatever their directions; 0 with a coordinate that is not finite.
double Area(const Polygon& polygon);

// Whether anything is left of a ring once points on a line with their neighbours are
// gone, spikes with them: those whose cross product is within the tolerance. With none
// it is exact where differences of coordinates have 26 bits at the most.
bool HasArea(const Ring& ring, double tolerance = 0);

// A ring in whole steps of the library's grid over a box, and back.
Ring OnGrid(const Ring& ring, const Box& box);
Ring FromGrid(const Ring& steps, const Box& box);

// Steps across that grid, on each axis.
inline constexpr double kGridSteps = 1048575;

std::size_t CountPoints(const Polygon& polygon);

bool IsFinite(const Polygon& polygon);

}  // namespace tool
