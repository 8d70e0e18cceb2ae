#include "report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <ostream>
#include <stdexcept>

#include "output.h"

namespace tool {
namespace {

constexpr std::size_t kColumns = 7;
using Cells = std::array<std::string, kColumns>;

std::string Seconds(double seconds) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.3f s", seconds);
  return text.data();
}

std::string AreaText(double area) {
  return std::isnan(area) ? "" : Rounded(area);
}

Cells CellsOf(const Row& row) {
  return {row.name,
          std::to_string(row.polygons),
          std::to_string(row.vertices),
          std::to_string(row.triangles),
          AreaText(row.area_in),
          AreaText(row.area_out),
          Seconds(row.seconds)};
}

void PrintTable(std::ostream& out, const std::vector<Row>& rows, bool with_total) {
  std::vector<Cells> table{
      {"input", "polygons", "vertices", "triangles", "area in", "area out", "time"}};
  Row total;
  total.name = "total";
  for (const Row& row : rows) {
    table.push_back(CellsOf(row));
    total += row;
  }
  if (with_total && rows.size() > 1) table.push_back(CellsOf(total));

  std::array<std::size_t, kColumns> width{};
  for (const Cells& cells : table) {
    for (std::size_t i = 0; i < kColumns; ++i) width[i] = std::max(width[i], cells[i].size());
  }
  for (const Cells& cells : table) {
    out << cells[0] << std::string(width[0] - cells[0].size(), ' ');
    for (std::size_t i = 1; i < kColumns; ++i) {
      out << std::string(width[i] - cells[i].size() + 2, ' ') << cells[i];
    }
    out << '\n';
  }
}

void PrintGrids(std::ostream& out, const std::vector<zelvan::Grid>& grids, double moved) {
  if (grids.empty()) return;
  const auto [least, most] = std::minmax_element(
      grids.begin(), grids.end(),
      [](const zelvan::Grid& a, const zelvan::Grid& b) { return a.Step() < b.Step(); });
  out << (grids.size() == 1 ? "grid: a step of " : "grids: steps of ") << Shortest(least->Step());
  if (least->Step() != most->Step()) out << " to " << Shortest(most->Step());
  out << " in the units of the input; the farthest vertex moved by " << Rounded(moved) << '\n';
}

// What a step is, and what becomes of what is smaller.
void ExplainGrid(std::ostream& out, const std::vector<zelvan::Grid>& grids,
                 const Options& options) {
  if (grids.empty()) return;
  const auto widest = std::max_element(
      grids.begin(), grids.end(),
      [](const zelvan::Grid& a, const zelvan::Grid& b) { return a.Step() < b.Step(); });
  const double step = widest->Step();
  out << (grids.size() > 1 ? "the coarsest of " + std::to_string(grids.size()) + " grids"
                           : "the grid")
      << (options.step == 0 ? ", the finest that holds its points" : ", as --grid says")
      << ": 2^31 points along each axis, 2^" << std::ilogb(step) << " apart, from ("
      << Shortest(widest->Origin().x) << ' ' << Shortest(widest->Origin().y)
      << ") on; a vertex goes to the nearest, " << Shortest(step / 2)
      << " at most along each axis\n";
}

}  // namespace

Row& Row::operator+=(const Row& other) {
  polygons += other.polygons;
  vertices += other.vertices;
  triangles += other.triangles;
  area_in += other.area_in;
  area_out += other.area_out;
  seconds += other.seconds;
  return *this;
}

void Print(const Report& report, const Options& options, Steps& steps) {
  std::ostream& out = ReportStream(options);
  steps.Clear();
  PrintGrids(out, report.grids, report.moved);
  if (options.explain) {
    ExplainGrid(out, report.grids, options);
    out << report.explanation;
  }
  PrintTable(out, report.rows, report.with_total);
  steps.PrintTimes(out);
  if (!out.flush()) throw std::runtime_error("standard output: cannot be written");
}

void PrintRefusal(const Refusal& refusal) {
  std::cerr << refusal.file << ": " << refusal.place << ": " << refusal.reason
            << "; lost: " << refusal.lost << '\n';
}

}  // namespace tool
