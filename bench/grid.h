// Contours on the engines' grid, for programs below the flat interface.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "bench/contours.h"
#include "polygon/area.h"
#include "polygon/contour.h"

namespace bench {

/// One step for both axes, and a box that covers all contours.
class Grid {
 public:
  Grid(const Xyz& main, const std::vector<Xyz>& others) {
    double low[2] = {main[0], main[1]};
    double high[2] = {main[0], main[1]};
    const auto look = [&](const Xyz& contour) {
      for (std::size_t i = 0; i < contour.size(); ++i) {
        if (i % 3 == 2) continue;
        low[i % 3] = std::fmin(low[i % 3], contour[i]);
        high[i % 3] = std::fmax(high[i % 3], contour[i]);
      }
    };
    look(main);
    for (const Xyz& other : others) look(other);
    centre_[0] = (low[0] + high[0]) / 2;
    centre_[1] = (low[1] + high[1]) / 2;
    step_ = std::fmax(high[0] - low[0], high[1] - low[1]) / (zelvan::GRID_MAX - 1);
  }

  [[nodiscard]] zelvan::GridPoint In(const double* xyz) const {
    return {static_cast<std::int32_t>(std::lround((xyz[0] - centre_[0]) / step_)),
            static_cast<std::int32_t>(std::lround((xyz[1] - centre_[1]) / step_))};
  }
  [[nodiscard]] double step() const { return step_; }

 private:
  double centre_[2];
  double step_;
};

/// Adds a contour as an area of its own, counter-clockwise.
inline void AddRing(zelvan::OwnedRing& ring, const Grid& grid, const Xyz& contour) {
  std::vector<zelvan::GridPoint> points;
  for (std::size_t i = 0; i < contour.size(); i += 3) points.push_back(grid.In(&contour[i]));
  zelvan::Contour* const made = zelvan::NewContour(points).release();
  made->flags |= zelvan::CONTOUR_CCW;
  if (zelvan::TwiceArea(made->head) < 0) {
    zelvan::ReverseContour(made);
    made->flags |= zelvan::CONTOUR_CCW;
  }
  zelvan::Area* area = zelvan::NewArea();
  area->contours = made;
  zelvan::AppendArea(ring.first, area);
}

}  // namespace bench
