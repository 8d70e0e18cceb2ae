// The table at the end and the refusals on the way.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

#include "input.h"
#include "progress.h"
#include "take_up.h"

namespace tool {

struct Row {
  std::string name;
  std::size_t polygons = 0;
  std::size_t vertices = 0;
  std::size_t triangles = 0;
  double area_in = 0;
  double area_out = 0;
  double seconds = 0;  // from polygons to regions and triangles

  Row& operator+=(const Row& other);
};

// Rows and, unless there is but one, their total when asked for. Areas are in
// squared input units; one that is not a number is left open.
void PrintTable(std::ostream& out, const std::vector<Row>& rows, bool with_total);

// The steps of the grids that were taken.
void PrintGrids(std::ostream& out, const std::vector<zelvan::Grid>& grids);

void PrintRefusal(const Refusal& refusal);

// Names what a polygon loses, if anything, taking the line of progress away first.
// @return whether it named something
bool NameLosses(const Feature& feature, std::size_t number, const Taken& taken, Progress& progress);

}  // namespace tool
