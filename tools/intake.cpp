#include "intake.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <stdexcept>
#include <utility>

#include "output.h"

namespace tool {
namespace {

std::string CountOf(std::size_t count, const std::string& what) {
  return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

double Ratio(const AreaChange& change) {
  return std::abs(change.after - change.before) / change.before;
}

}  // namespace

Region Intake::Take(const Feature& feature, std::size_t polygon, const zelvan::Grid* grid,
                    Row& row) {
  const Polygon& given = feature.polygons[polygon];
  steps_.Advance(CountPoints(given));
  Taken taken;
  try {
    taken = TakeUp(given, grid != nullptr ? *grid : GridFor({&given}, options_), options_, judge_);
  } catch (const std::invalid_argument& error) {
    taken.failure = error.what();
    taken.area = AreaAsWritten(given);
  }
  if (!std::isnan(taken.area)) row.area_in += taken.area;
  if (taken.farthest.distance > farthest_.distance) {
    farthest_ = taken.farthest;
    farthest_at_ = feature.file + ": " + PlaceOf(feature, polygon);
  }
  mended_ += taken.mended && taken.failure.empty() ? 1 : 0;
  NameLosses(feature, polygon, taken);
  return std::move(taken.region);
}

std::string Intake::Explanation() const {
  if (farthest_.distance == 0) return "no vertex moved: all were on the grid\n";
  const auto place = [](const Point& p) { return '(' + Shortest(p.x) + ' ' + Shortest(p.y) + ')'; };
  return "the farthest move, " + farthest_at_ + ": from " + place(farthest_.from) + " to " +
         place(farthest_.to) + '\n';
}

void Intake::NameLosses(const Feature& feature, std::size_t polygon, const Taken& taken) {
  const std::string place = PlaceOf(feature, polygon);
  const auto refuse = [&](std::string reason, const char* kind, double area) {
    steps_.Clear();
    PrintRefusal({feature.file, place, std::move(reason), Lost(kind, area)});
    has_lost_ = true;
  };
  if (!taken.failure.empty()) return refuse(taken.failure, "polygon", taken.area);
  for (const std::size_t i : taken.vanished) {
    refuse("hole " + std::to_string(i + 1) + " left out: " + kNoArea, "hole",
           AreaAsWritten({feature.polygons[polygon].holes[i], {}}));
  }
  for (const AreaChange& change : taken.changes) Note(change, place, taken.region.Grid().Step());
}

void Intake::Note(const AreaChange& change, const std::string& place, double step) {
  if (++changes_.rings == 1 || Ratio(change) > Ratio(changes_.worst)) {
    changes_.worst = change;
    changes_.place = place;
    if (change.ring > 0) changes_.place += ", hole " + std::to_string(change.ring);
    changes_.place += " by a step of " + Shortest(step);
  }
  changes_.before += change.before;
  changes_.after += change.after;
}

void Intake::Finish(const std::string& file) {
  steps_.Clear();
  if (options_.repair) {
    ReportStream(options_) << file << ": " << CountOf(mended_, "invalid polygon") << " repaired\n";
  }
  if (changes_.rings > 0) {
    const auto span = [](double before, double after) {
      return "from " + Rounded(before) + " to " + Rounded(after);
    };
    std::cerr << file << ": " << CountOf(changes_.rings, "ring")
              << " changed by more than 1/1024 of the area on the grid, "
              << span(changes_.before, changes_.after) << " in all; most of all " << changes_.place
              << ", " << span(changes_.worst.before, changes_.worst.after) << '\n';
    has_lost_ = true;
  }
  changes_ = {};
  mended_ = 0;
}

}  // namespace tool
