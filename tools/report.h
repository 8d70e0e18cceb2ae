// The summary at the end and the refusals on the way.
#pragma once

#include <zelvan/region.h>

#include <cstddef>
#include <string>
#include <vector>

#include "input.h"
#include "options.h"
#include "progress.h"

namespace tool {

struct Row {
  std::string name;
  std::size_t polygons = 0;
  std::size_t vertices = 0;
  std::size_t triangles = 0;
  double area_in = 0;
  double area_out = 0;
  double seconds = 0;  // from polygons to regions, or from these to a result

  Row& operator+=(const Row& other);
};

// What a run says at its end: the grids, how far the farthest vertex went to them, the rows
// with their total where that is asked for, and the times. Areas are in squared input units;
// one that is not a number is left open. Throws std::runtime_error where that cannot be
// written.
struct Report {
  std::vector<zelvan::Grid> grids;
  double moved = 0;
  std::string explanation;  // what --explain says besides; lines
  std::vector<Row> rows;
  bool with_total = false;
};
void Print(const Report& report, const Options& options, Steps& steps);

void PrintRefusal(const Refusal& refusal);

}  // namespace tool
