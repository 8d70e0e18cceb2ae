// zelvan triangulate: every polygon for itself.
#include <algorithm>
#include <chrono>
#include <iostream>

#include "commands.h"
#include "output.h"
#include "progress.h"
#include "refusals.h"
#include "report.h"
#include "session.h"

namespace tool {
namespace {

struct Run {
  const Options& options;
  Progress& progress;
  Refusals refusals;
  std::vector<Item> items;
};

void TriangulateOne(Run& run, const Feature& feature, std::size_t number, Row& row) {
  const Polygon& polygon = feature.polygons[number];
  row.area_in += Area(polygon);
  run.progress.Advance(CountPoints(polygon));
  // Of one contour the library judges itself.
  const bool judge = !run.options.repair && !polygon.holes.empty();
  if (judge && run.refusals.Overlapping(feature, number)) return;
  Box box;
  box.Add(polygon.outer);
  const Scale scale = run.options.scale ? Scale::For(box) : Scale();

  const auto start = std::chrono::steady_clock::now();
  Cut cut = TriangulatePolygon(polygon, scale);
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
  if (!cut.failure.empty()) {
    run.refusals.Failed(feature, number, cut.failure);
    return;
  }
  run.refusals.HolesVanished(feature, number, cut.vanished);
  const double area_in = 0;  // counted above
  row += {"",
          1,
          cut.mesh.vertices.size(),
          cut.mesh.triangles.size(),
          area_in,
          cut.mesh.TriangleArea(),
          time.count()};
  run.items.push_back({feature.name, feature.number, number + 1, std::move(cut.mesh)});
}

std::size_t CountPoints(const std::vector<Input>& inputs) {
  std::size_t count = 0;
  for (const Input& input : inputs) {
    for (const Feature& feature : input.features) {
      for (const Polygon& polygon : feature.polygons) count += CountPoints(polygon);
    }
  }
  return count;
}

}  // namespace

int RunTriangulate(const Options& options) {
  int status = kAllDone;
  Geos geos;
  const std::vector<Input> inputs = ReadInputs(options, geos, status);
  Progress progress("triangulating", CountPoints(inputs));
  Run run{options, progress, Refusals(geos), {}};
  run.refusals.Over(&progress);
  std::vector<Row> rows;
  for (const Input& input : inputs) {
    Row row;
    row.name = input.file;
    for (const Feature& feature : input.features) {
      for (std::size_t i = 0; i < feature.polygons.size(); ++i) {
        TriangulateOne(run, feature, i, row);
      }
    }
    rows.push_back(row);
  }
  progress.Clear();
  WriteOutputs(options.outputs, run.items, Show::kTriangles);
  PrintTable(std::cout, rows, true);
  return run.refusals.Count() > 0 ? std::max(status, kSomeRefused) : status;
}

}  // namespace tool
