// Takes up the polygons of one input after the other, and says what comes of it: on standard
// error every loss, in the summary what was mended.
#pragma once

#include <cstddef>
#include <string>

#include "input.h"
#include "judge.h"
#include "options.h"
#include "progress.h"
#include "report.h"
#include "take_up.h"

namespace tool {

class Intake {
 public:
  Intake(const Options& options, Steps& steps) : options_(options), steps_(steps) {}

  // The region of a polygon on a grid, or on one of its own for a null pointer; empty where
  // nothing comes of it. Adds its area to the row of its input.
  Region Take(const Feature& feature, std::size_t polygon, const zelvan::Grid* grid, Row& row);

  // Behind the last polygon of an input.
  void Finish(const std::string& file);

  bool HasLost() const { return has_lost_; }
  double FarthestMove() const { return farthest_.distance; }
  std::string Explanation() const;  // which vertex that was; a line

 private:
  // What steps did to the rings of an input.
  struct Changes {
    std::size_t rings = 0;
    double before = 0;
    double after = 0;
    AreaChange worst;
    std::string place;  // of the worst, with its step
  };

  void NameLosses(const Feature& feature, std::size_t polygon, const Taken& taken);
  void Note(const AreaChange& change, const std::string& place, double step);

  const Options& options_;
  Steps& steps_;
  Judge judge_;
  Changes changes_;
  std::size_t mended_ = 0;  // of this input
  Move farthest_;           // of all
  std::string farthest_at_;
  bool has_lost_ = false;
};

}  // namespace tool
