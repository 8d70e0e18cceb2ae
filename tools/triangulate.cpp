// zelvan triangulate: every polygon for itself.
#include <algorithm>
#include <chrono>
#include <iostream>

#include "commands.h"
#include "output.h"
#include "progress.h"
#include "report.h"
#include "session.h"

namespace tool {
namespace {

struct Run {
  const Options& options;
  Geos& geos;
  Progress& progress;
  std::vector<Item> items;
  std::size_t refused = 0;
};

std::string Reason(const std::string& failure, const Polygon& polygon, Geos& geos) {
  const std::string invalid = geos.WhyInvalid(polygon);
  return invalid.empty() ? failure : failure + ": " + invalid;
}

void TriangulateOne(Run& run, const Feature& feature, std::size_t number, Row& row) {
  const Polygon& polygon = feature.polygons[number];
  Box box;
  box.Add(polygon.outer);
  const Scale scale = run.options.scale ? Scale::For(box) : Scale();

  const auto start = std::chrono::steady_clock::now();
  Cut cut = TriangulatePolygon(polygon, scale);
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
  run.progress.Advance(CountPoints(polygon));
  if (!cut.failure.empty()) {
    run.progress.Clear();
    PrintRefusal({feature.file, PlaceOf(feature, number), Reason(cut.failure, polygon, run.geos)});
    ++run.refused;
    return;
  }
  row += {"",
          1,
          cut.mesh.vertices.size(),
          cut.mesh.triangles.size(),
          Area(polygon),
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
  Run run{options, geos, progress, {}, 0};
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
  return run.refused > 0 ? std::max(status, kSomeRefused) : status;
}

}  // namespace tool
