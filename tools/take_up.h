// From a polygon of a file to its region on a grid: judged, mended where that is asked for,
// and with a word on everything that is lost.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "geometry.h"
#include "judge.h"
#include "options.h"

namespace tool {

// What going to the grid did to the area of a ring, or of a whole polygon.
struct AreaChange {
  std::size_t ring = 0;  // the outer one is 0
  double before = 0;
  double after = 0;
};

// How far a vertex went to the grid.
struct Move {
  double distance = 0;
  Point from{};
  Point to{};
};

struct Taken {
  Region region;                      // empty when there is a failure
  std::string failure;                // why nothing came of the polygon
  double area;                        // by AreaAsWritten; NaN where a point is not finite
  std::vector<std::size_t> vanished;  // holes without area on the grid, left out; ascending
  std::vector<AreaChange> changes;    // by more than kNotable of the area
  Move farthest;                      // of its vertices
  bool mended = false;
};

inline constexpr double kNotable = 0x1p-10;

// The area of a finite polygon as it stands in its file, by the even-odd rule, on no grid but,
// where its contours overlap, the finest.
double AreaAsWritten(const Polygon& polygon);

// The polygon's region by the even-odd rule; of one that is not valid by options.fill, where
// it is to be mended. Contours may touch.
Taken TakeUp(const Polygon& polygon, const zelvan::Grid& grid, const Options& options,
             Judge& judge);

// The grid that the options ask for, for all points of some polygons: with the given step, or
// the finest one. Throws std::invalid_argument where no grid holds them.
zelvan::Grid GridFor(const std::vector<const Polygon*>& polygons, const Options& options);

}  // namespace tool
