// zelvan union, subtract, intersect, xor and offset: the polygons of each input become regions on
// one grid; those of one input, and of all that are subtracted, are united in one sweep. What is
// offset is the union of all.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <numeric>

#include "commands.h"
#include "intake.h"
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
    {Command::kOffset, "offset", "offsetting"},
};

const Operation& OperationOf(Command command) {
  return *std::find_if(std::begin(kOperations), std::end(kOperations),
                       [&](const Operation& operation) { return operation.command == command; });
}

double SecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

class Combination {
 public:
  Combination(const Options& options, const zelvan::Grid& grid, Steps& steps)
      : options_(options), grid_(grid), intake_(options, steps) {}

  // Each input in turn. @return its row of the table
  Row Add(const Input& input) {
    const auto start = std::chrono::steady_clock::now();
    std::vector<Region> regions;
    Row row;
    row.name = input.file;
    row.area_out = std::nan("");
    ForEachPolygon(input, [&](const Feature& feature, std::size_t i) {
      ++row.polygons;
      row.vertices += CountPoints(feature.polygons[i]);
      regions.push_back(intake_.Take(feature, i, &grid_, row));
    });
    intake_.Finish(input.file);
    inputs_.push_back(std::move(regions));
    row.seconds = SecondsSince(start);
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
      case Command::kOffset:
        return zelvan::Offset(UniteFrom(0), options_.distance, options_.offset);
      default:
        return UniteFrom(0);
    }
  }

  const Intake& TakenIn() const { return intake_; }

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
  Intake intake_;
  std::vector<std::vector<Region>> inputs_;
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
  return options.triangles || options.delaunay ||
         std::any_of(
             options.outputs.begin(), options.outputs.end(),
             [&](const std::string& output) { return FormatOf(options, output) == ".obj"; });
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
  Steps steps;
  const std::vector<Input> inputs = ReadInputs(options, steps, status);
  if (status == kUnusable) return status;  // half a combination is none

  const zelvan::Grid grid = GridFor(AllPolygons(inputs), options);
  const Operation& operation = OperationOf(options.command);
  steps.Begin("checking", "", CountPoints(inputs));
  Combination combination(options, grid, steps);
  Report report;
  for (const Input& input : inputs) report.rows.push_back(combination.Add(input));
  steps.Begin(operation.progress);
  const auto start = std::chrono::steady_clock::now();
  Item item{operation.result, 0, 0, combination.Run(), {}};
  if (WantsTriangles(options)) {
    steps.Begin("triangulating");
    item.mesh = Triangulate(item.region, {options.delaunay});
  }
  report.rows.push_back(RowOf(item, SecondsSince(start)));
  const bool shows = options.triangles || options.delaunay;
  WriteOutputs(options, {std::move(item)}, shows ? Show::kTriangles : Show::kRegion, steps);
  report.grids = {grid};
  report.moved = combination.TakenIn().FarthestMove();
  Print(report, options, steps);
  return combination.TakenIn().HasLost() ? std::max(status, kSomeRefused) : status;
}

}  // namespace tool
