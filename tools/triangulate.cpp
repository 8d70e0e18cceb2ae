// zelvan triangulate: every polygon for itself, on a grid of its own unless one is given.
#include <algorithm>
#include <chrono>

#include "commands.h"
#include "intake.h"
#include "output.h"
#include "progress.h"
#include "report.h"

namespace tool {
namespace {

class Triangulation {
 public:
  Triangulation(const Options& options, Steps& steps)
      : options_(options), intake_(options, steps) {}

  Row Add(const Input& input) {
    Row row;
    row.name = input.file;
    ForEachPolygon(input,
                   [&](const Feature& feature, std::size_t i) { AddPolygon(feature, i, row); });
    intake_.Finish(input.file);
    return row;
  }

  const std::vector<Item>& Items() const { return items_; }
  const Intake& TakenIn() const { return intake_; }

 private:
  void AddPolygon(const Feature& feature, std::size_t number, Row& row) {
    const auto start = std::chrono::steady_clock::now();
    Item item{feature.name, feature.number, number + 1, feature.attributes, {}, {}};
    item.region = intake_.Take(feature, number, nullptr, row);
    if (!item.region.IsEmpty()) item.mesh = Triangulate(item.region, {options_.delaunay});
    row.seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    if (item.region.IsEmpty()) return;
    row.polygons += 1;
    row.vertices += item.mesh.vertices.size();
    row.triangles += item.mesh.triangles.size();
    row.area_out += TriangleArea(item.mesh);
    items_.push_back(std::move(item));
  }

  const Options& options_;
  Intake intake_;
  std::vector<Item> items_;
};

}  // namespace

int RunTriangulate(const Options& options) {
  int status = kAllDone;
  Steps steps;
  const std::vector<Input> inputs = ReadInputs(options, steps, status);
  const std::string crs = CrsOf(inputs);
  steps.Begin("triangulating", "", CountPoints(inputs));
  Triangulation triangulation(options, steps);
  Report report;
  for (const Input& input : inputs) report.rows.push_back(triangulation.Add(input));
  WriteOutputs(options, triangulation.Items(), Show::kTriangles, crs, steps);
  for (const Item& item : triangulation.Items()) report.grids.push_back(item.region.Grid());
  report.moved = triangulation.TakenIn().FarthestMove();
  report.explanation = triangulation.TakenIn().Explanation();
  report.with_total = true;
  Print(report, options, steps);
  return triangulation.TakenIn().HasLost() ? std::max(status, kSomeRefused) : status;
}

}  // namespace tool
