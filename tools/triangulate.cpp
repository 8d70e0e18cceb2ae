// zelvan triangulate: every polygon for itself, on a grid of its own unless one is given.
#include <algorithm>
#include <chrono>
#include <iostream>

#include "commands.h"
#include "output.h"
#include "progress.h"
#include "report.h"
#include "take_up.h"

namespace tool {
namespace {

class Triangulation {
 public:
  Triangulation(const Options& options, std::size_t points)
      : options_(options), progress_("triangulating", points) {}

  Row Add(const Input& input) {
    Row row;
    row.name = input.file;
    std::size_t mended = 0;
    ForEachPolygon(input, [&](const Feature& feature, std::size_t i) {
      mended += AddPolygon(feature, i, row) ? 1 : 0;
    });
    progress_.Clear();
    PrintRepaired(options_, input.file, mended);
    return row;
  }

  const std::vector<Item>& Items() const { return items_; }
  const std::vector<zelvan::Grid>& Grids() const { return grids_; }
  bool HasRefused() const { return refused_; }

 private:
  // @return whether the polygon was mended
  bool AddPolygon(const Feature& feature, std::size_t number, Row& row) {
    const Polygon& polygon = feature.polygons[number];
    row.area_in += Area(polygon);
    progress_.Advance(CountPoints(polygon));
    const auto start = std::chrono::steady_clock::now();
    Taken taken;
    try {
      taken = TakeUp(polygon, GridFor({&polygon}, options_), options_, judge_);
    } catch (const std::invalid_argument& error) {
      taken.failure = error.what();
    }
    refused_ = NameLosses(feature, number, taken, progress_) || refused_;
    if (taken.region.IsEmpty()) return false;
    Item item{feature.name, feature.number, number + 1, taken.region, {}};
    item.mesh = Triangulate(item.region, {options_.delaunay});
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    grids_.push_back(item.region.Grid());
    const double counted = 0;  // the area that went in
    row += {"",
            1,
            item.mesh.vertices.size(),
            item.mesh.triangles.size(),
            counted,
            TriangleArea(item.mesh),
            time.count()};
    items_.push_back(std::move(item));
    return taken.mended;
  }

  const Options& options_;
  Progress progress_;
  Judge judge_;
  std::vector<Item> items_;
  std::vector<zelvan::Grid> grids_;
  bool refused_ = false;
};

}  // namespace

int RunTriangulate(const Options& options) {
  int status = kAllDone;
  const std::vector<Input> inputs = ReadInputs(options, status);
  Triangulation triangulation(options, CountPoints(inputs));
  std::vector<Row> rows;
  rows.reserve(inputs.size());
  for (const Input& input : inputs) rows.push_back(triangulation.Add(input));
  WriteOutputs(options, triangulation.Items(), Show::kTriangles);
  PrintGrids(ReportStream(options), triangulation.Grids());
  PrintTable(ReportStream(options), rows, true);
  return triangulation.HasRefused() ? std::max(status, kSomeRefused) : status;
}

}  // namespace tool
