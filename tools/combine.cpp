// zelvan union, subtract, intersect and xor: the polygons of each input become regions on one
// grid; those of one input, and of all that are subtracted, are united in one sweep.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <iostream>
#include <numeric>

#include "commands.h"
#include "output.h"
#include "progress.h"
#include "report.h"
#include "take_up.h"

namespace tool {
namespace {

struct Operation {
  Command command;
  const char* result;
  const char* progress;
};

constexpr Operation kOperations[] = {
    {Command::kUnion, "union", "uniting"},
    {Command::kSubtract, "difference", "subtracting"},
    {Command::kIntersect, "intersection", "intersecting"},
    {Command::kXor, "symmetric difference", "combining"},
};

const Operation& OperationOf(Command command) {
  return *std::find_if(std::begin(kOperations), std::end(kOperations),
                       [&](const Operation& operation) { return operation.command == command; });
}

class Combination {
 public:
  Combination(const Options& options, const zelvan::Grid& grid, std::size_t points)
      : options_(options), grid_(grid), progress_(OperationOf(options.command).progress, points) {}

  // Each input in turn. @return its row of the table
  Row Add(const Input& input) {
    std::vector<Region> regions;
    Row row;
    row.name = input.file;
    row.area_out = std::nan("");
    std::size_t mended = 0;
    ForEachPolygon(input, [&](const Feature& feature, std::size_t i) {
      const Polygon& polygon = feature.polygons[i];
      progress_.Advance(CountPoints(polygon));
      ++row.polygons;
      row.vertices += CountPoints(polygon);
      row.area_in += Area(polygon);
      const Taken taken = TakeUp(polygon, grid_, options_, judge_);
      refused_ = NameLosses(feature, i, taken, progress_) || refused_;
      mended += taken.mended ? 1 : 0;
      regions.push_back(taken.region);
    });
    progress_.Clear();
    PrintRepaired(options_, input.file, mended);
    inputs_.push_back(std::move(regions));
    return row;
  }

  Region Run() const {
    switch (options_.command) {
      case Command::kSubtract:
        return zelvan::Unite(inputs_.front()) - UniteFrom(1);
      case Command::kIntersect:
        return std::accumulate(
            inputs_.begin() + 1, inputs_.end(), zelvan::Unite(inputs_.front()),
            [](const Region& all, const auto& input) { return all & zelvan::Unite(input); });
      case Command::kXor:
        return OddlyCovered();
      default:
        return UniteFrom(0);
    }
  }

  bool HasRefused() const { return refused_; }

 private:
  Region UniteFrom(std::size_t input) const {
    std::vector<Region> regions;
    for (; input < inputs_.size(); ++input) {
      regions.insert(regions.end(), inputs_[input].begin(), inputs_[input].end());
    }
    return zelvan::Unite(regions);
  }

  // One by one, each input would meet again what the ones before have left.
  Region OddlyCovered() const {
    std::vector<Ring> rings;
    for (const std::vector<Region>& input : inputs_) {
      for (const Polygon& polygon : zelvan::Unite(input).Polygons()) {
        const std::vector<Ring> more = RingsOf(polygon);
        rings.insert(rings.end(), more.begin(), more.end());
      }
    }
    return {rings, zelvan::FillRule::EvenOdd, grid_};
  }

  const Options& options_;
  const zelvan::Grid grid_;
  Progress progress_;
  Judge judge_;
  std::vector<std::vector<Region>> inputs_;
  bool refused_ = false;
};

Row RowOf(const Item& item, double seconds) {
  Row row;
  row.name = item.name;
  row.polygons = item.region.PolygonCount();
  row.vertices = item.region.VertexCount();
  row.triangles = item.mesh.triangles.size();
  row.area_in = std::nan("");
  row.area_out = item.region.Area();
  row.seconds = seconds;
  return row;
}

bool WantsTriangles(const Options& options) {
  const auto is_mesh = [&](const std::string& output) {
    return Extension(output) == ".obj" || (output == kStandard && options.format == "obj");
  };
  return options.triangles || options.delaunay ||
         std::any_of(options.outputs.begin(), options.outputs.end(), is_mesh);
}

std::vector<const Polygon*> AllPolygons(const std::vector<Input>& inputs) {
  std::vector<const Polygon*> polygons;
  for (const Input& input : inputs) {
    ForEachPolygon(input, [&](const Feature& feature, std::size_t i) {
      polygons.push_back(&feature.polygons[i]);
    });
  }
  return polygons;
}

}  // namespace

int RunCombine(const Options& options) {
  int status = kAllDone;
  const std::vector<Input> inputs = ReadInputs(options, status);
  if (status == kUnusable) return status;  // half a combination is none

  const zelvan::Grid grid = GridFor(AllPolygons(inputs), options);
  const auto start = std::chrono::steady_clock::now();
  Combination combination(options, grid, CountPoints(inputs));
  std::vector<Row> rows;
  rows.reserve(inputs.size());
  for (const Input& input : inputs) rows.push_back(combination.Add(input));
  Item item{OperationOf(options.command).result, 0, 0, combination.Run(), {}};
  if (WantsTriangles(options)) item.mesh = Triangulate(item.region, {options.delaunay});
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;

  rows.push_back(RowOf(item, time.count()));
  const bool shows = options.triangles || options.delaunay;
  WriteOutputs(options, {std::move(item)}, shows ? Show::kTriangles : Show::kRegion);
  PrintGrids(ReportStream(options), {grid});
  PrintTable(ReportStream(options), rows, false);
  return combination.HasRefused() ? std::max(status, kSomeRefused) : status;
}

}  // namespace tool
