// zelvan union, subtract, intersect, xor and offset: the polygons of each input become regions on
// one grid; those of one input, and of all that are subtracted, are united in one sweep. What is
// offset is the union of all.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <map>
#include <numeric>

#include "commands.h"
#include "intake.h"
#include "output.h"
#include "progress.h"
#include "report.h"
#include "take_up.h"

namespace tool {
namespace {

enum class Kind { kUnion, kSubtract, kIntersect, kXor, kOffset };

struct Operation {
  Kind kind;
  const char* result;
  const char* progress;
};

constexpr Operation kUnion{Kind::kUnion, "union", "uniting"};
constexpr Operation kSubtract{Kind::kSubtract, "difference", "subtracting"};
constexpr Operation kIntersect{Kind::kIntersect, "intersection", "intersecting"};
constexpr Operation kXor{Kind::kXor, "symmetric difference", "combining"};
constexpr Operation kOffset{Kind::kOffset, "offset", "offsetting"};

double SecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The region of a polygon, and where it comes from.
struct Piece {
  const Feature* feature;
  Region region;
};

using Pieces = std::vector<Piece>;

Region Unite(const Pieces& pieces) {
  std::vector<Region> regions;
  for (const Piece& piece : pieces) regions.push_back(piece.region);
  return zelvan::Unite(regions);
}

// What they agree in, feature by feature; pieces of a feature follow each other.
Attributes AgreedOf(const std::vector<const Pieces*>& inputs) {
  std::vector<const Attributes*> all;
  for (const Pieces* pieces : inputs) {
    for (const Piece& piece : *pieces) {
      const Attributes* attributes = &piece.feature->attributes;
      if (all.empty() || all.back() != attributes) all.push_back(attributes);
    }
  }
  return Agreed(all);
}

// The pieces whose boxes meet that of a region, which alone can cover any of it.
Pieces Near(const Region& region, const Pieces& pieces) {
  Pieces near;
  if (region.IsEmpty()) return near;
  const zelvan::Box box = region.Bounds();
  for (const Piece& piece : pieces) {
    if (piece.region.IsEmpty()) continue;
    const zelvan::Box other = piece.region.Bounds();
    const bool meets = other.min.x <= box.max.x && other.max.x >= box.min.x &&
                       other.min.y <= box.max.y && other.max.y >= box.min.y;
    if (meets) near.push_back(piece);
  }
  return near;
}

class Combination {
 public:
  Combination(const Options& options, const Operation& operation, const zelvan::Grid& grid,
              Steps& steps)
      : options_(options), operation_(operation), grid_(grid), intake_(options, steps) {}

  // Each input in turn. @return its row of the table
  Row Add(const Input& input) {
    const auto start = std::chrono::steady_clock::now();
    Pieces pieces;
    Row row;
    row.name = input.file;
    row.area_out = std::nan("");
    ForEachPolygon(input, [&](const Feature& feature, std::size_t i) {
      ++row.polygons;
      row.vertices += CountPoints(feature.polygons[i]);
      pieces.push_back({&feature, intake_.Take(feature, i, &grid_, row)});
    });
    intake_.Finish(input.file);
    inputs_.push_back(std::move(pieces));
    row.seconds = SecondsSince(start);
    return row;
  }

  std::vector<Item> Run(Steps& steps) const {
    if (options_.each) return Each(steps);
    if (!options_.by.empty()) return Dissolved(steps);
    std::vector<const Pieces*> made_of{&inputs_.front()};
    for (std::size_t i = 1; operation_.kind != Kind::kSubtract && i < inputs_.size(); ++i) {
      made_of.push_back(&inputs_[i]);
    }
    return {{operation_.result, 0, 0, AgreedOf(made_of), All(), {}}};
  }

  const Intake& TakenIn() const { return intake_; }

 private:
  Region All() const {
    switch (operation_.kind) {
      case Kind::kSubtract:
        return Unite(inputs_.front()) - Unite(From(1));
      case Kind::kIntersect:
        return std::accumulate(
            inputs_.begin() + 1, inputs_.end(), Unite(inputs_.front()),
            [](const Region& all, const Pieces& input) { return all & Unite(input); });
      case Kind::kXor:
        return OddlyCovered();
      case Kind::kOffset:
        return zelvan::Offset(Unite(From(0)), options_.distance, options_.offset);
      default:
        return Unite(From(0));
    }
  }

  // The pieces of an input and all behind it.
  Pieces From(std::size_t input) const {
    Pieces pieces;
    for (; input < inputs_.size(); ++input) {
      pieces.insert(pieces.end(), inputs_[input].begin(), inputs_[input].end());
    }
    return pieces;
  }

  // One by one, each input would meet again what the ones before have left.
  Region OddlyCovered() const {
    std::vector<Ring> rings;
    for (const Pieces& input : inputs_) {
      for (const Polygon& polygon : Unite(input).Polygons()) {
        const std::vector<Ring> more = RingsOf(polygon);
        rings.insert(rings.end(), more.begin(), more.end());
      }
    }
    return {rings, zelvan::FillRule::EvenOdd, grid_};
  }

  // Each feature of the first input for itself; none where nothing is left of it.
  std::vector<Item> Each(Steps& steps) const {
    std::vector<Item> items;
    const Pieces& first = inputs_.front();
    steps.Begin(operation_.progress, "", first.size());
    for (std::size_t begin = 0; begin < first.size();) {
      const Feature& feature = *first[begin].feature;
      std::size_t end = begin;
      while (end < first.size() && first[end].feature == &feature) ++end;
      steps.Advance(end - begin);
      Region region = Unite(Pieces(first.begin() + static_cast<std::ptrdiff_t>(begin),
                                   first.begin() + static_cast<std::ptrdiff_t>(end)));
      for (std::size_t i = 1; i < inputs_.size(); ++i) {
        const Region other = Unite(Near(region, inputs_[i]));
        region = operation_.kind == Kind::kSubtract ? region - other : region & other;
      }
      if (!region.IsEmpty()) items.push_back({feature.name, 0, 0, feature.attributes, region, {}});
      begin = end;
    }
    return items;
  }

  // A feature for each value of a field, in the order in which they come, and one for what has
  // none.
  std::vector<Item> Dissolved(Steps& steps) const {
    std::map<std::string, std::size_t> numbers;
    std::vector<std::pair<std::string, Pieces>> groups;
    for (const Pieces& input : inputs_) {
      for (const Piece& piece : input) {
        const Property* found = FindProperty(piece.feature->attributes, options_.by);
        const std::string value = found != nullptr ? found->value : "null";
        const auto [place, is_new] = numbers.emplace(value, groups.size());
        if (is_new) groups.emplace_back(PlainText(value), Pieces());
        groups[place->second].second.push_back(piece);
      }
    }
    std::vector<Item> items;
    steps.Begin(operation_.progress, "", groups.size());
    for (const auto& [name, pieces] : groups) {
      steps.Advance(1);
      items.push_back({name, 0, 0, AgreedOf({&pieces}), Unite(pieces), {}});
    }
    return items;
  }

  const Options& options_;
  const Operation operation_;
  const zelvan::Grid grid_;
  Intake intake_;
  std::vector<Pieces> inputs_;
};

Row RowOf(const std::vector<Item>& items, const char* name, double seconds) {
  Row row;
  row.name = name;
  row.area_in = std::nan("");
  for (const Item& item : items) {
    row.polygons += item.region.PolygonCount();
    row.vertices += item.region.VertexCount();
    row.triangles += item.mesh.triangles.size();
    row.area_out += item.region.Area();
  }
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

int RunCombine(const Options& options, const Operation& operation) {
  int status = kAllDone;
  Steps steps;
  const std::vector<Input> inputs = ReadInputs(options, steps, status);
  if (status == kUnusable) return status;  // half a combination is none

  const std::string crs = CrsOf(inputs);
  const zelvan::Grid grid = GridFor(AllPolygons(inputs), options);
  steps.Begin("checking", "", CountPoints(inputs));
  Combination combination(options, operation, grid, steps);
  Report report;
  for (const Input& input : inputs) report.rows.push_back(combination.Add(input));
  steps.Begin(operation.progress);
  const auto start = std::chrono::steady_clock::now();
  std::vector<Item> items = combination.Run(steps);
  if (WantsTriangles(options)) {
    steps.Begin("triangulating", "", items.size());
    for (Item& item : items) {
      steps.Advance(1);
      item.mesh = Triangulate(item.region, {options.delaunay});
    }
  }
  report.rows.push_back(RowOf(items, operation.result, SecondsSince(start)));
  const bool shows = options.triangles || options.delaunay;
  WriteOutputs(options, items, shows ? Show::kTriangles : Show::kRegion, crs, steps);
  report.grids = {grid};
  report.moved = combination.TakenIn().FarthestMove();
  report.explanation = combination.TakenIn().Explanation();
  Print(report, options, steps);
  return combination.TakenIn().HasLost() ? std::max(status, kSomeRefused) : status;
}

}  // namespace

int RunUnion(const Options& options) {
  return RunCombine(options, kUnion);
}

int RunSubtract(const Options& options) {
  return RunCombine(options, kSubtract);
}

int RunIntersect(const Options& options) {
  return RunCombine(options, kIntersect);
}

int RunXor(const Options& options) {
  return RunCombine(options, kXor);
}

int RunOffset(const Options& options) {
  return RunCombine(options, kOffset);
}

}  // namespace tool
