// zelvan union and zelvan subtract: every contour of the inputs into one region.
//
// A polygon without holes is its outer contour. One with holes is first cut on
// the common grid (outer contour less holes, triangulated) and taken apart into
// pieces with simple contours; these are united or subtracted one by one. Holes
// count exactly as they are drawn that way: a part of one polygon that lies in
// the hole of another is there in the union, and a hole protects what it covers
// from subtraction. The order of operations:
//
//   1. the pieces of each polygon with holes, in a session of its own;
//   2. all contours in groups that have no point in common; for each group
//   3. main = the anchors of the common grid;
//   4. unite every contour of the first input (of all inputs for a union);
//   5. subtract every contour of the others;
//   6. read the region back, less the anchors.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <iostream>
#include <utility>

#include "commands.h"
#include "common_grid.h"
#include "groups.h"
#include "output.h"
#include "pieces.h"
#include "progress.h"
#include "refusals.h"
#include "report.h"
#include "session.h"

namespace tool {
namespace {

struct Step {
  const Feature* feature;
  std::size_t polygon;
  Ring snapped;
  Ring exact;  // as given, where the snapped contour might not be usable
  bool subtract;
  bool piece;  // of a polygon with holes
  bool refused = false;
};

class Combination {
 public:
  Combination(const Options& options, const CommonGrid& grid, Geos& geos)
      : options_(options), grid_(grid), geos_(geos), refusals_(geos) {}

  std::size_t Refused() const { return refusals_.Count(); }

  void AddInput(const Input& input, bool subtract) {
    for (const Feature& feature : input.features) {
      for (std::size_t i = 0; i < feature.polygons.size(); ++i) Add(feature, i, subtract);
    }
  }

  // The region, cut into triangles when asked for.
  Mesh Run() {
    Progress progress(options_.command == Command::kUnion ? "uniting" : "subtracting",
                      steps_.size());
    std::vector<Ring> contours;
    for (const Step& step : steps_) contours.push_back(step.snapped);
    Mesh result;
    for (const auto& group : ConnectedGroups(steps_.size(), geos_.Contacts(contours))) {
      while (!TryGroup(group, progress)) {
      }
      const bool triangles = options_.triangles && CutMain();
      if (options_.triangles && !triangles) {
        throw std::runtime_error("the result cannot be triangulated");
      }
      Append(result, grid_.WithoutAnchors(ReadMain(Scale(), triangles)));
    }
    return grid_.Unscaled(std::move(result));
  }

 private:
  void Add(const Feature& feature, std::size_t number, bool subtract) {
    const Polygon& polygon = feature.polygons[number];
    if (!options_.repair && refusals_.Overlapping(feature, number)) return;
    const Ring outer = grid_.Snap(polygon.outer);
    if (!HasArea(outer)) {
      refusals_.Failed(feature, number, kNoArea);
      return;
    }
    std::vector<std::size_t> vanished;
    const std::vector<std::size_t> holes = HolesOnGrid(polygon, vanished);
    if (holes.empty()) {
      steps_.push_back({&feature, number, outer, grid_.Scaled(polygon.outer), subtract, false});
    } else {
      std::string failure;
      for (Ring& piece : Pieces(polygon, holes, failure)) {
        steps_.push_back({&feature, number, piece, piece, subtract, true});
      }
      if (!failure.empty()) {
        refusals_.Failed(feature, number, failure);
        return;
      }
    }
    refusals_.HolesVanished(feature, number, vanished);
  }

  std::vector<std::size_t> HolesOnGrid(const Polygon& polygon,
                                       std::vector<std::size_t>& vanished) const {
    std::vector<std::size_t> holes;
    for (std::size_t i = 0; i < polygon.holes.size(); ++i) {
      const Ring hole = grid_.Snap(polygon.holes[i]);
      const bool area = HasArea(hole) && SeesArea(grid_.Scaled(polygon.holes[i]), hole);
      (area ? holes : vanished).push_back(i);
    }
    return holes;
  }

  bool StartOnGrid() const {
    const auto anchors = grid_.Anchors();
    return SetMain(anchors[0], Scale()) && QueueContour(anchors[1], Scale()) && UniteQueued();
  }

  // The snapped contour; where snapping made it touch itself, the exact one.
  bool Queue(const Ring& snapped, const Ring& exact) const {
    return QueueContour(snapped, Scale()) || QueueContour(exact, Scale());
  }

  std::vector<Ring> Pieces(const Polygon& polygon, const std::vector<std::size_t>& holes,
                           std::string& failure) const {
    if (!StartOnGrid()) throw std::runtime_error("the extent of the input is not usable");
    if (!Queue(grid_.Snap(polygon.outer), grid_.Scaled(polygon.outer)) || !UniteQueued()) {
      failure = kNotUsable;
      return {};
    }
    for (const std::size_t i : holes) {
      if (!Queue(grid_.Snap(polygon.holes[i]), grid_.Scaled(polygon.holes[i]))) {
        failure = "hole " + std::to_string(i + 1) + " is not usable";
        return {};
      }
    }
    if (!SubtractQueued() || !CutMain()) {
      failure = "its holes could not be subtracted";
      return {};
    }
    std::vector<Ring> pieces = SplitIntoPieces(grid_.WithoutAnchors(ReadMain(Scale(), true)));
    if (pieces.empty()) failure = kNothingLeft;
    return pieces;
  }

  // A contour that cannot be combined stays in the library's queue until the
  // next main contour, so its group starts again without it.
  bool TryGroup(const std::vector<std::size_t>& group, Progress& progress) {
    if (!StartOnGrid()) throw std::runtime_error("the extent of the input is not usable");
    for (const std::size_t i : group) {
      Step& step = steps_[i];
      if (step.refused) continue;
      progress.Advance();
      const bool queued = Queue(step.snapped, step.exact);
      if (queued && (step.subtract ? SubtractQueued() : UniteQueued())) continue;
      progress.Clear();
      step.refused = true;
      const std::string failure = queued ? "could not be combined" : kNotUsable;
      if (step.piece) {
        const Ring piece = grid_.Unscaled(step.snapped);
        refusals_.PieceFailed(*step.feature, step.polygon, failure, piece);
      } else {
        refusals_.Failed(*step.feature, step.polygon, failure);
      }
      if (queued) return false;
    }
    return true;
  }

  const Options& options_;
  const CommonGrid& grid_;
  Geos& geos_;
  std::vector<Step> steps_;
  Refusals refusals_;
};

Box BoxOf(const std::vector<Input>& inputs) {
  Box box;
  for (const Input& input : inputs) {
    for (const Feature& feature : input.features) {
      for (const Polygon& polygon : feature.polygons) {
        if (IsFinite(polygon)) box.Add(polygon.outer);
      }
    }
  }
  return box.Empty() ? Box{{0, 0}, {1, 1}} : box;
}

Row RowOf(const Input& input) {
  Row row;
  row.name = input.file;
  row.area_out = std::nan("");
  for (const Feature& feature : input.features) {
    for (const Polygon& polygon : feature.polygons) {
      ++row.polygons;
      row.vertices += CountPoints(polygon);
      row.area_in += Area(polygon);
    }
  }
  return row;
}

Row RowOf(const Mesh& result, const char* name, double seconds) {
  Row row;
  row.name = name;
  row.vertices = result.vertices.size();
  row.triangles = result.triangles.size();
  row.area_in = std::nan("");
  row.seconds = seconds;
  for (const Polygon& polygon : result.Region()) {
    ++row.polygons;
    row.area_out += Area(polygon);
  }
  return row;
}

bool WantsTriangles(const Options& options) {
  return options.triangles ||
         std::any_of(options.outputs.begin(), options.outputs.end(),
                     [](const std::string& output) { return Extension(output) == ".obj"; });
}

}  // namespace

int RunCombine(const Options& given) {
  Options options = given;
  options.triangles = WantsTriangles(given);
  int status = kAllDone;
  Geos geos;
  const std::vector<Input> inputs = ReadInputs(options, geos, status);
  if (status == kUnusable) return status;  // half a combination is none

  const auto start = std::chrono::steady_clock::now();
  const CommonGrid grid(BoxOf(inputs), options.scale);
  Combination combination(options, grid, geos);
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    combination.AddInput(inputs[i], options.command == Command::kSubtract && i > 0);
  }
  const char* name = options.command == Command::kUnion ? "union" : "difference";
  Item item{name, 0, 0, combination.Run()};
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;

  std::vector<Row> rows;
  for (const Input& input : inputs) rows.push_back(RowOf(input));
  rows.push_back(RowOf(item.mesh, name, time.count()));
  WriteOutputs(options.outputs, {std::move(item)},
               given.triangles ? Show::kTriangles : Show::kRegion);
  PrintTable(std::cout, rows, false);
  return combination.Refused() > 0 ? std::max(status, kSomeRefused) : status;
}

}  // namespace tool
